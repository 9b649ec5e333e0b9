#include "HwmonDevice.h"

#include "KernelFiles.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tarnwick {

namespace {

constexpr std::chrono::seconds drivePeriod = 30s;
constexpr std::chrono::seconds otherPeriod = 10s;
/// A disk that has been left alone for longer may have cooled down in its sleep.
constexpr std::chrono::minutes longestKept = 10min;

/// Drivers whose answers come from firmware or an embedded controller, by the beginning of their names.
constexpr std::array<QStringView, 16> firmwareDrivers{
    u"acpitz", u"dell_smm", u"dell_ddv", u"thinkpad", u"hp_wmi",  u"hp-wmi",  u"asus", u"gigabyte",
    u"msi",    u"system76", u"applesmc", u"macsmc",   u"cros_ec", u"surface", u"oxp",  u"steamdeck",
};

} // namespace

QString spinningDisk(const QString& deviceFolder) {
    const QString blocks = deviceFolder + u"block/"_s;
    for (const QString& disk : QDir(blocks).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (readSmallFile(blocks + disk + u"/queue/rotational"_s) == "1")
            return blocks + disk + u'/';
    return {};
}

DiskActivity::DiskActivity(const QString& blockFolder) {
    if (!blockFolder.isEmpty())
        statistics_ = KeptFile(blockFolder + u"stat"_s);
}

bool DiskActivity::hasWorked() {
    std::array<char, 256> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    const QByteArray counts = statistics_.read(buffer).text.toByteArray();
    const std::optional<QByteArray> before = std::exchange(lastCounts_, counts);
    return before && *before != counts;
}

HwmonDevice::HwmonDevice(const QString& driver, const QString& deviceFolder, std::vector<Sensor> sensors,
                         const DeviceAccess& access)
    : sensors_(std::move(sensors))
    , access_(access)
    , asksFirmware_(std::any_of(firmwareDrivers.begin(), firmwareDrivers.end(),
                                [&](QStringView prefix) { return driver.startsWith(prefix); }))
    , isDrive_(driver == u"nvme" || driver == u"drivetemp")
    , turns_(access.powers->of(deviceFolder))
    , disk_(driver == u"drivetemp" ? spinningDisk(deviceFolder) : QString()) {
    last_.celsius.resize(static_cast<qsizetype>(sensors_.size()));
}

bool HwmonDevice::has(SensorGroup group) const {
    return std::any_of(
        sensors_.begin(), sensors_.end(), [&](const Sensor& sensor) { return sensor.group == group; });
}

std::chrono::seconds HwmonDevice::period() const {
    if (isDrive_)
        return drivePeriod;
    return has(SensorGroup::processor) && !asksFirmware_ ? 0s : otherPeriod;
}

bool HwmonDevice::isLeftAlone(std::chrono::nanoseconds now) {
    return !turns_.isDue(now) || (disk_.isSpinningDisk() && !disk_.hasWorked());
}

HwmonReadings HwmonDevice::read() {
    const std::chrono::nanoseconds now = access_.clock();
    const bool isAsleep = turns_.isAsleep();
    if (!isAsleep && isLeftAlone(now)) {
        if (now - lastReadAt_ > longestKept)
            last_.celsius.fill(std::nullopt);
        return last_;
    }
    last_ = {};
    for (const Sensor& sensor : sensors_) {
        std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
        const KeptFile::Content content = isAsleep ? KeptFile::Content() : access_.readInput(sensor.input, buffer);
        const std::optional<qint64> thousandths = content.number();
        last_.celsius.append(thousandths ? std::optional(static_cast<double>(*thousandths) / 1000) : std::nullopt);
        last_.isGone = last_.isGone || content.gone;
    }
    lastReadAt_ = now;
    if (!isAsleep)
        turns_.noteRead(now);
    if (disk_.isSpinningDisk())
        (void)disk_.hasWorked(); // our own question is no work
    return last_;
}

} // namespace tarnwick
