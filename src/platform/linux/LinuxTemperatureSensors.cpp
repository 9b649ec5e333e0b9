#include "LinuxTemperatureSensors.h"

#include "HwmonNames.h"
#include "KernelFiles.h"
#include "SensorRole.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::seconds lookPeriod{60}; // how often to look for sensors that came or went
constexpr std::chrono::seconds scanPeriod{10}; // how often at most to look when one does not answer any more

struct FoundSensor {
    HwmonInput input;
    QString path;
};

struct FoundDevice {
    QString deviceFolder; ///< of what is measured; ends in "/"
    QString driver;
    QString busName; ///< "nvme0", "coretemp.0"; the hwmon entry's own name for a device without a parent
    std::vector<FoundSensor> sensors;
};

/// Where a device's files are: older drivers have them one folder further.
QString filesFolder(const QString& hwmonFolder, const QString& entry) {
    const QString folder = hwmonFolder + entry + u'/';
    return QFile::exists(folder + u"name"_s) || !QFile::exists(folder + u"device/name"_s) ? folder
                                                                                          : folder + u"device/"_s;
}

QStringList inputsIn(const QString& folder) {
    return QDir(folder).entryList({u"temp*_input"_s}, QDir::Files);
}

FoundDevice findDevice(const QString& hwmonFolder, const QString& entry) {
    const QString folder = filesFolder(hwmonFolder, entry);
    FoundDevice device{.deviceFolder = hwmonFolder + entry + u"/device/"_s, .driver = {}, .busName = {}, .sensors = {}};
    const auto textIn = [&](const QString& file) {
        return QString::fromUtf8(readSmallFile(folder + file));
    };
    device.driver = textIn(u"name"_s);
    const bool isSpinning = device.driver == u"drivetemp" && !spinningDisk(device.deviceFolder).isEmpty();
    const QString parent = QFileInfo(device.deviceFolder.chopped(1)).canonicalFilePath();
    device.busName = parent.isEmpty() ? entry : QFileInfo(parent).fileName();
    for (const QString& file : inputsIn(folder)) {
        bool isNumber = false;
        const int number = file.mid(4, file.size() - 10).toInt(&isNumber);
        if (isNumber) {
            const QString label = textIn(u"temp%1_label"_s.arg(number));
            device.sensors.push_back(
                {.input = {.driver = device.driver, .label = label, .number = number, .isSpinning = isSpinning},
                 .path = folder + file});
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

LinuxTemperatureSensors::LinuxTemperatureSensors(const QString& root, DeviceAccess access)
    : folder_((root.endsWith(u'/') ? root : root + u'/') + u"sys/class/hwmon/"_s), access_(std::move(access)) {}

std::optional<QList<TemperatureReading>> LinuxTemperatureSensors::read(SensorGroup group) {
    const std::lock_guard lock(mutex_);
    const Time now = access_.clock();
    // A sensor that went away is a reason to look at once, but not at every read when its driver keeps failing.
    if (!lookedAt_ || now - *lookedAt_ >= lookPeriod || (sensorGone_ && now - scannedAt_ >= scanPeriod))
        look(now);
    if (!exists_)
        return std::nullopt;
    startDue(group, now);
    const QDeadlineTimer deadline(access_.patience);
    QList<TemperatureReading> readings;
    for (Entry& entry : devices_) {
        if (!entry.device->has(group))
            continue;
        const HwmonReadings last = entry.reading.value(now, deadline);
        entry.isGone = last.isGone;
        sensorGone_ = sensorGone_ || last.isGone;
        const std::vector<HwmonDevice::Sensor>& sensors = entry.device->sensors();
        for (std::size_t i = 0; i < sensors.size(); ++i) {
            if (sensors[i].group == group)
                readings.append({.product = sensors[i].name.isEmpty() ? std::nullopt : std::optional(sensors[i].name),
                                 .celsius = last.celsius.at(static_cast<qsizetype>(i))});
        }
    }
    return readings;
}

void LinuxTemperatureSensors::look(Time now) {
    lookedAt_ = now;
    exists_ = QDir(folder_).exists();
    const QStringList entries = foldersByNumber(folder_, u"hwmon*"_s);
    QStringList inputs;
    for (const QString& entry : entries)
        for (const QString& input : inputsIn(filesFolder(folder_, entry)))
            inputs += entry + u'/' + input;
    if (sensorGone_ || inputs != inputs_) {
        scan(entries);
        scannedAt_ = now;
    }
    sensorGone_ = false;
    inputs_ = inputs;
}

void LinuxTemperatureSensors::startDue(SensorGroup group, Time now) {
    std::vector<std::function<void()>> quick;
    std::vector<std::function<void()>> slow;
    for (const Entry& entry : devices_)
        if (entry.device->has(group))
            if (std::optional<std::function<void()>> work = entry.reading.workDue(now))
                (entry.reading.isSlow() ? slow : quick).push_back(*std::move(work));
    quickThreads_.run(std::move(quick));
    slowThreads_.run(std::move(slow));
}

void LinuxTemperatureSensors::scan(const QStringList& entries) {
    std::vector<FoundDevice> found;
    QHash<QString, int> devicesWithName;
    for (const QString& entry : entries) {
        found.push_back(findDevice(folder_, entry));
        for (const FoundSensor& sensor : found.back().sensors)
            ++devicesWithName[hwmonSensorName(sensor.input)];
    }
    std::stable_partition(found.begin(), found.end(),
                          [](const FoundDevice& device) { return device.driver != u"nvme"; });
    std::vector<Entry> devices;
    for (const FoundDevice& each : found) {
        std::vector<HwmonDevice::Sensor> sensors;
        QStringList inputs;
        for (const FoundSensor& sensor : each.sensors) {
            QString name = hwmonSensorName(sensor.input);
            if (devicesWithName.value(name) > 1)
                name += u" (%1)"_s.arg(each.busName);
            inputs += sensor.path + name;
            if (KeptFile input(sensor.path); input.isOpen())
                sensors.push_back({.name = name, .group = sensorGroup(name), .input = std::move(input)});
        }
        // One that is as it was keeps its readings.
        const auto known = std::find_if(devices_.begin(), devices_.end(),
                                        [&](const Entry& entry) { return !entry.isGone && entry.inputs == inputs; });
        devices.push_back(known != devices_.end() ? *known
                                                  : entryFor(each.driver, each.deviceFolder, std::move(sensors)));
        devices.back().inputs = inputs;
    }
    devices_ = std::move(devices);
}

LinuxTemperatureSensors::Entry LinuxTemperatureSensors::entryFor(const QString& driver, const QString& deviceFolder,
                                                                 std::vector<HwmonDevice::Sensor> sensors) const {
    const auto device = std::make_shared<HwmonDevice>(driver, deviceFolder, std::move(sensors), access_);
    const ReadingPace pace{.period = device->period(),
                           .grace = access_.grace,
                           .patience = access_.patience,
                           .isKnownSlow = device->asksFirmware()};
    return {.device = device,
            .reading = BackgroundReading<HwmonReadings>([device] { return device->read(); }, device->last(), pace),
            .inputs = {}};
}

} // namespace tarnwick
