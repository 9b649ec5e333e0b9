#include "LinuxThermalState.h"

#include "KeptFile.h"
#include "KernelFiles.h"

#include <QDir>
#include <QSet>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct TripMeaning {
    const char* type;
    ThermalState state;
    bool needsCooling; ///< says something only where the kernel then does something
};

/// What the kernel does at a trip point of each type: start a fan, slow the processor, warn, switch off.
constexpr std::array tripMeanings{
    TripMeaning{"active", ThermalState::fair, true},
    TripMeaning{"passive", ThermalState::serious, true},
    TripMeaning{"hot", ThermalState::critical, false},
    TripMeaning{"critical", ThermalState::critical, false},
};

std::optional<qint64> numberIn(const QString& path) {
    return KeptFile(path).readNumber();
}

/// The trip points of a zone at which the kernel itself turns on a cooling device.
QSet<qint64> cooledTrips(const QString& zone) {
    // Intel's thermald takes zones over, and then moves trip points to where it wants to be woken.
    if (readSmallFile(zone + u"policy"_s) == "user_space")
        return {};
    QSet<qint64> trips;
    for (const QString& file : QDir(zone).entryList({u"cdev*_trip_point"_s}, QDir::Files))
        trips.insert(numberIn(zone + file).value_or(-1));
    return trips;
}

/// Raises `state` to that of one trip point when the temperature has reached it and the trip point counts.
void applyTrip(const QString& trip, qint64 temperature, bool isCooled, ThermalState& state) {
    const QByteArray type = readSmallFile(trip + u"type"_s);
    const auto meaning = std::find_if(tripMeanings.begin(), tripMeanings.end(),
                                      [&](const TripMeaning& each) { return type == each.type; });
    const auto threshold = numberIn(trip + u"temp"_s);
    // A trip point that is not set has a temperature of 0 or far below.
    if (meaning == tripMeanings.end() || !threshold || *threshold <= 0 || (meaning->needsCooling && !isCooled))
        return;
    if (temperature >= *threshold)
        state = state == ThermalState::unknown ? meaning->state : std::max(state, meaning->state);
    else if (meaning->needsCooling && state == ThermalState::unknown) // far below "critical" may still be hot
        state = ThermalState::nominal;
}

} // namespace

ThermalState readLinuxThermalState(const QString& root, const DeviceAccess& access) {
    ThermalState state = ThermalState::unknown;
    const QString zones = root + u"sys/class/thermal/"_s;
    for (const QString& zone : QDir(zones).entryList({u"thermal_zone*"_s}, QDir::Dirs)) {
        const QString folder = zones + zone + u'/';
        std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
        const auto temperature = access.readInput(KeptFile(folder + u"temp"_s), buffer).number();
        if (!temperature || readSmallFile(folder + u"mode"_s) == "disabled")
            continue;
        const QSet<qint64> cooled = cooledTrips(folder);
        for (int trip = 0; QFile::exists(u"%1trip_point_%2_type"_s.arg(folder).arg(trip)); ++trip)
            applyTrip(u"%1trip_point_%2_"_s.arg(folder).arg(trip), *temperature, cooled.contains(trip), state);
    }
    return state;
}

} // namespace tarnwick
