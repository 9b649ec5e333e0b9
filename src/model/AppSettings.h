#pragma once

#include "Instant.h"
#include "MenuBarItem.h"

#include <optional>

namespace tarnwick {

/// The user's preferences. A plain value; the store owns the live copy.
struct AppSettings {
    qint64 refreshIntervalSeconds = 30;      ///< seconds between full refreshes; the timer has a floor of 10
    double alertDiskThresholdPercent = 90.0; ///< disk use at which an alert is raised
    double alertRamThresholdPercent = 95.0;  ///< memory use at which an alert is raised
    bool showMenuBarLabel = true;            ///< text beside the status item's icon
    MenuBarItemSet pinnedMenuBarItems = pins(PinPreset::Standard); ///< may be empty
    bool soundAlerts = true;
    bool launchAtLogin = false;               ///< whether the session starts the program, as last seen
    Instant firstLaunchDate = Instant::now(); ///< stored only
    bool hasCompletedOnboarding = false;      ///< whether the welcome tour was completed
    /// Whether the connection to a server stays open for its next probe; absent until the user has chosen.
    std::optional<bool> shareConnections = {};

    [[nodiscard]] bool isPinned(MenuBarItem item) const { return pinnedMenuBarItems.contains(item); }
    [[nodiscard]] bool sharesConnections() const { return shareConnections.value_or(false); }
    /// Removes the item when pinned, else pins it. Unpinning the last one leaves an empty set.
    void togglePinned(MenuBarItem item) {
        if (pinnedMenuBarItems.erase(item) == 0)
            pinnedMenuBarItems.insert(item);
    }

    friend bool operator==(const AppSettings&, const AppSettings&) = default;
};

} // namespace tarnwick
