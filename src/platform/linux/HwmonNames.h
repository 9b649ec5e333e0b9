#pragma once

#include <QString>

namespace tarnwick {

/// One temperature input as its driver names it.
struct HwmonInput {
    QString driver;             ///< "coretemp"
    QString label;              ///< "Package id 0"; empty when the driver gives none
    int number = 0;             ///< the N of tempN
    bool isOnly = false;        ///< the device has no other temperature
    bool besideTrueDie = false; ///< the device has an input labelled "Tdie" too
    bool isSpinning = false;    ///< a disk that turns
};

/// A readable name that begins with the sensor's role where it has one: "tdie coretemp Package id 0",
/// "SSD nvme Composite", "acpitz". Two devices of one driver give the same names. Pure.
[[nodiscard]] QString hwmonSensorName(const HwmonInput& input);

} // namespace tarnwick
