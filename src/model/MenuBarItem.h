#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <optional>
#include <set>

namespace tarnwick {

/// The metrics that can be pinned to the status item. Declaration order is the order of every list and of the label.
enum class MenuBarItem { socTemp, peakTemp, ssdTemp, cpuUsage, gpuUsage, ramUsage, serverStatus };

inline constexpr std::array allMenuBarItems{MenuBarItem::socTemp,     MenuBarItem::peakTemp, MenuBarItem::ssdTemp,
                                            MenuBarItem::cpuUsage,    MenuBarItem::gpuUsage, MenuBarItem::ramUsage,
                                            MenuBarItem::serverStatus};

/// The stored word, which is also the item's identity.
[[nodiscard]] QString rawValue(MenuBarItem item);
/// Absent for any other string.
[[nodiscard]] std::optional<MenuBarItem> menuBarItemFromRawValue(QStringView text);
/// The human label used in pin menus and toggles.
[[nodiscard]] QString title(MenuBarItem item);
/// A fixed sample of what the item looks like in the status item.
[[nodiscard]] QString previewExample(MenuBarItem item);

/// Pinned items; walking it gives declaration order.
using MenuBarItemSet = std::set<MenuBarItem>;

/// The sets that views offer as one-click presets. A preset replaces the whole set.
namespace PinPreset {
[[nodiscard]] MenuBarItemSet standard();  ///< SoC temperature and fleet status
[[nodiscard]] MenuBarItemSet thermals();  ///< the three temperatures
[[nodiscard]] MenuBarItemSet resources(); ///< CPU, GPU and RAM load
[[nodiscard]] MenuBarItemSet all();
} // namespace PinPreset

} // namespace tarnwick
