#include "MacHardwareTexts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tarnwick::MacHardwareTexts {

namespace {

template <typename Integer>
std::optional<qint64> integerOf(const std::optional<QByteArray>& value) {
    Integer number = 0;
    if (!value || value->size() != static_cast<qsizetype>(sizeof number))
        return std::nullopt;
    std::memcpy(&number, value->constData(), sizeof number);
    return number;
}

} // namespace

std::optional<QString> kernelText(const std::optional<QByteArray>& value) {
    if (!value || value->isEmpty())
        return std::nullopt;
    return QString::fromUtf8(value->split('\0').first()).trimmed();
}

std::optional<qint64> kernelInt(const std::optional<QByteArray>& value) {
    return integerOf<qint32>(value);
}

std::optional<qint64> kernelInt64(const std::optional<QByteArray>& value) {
    return integerOf<qint64>(value);
}

QString coreText(std::optional<qint64> performance, std::optional<qint64> efficiency, const SystemWords& words) {
    const qint64 p = performance.value_or(4);
    const qint64 e = efficiency.value_or(6);
    if ((p == 0 || e == 0) && !words.namesLoneCoreKind)
        return u"%1 Cores"_s.arg(p + e);
    return u"%1 Cores (%2 Performance + %3 Efficiency)"_s.arg(p + e).arg(p).arg(e);
}

QString memoryText(std::optional<qint64> bytes, const SystemWords& words) {
    constexpr double bytesPerGB = 1024.0 * 1024.0 * 1024.0;
    const qint64 gigabytes = bytes ? std::llround(static_cast<double>(*bytes) / bytesPerGB) : 16;
    return u"%1 %2"_s.arg(gigabytes).arg(words.memoryUnit);
}

QString systemText(const OperatingSystem& system) {
    return u"%1 %2"_s.arg(system.name, system.version.section(u'.', 0, 1)).trimmed();
}

QString uptimeText(const std::optional<QByteArray>& bootTime, qint64 wallClockSeconds) {
    if (!bootTime || bootTime->size() != 2 * static_cast<qsizetype>(sizeof(qint64)))
        return u"Unknown"_s;
    const qint64 boot = kernelInt64(bootTime->first(sizeof(qint64))).value_or(0);
    if (boot < 0) // no time that a clock shows
        return u"Unknown"_s;
    const qint64 up = std::max<qint64>(0, wallClockSeconds - boot);
    const qint64 days = up / 86400;
    const qint64 hours = up % 86400 / 3600;
    const qint64 minutes = up % 3600 / 60;
    return days > 0 ? u"%1d %2h %3m"_s.arg(days).arg(hours).arg(minutes) : u"%1h %2m"_s.arg(hours).arg(minutes);
}

QString thermalStateText(ThermalState state) {
    switch (state) {
    case ThermalState::nominal:
        return u"Nominal (Cool & Quiet)"_s;
    case ThermalState::fair:
        return u"Fair (Slightly Warm)"_s;
    case ThermalState::serious:
        return u"Serious (Thermal Throttling)"_s;
    case ThermalState::critical:
        return u"Critical (Overheating)"_s;
    case ThermalState::unknown:
        break;
    }
    return u"Normal"_s;
}

} // namespace tarnwick::MacHardwareTexts
