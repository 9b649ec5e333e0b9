#include "LinuxTemperatureSensors.h"

#include "HwmonNames.h"
#include "KernelFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int readsPerLook = 10; // devices that came or went are looked for this often

struct FoundSensor {
    HwmonInput input;
    QString path;
};

struct FoundDevice {
    QString folder; ///< ends in "/"
    QString driver;
    QString busName; ///< "nvme0", "coretemp.0"; the hwmon entry's own name for a device without a parent
    std::vector<FoundSensor> sensors;
};

FoundDevice findDevice(const QString& hwmonFolder, const QString& entry) {
    FoundDevice device{.folder = hwmonFolder + entry + u'/', .driver = {}, .busName = {}, .sensors = {}};
    const auto textIn = [&](const QString& file) {
        return QString::fromUtf8(readSmallFile(device.folder + file));
    };
    device.driver = textIn(u"name"_s);
    const QString parent = QFileInfo(device.folder + u"device"_s).canonicalFilePath();
    device.busName = parent.isEmpty() ? entry : QFileInfo(parent).fileName();
    for (const QString& file : QDir(device.folder).entryList({u"temp*_input"_s}, QDir::Files)) {
        bool isNumber = false;
        const int number = file.mid(4, file.size() - 10).toInt(&isNumber);
        if (isNumber) {
            const QString label = textIn(u"temp%1_label"_s.arg(number));
            device.sensors.push_back(
                {.input = {.driver = device.driver, .label = label, .number = number}, .path = device.folder + file});
        }
    }
    const bool hasTrueDie = std::any_of(device.sensors.begin(), device.sensors.end(),
                                        [](const FoundSensor& sensor) { return sensor.input.label == u"Tdie"; });
    for (FoundSensor& sensor : device.sensors) {
        sensor.input.isOnly = device.sensors.size() == 1;
        sensor.input.besideTrueDie = hasTrueDie;
    }
    // The last storage reading is the one that counts, so a drive's overall temperature comes last.
    std::sort(device.sensors.begin(), device.sensors.end(), [](const FoundSensor& a, const FoundSensor& b) {
        const auto rank = [](const HwmonInput& input) {
            return std::pair(input.label == u"Composite", input.number);
        };
        return rank(a.input) < rank(b.input);
    });
    return device;
}

} // namespace

LinuxTemperatureSensors::LinuxTemperatureSensors(const QString& root)
    : folder_((root.endsWith(u'/') ? root : root + u'/') + u"sys/class/hwmon/"_s) {}

std::optional<QList<TemperatureReading>> LinuxTemperatureSensors::read() {
    const std::lock_guard lock(mutex_);
    // A sensor that went away is a reason to look at once, but not at every read when its driver keeps failing.
    if (readsSinceScan_ % readsPerLook == 0 || (sensorGone_ && readsSinceScan_ > readsPerLook)) {
        exists_ = QDir(folder_).exists();
        const QStringList folders = foldersByNumber(folder_, u"hwmon*"_s);
        if (sensorGone_ || folders != folders_)
            scan(folders);
    }
    ++readsSinceScan_;
    if (!exists_)
        return std::nullopt;
    QList<TemperatureReading> readings;
    for (Device& device : devices_) {
        readDevice(device);
        readings += device.lastReadings;
    }
    return readings;
}

void LinuxTemperatureSensors::scan(const QStringList& folders) {
    folders_ = folders;
    sensorGone_ = false;
    readsSinceScan_ = 0;
    std::vector<FoundDevice> found;
    QHash<QString, int> devicesWithName;
    for (const QString& entry : folders) {
        found.push_back(findDevice(folder_, entry));
        for (const FoundSensor& sensor : found.back().sensors)
            ++devicesWithName[hwmonSensorName(sensor.input)];
    }
    std::stable_partition(found.begin(), found.end(),
                          [](const FoundDevice& device) { return device.driver != u"nvme"; });
    devices_.clear();
    for (const FoundDevice& each : found) {
        Device device;
        for (const FoundSensor& sensor : each.sensors) {
            QString name = hwmonSensorName(sensor.input);
            if (devicesWithName.value(name) > 1)
                name += u" (%1)"_s.arg(each.busName);
            if (KeptFile input(sensor.path); input.isOpen())
                device.sensors.push_back({.name = name, .input = std::move(input)});
        }
        device.power = DevicePower(each.folder + u"device/"_s);
        devices_.push_back(std::move(device));
    }
}

void LinuxTemperatureSensors::readDevice(Device& device) {
    const bool isAsleep = device.power.isAsleep();
    if (!isAsleep && device.power.isResting())
        return;
    device.lastReadings.clear();
    for (const Sensor& sensor : device.sensors) {
        std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
        const KeptFile::Content content = isAsleep ? KeptFile::Content() : sensor.input.read(buffer);
        sensorGone_ = sensorGone_ || content.gone;
        const std::optional<qint64> thousandths = content.number();
        device.lastReadings.append(
            {.product = sensor.name.isEmpty() ? std::nullopt : std::optional(sensor.name),
             .celsius = thousandths ? std::optional(static_cast<double>(*thousandths) / 1000) : std::nullopt});
    }
    if (!isAsleep)
        device.power.rest();
}

} // namespace tarnwick
