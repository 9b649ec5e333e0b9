#pragma once

#include "Server.h"

#include <QLatin1StringView>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace tarnwick {

/// How a large fleet is counted.
enum class FleetGroup { offline, warning, well, paused };

inline constexpr std::array fleetGroups{FleetGroup::offline, FleetGroup::warning, FleetGroup::well, FleetGroup::paused};

/// The group's own word: "offline", "warning", "well" or "paused".
[[nodiscard]] QLatin1StringView word(FleetGroup group);
/// A critical server counts as in warning; none of the groups has a server whose first check is not done.
[[nodiscard]] std::optional<FleetGroup> fleetGroup(const Server& server);

/// What the user looks for among the cards. Each word of the text must be found: in the server's name, in user@host, in
/// the name or the image of one of its containers, or as the beginning (of three letters or more) of the word of its
/// status or group. Letter case and diacritics make no difference.
class FleetFilter {
public:
    FleetFilter() = default;
    explicit FleetFilter(const QString& text, std::optional<FleetGroup> group = std::nullopt);

    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] std::optional<FleetGroup> group() const { return group_; }
    /// Whether every server matches.
    [[nodiscard]] bool isEmpty() const { return words_.isEmpty() && !group_; }
    [[nodiscard]] bool matches(const Server& server) const;

    friend bool operator==(const FleetFilter&, const FleetFilter&) = default;

private:
    QString text_;
    QStringList words_; ///< folded
    std::optional<FleetGroup> group_;
};

} // namespace tarnwick
