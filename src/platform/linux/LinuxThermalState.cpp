#include "LinuxThermalState.h"

#include "KeptFile.h"
#include "KernelFiles.h"

#include <QDir>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct TripMeaning {
    const char* type;
    ThermalState state;
};

/// What the kernel does at a trip point of each type: start a fan, slow the processor, warn, switch off.
constexpr std::array tripMeanings{
    TripMeaning{"active", ThermalState::fair},
    TripMeaning{"passive", ThermalState::serious},
    TripMeaning{"hot", ThermalState::critical},
    TripMeaning{"critical", ThermalState::critical},
};

std::optional<qint64> numberIn(const QString& path) {
    return KeptFile(path).readNumber();
}

/// Raises `state` to that of one trip point when the temperature has reached it and the trip point is in use.
void applyTrip(const QString& trip, qint64 temperature, ThermalState& state) {
    const QByteArray type = readSmallFile(trip + u"type"_s);
    const auto meaning = std::find_if(tripMeanings.begin(), tripMeanings.end(),
                                      [&](const TripMeaning& each) { return type == each.type; });
    const auto threshold = numberIn(trip + u"temp"_s);
    // A trip point that is not set has a temperature of 0 or far below.
    if (meaning == tripMeanings.end() || !threshold || *threshold <= 0)
        return;
    const ThermalState reached = temperature >= *threshold ? meaning->state : ThermalState::nominal;
    state = state == ThermalState::unknown ? reached : std::max(state, reached);
}

} // namespace

ThermalState readLinuxThermalState(const QString& root) {
    ThermalState state = ThermalState::unknown;
    const QString zones = root + u"sys/class/thermal/"_s;
    for (const QString& zone : QDir(zones).entryList({u"thermal_zone*"_s}, QDir::Dirs)) {
        const QString folder = zones + zone + u'/';
        const auto temperature = numberIn(folder + u"temp"_s);
        if (!temperature)
            continue;
        for (int trip = 0; QFile::exists(u"%1trip_point_%2_type"_s.arg(folder).arg(trip)); ++trip)
            applyTrip(u"%1trip_point_%2_"_s.arg(folder).arg(trip), *temperature, state);
    }
    return state;
}

} // namespace tarnwick
