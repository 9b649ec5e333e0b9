#include "FleetFilter.h"

#include "card/ServerCardContent.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isMark(QChar character) {
    return character.isMark();
}

/// Without diacritics, and in one letter case.
QString folded(const QString& text) {
    QString plain = text.normalized(QString::NormalizationForm_KD);
    if (std::ranges::any_of(std::as_const(plain), isMark))
        plain.removeIf(isMark);
    return std::move(plain).toCaseFolded();
}

bool isStatus(const Server& server, const QString& word) {
    constexpr qsizetype shortest = 3;
    if (word.size() < shortest)
        return false;
    const auto group = fleetGroup(server);
    return statusWord(server).startsWith(word) || (group && tarnwick::word(*group).startsWith(word));
}

bool hasContainer(const Server& server, const QString& word) {
    return server.metrics && std::ranges::any_of(
                                 server.metrics->containers,
                                 [&word](const ContainerInfo& container) {
                                     return folded(container.name).contains(word) ||
                                            folded(container.image).contains(word);
                                 });
}

} // namespace

QLatin1StringView word(FleetGroup group) {
    switch (group) {
    case FleetGroup::offline:
        return "offline"_L1;
    case FleetGroup::warning:
        return "warning"_L1;
    case FleetGroup::well:
        return "well"_L1;
    case FleetGroup::paused:
        return "paused"_L1;
    }
    Q_UNREACHABLE();
}

std::optional<FleetGroup> fleetGroup(const Server& server) {
    if (!server.isEnabled)
        return FleetGroup::paused;
    if (!server.metrics)
        return std::nullopt;
    switch (server.metrics->status()) {
    case ServerHealthStatus::healthy:
        return FleetGroup::well;
    case ServerHealthStatus::warning:
    case ServerHealthStatus::critical:
        return FleetGroup::warning;
    case ServerHealthStatus::offline:
        return FleetGroup::offline;
    case ServerHealthStatus::checking:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

FleetFilter::FleetFilter(const QString& text, std::optional<FleetGroup> group)
    : text_(text), words_(folded(text).simplified().split(u' ', Qt::SkipEmptyParts)), group_(group) {}

bool FleetFilter::matches(const Server& server) const {
    if (group_ && fleetGroup(server) != group_)
        return false;
    if (words_.isEmpty())
        return true;
    const QString address = folded(server.name) + u'\n' + folded(server.user + u'@' + server.host);
    return std::ranges::all_of(words_, [&](const QString& word) {
        return address.contains(word) || isStatus(server, word) || hasContainer(server, word);
    });
}

} // namespace tarnwick
