#pragma once

#include "KernelReadings.h"
#include "Popover.h"
#include "StatusItem.h"
#include "TemperatureSensors.h"

#include <memory>

namespace tarnwick {

/// The parts of the program that differ by operating system. Each system's folder implements makeSystemParts().
struct SystemParts {
    std::unique_ptr<KernelReadings> kernel;
    std::unique_ptr<TemperatureSensors> sensors;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Popover> popover; ///< null where there is no display
};

/// Call once, when the application object exists: a QGuiApplication where there is a display.
[[nodiscard]] SystemParts makeSystemParts(bool hasDisplay);

} // namespace tarnwick
