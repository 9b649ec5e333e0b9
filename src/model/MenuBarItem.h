#pragma once

#include <QObject>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>
#include <set>

namespace tarnwick {
Q_NAMESPACE

/// The metrics that can be pinned to the status item. Declaration order is the order of every list and of the label.
enum class MenuBarItem { socTemp, peakTemp, ssdTemp, cpuUsage, gpuUsage, ramUsage, serverStatus };
Q_ENUM_NS(MenuBarItem)

inline constexpr std::array allMenuBarItems{MenuBarItem::socTemp,     MenuBarItem::peakTemp, MenuBarItem::ssdTemp,
                                            MenuBarItem::cpuUsage,    MenuBarItem::gpuUsage, MenuBarItem::ramUsage,
                                            MenuBarItem::serverStatus};

/// The stored word, which is also the item's identity.
[[nodiscard]] QString rawValue(MenuBarItem item);
/// Absent for any other string.
[[nodiscard]] std::optional<MenuBarItem> menuBarItemFromRawValue(QStringView text);
/// What the captions call this computer and its processor, which differs by operating system.
struct PinWords {
    QStringView ownFigure; ///< before the name of a load: "Mac "; may be empty
    QStringView processor; ///< "SoC"
};
/// The human label used in toggles.
[[nodiscard]] QString title(MenuBarItem item, const PinWords& words);
/// The human label used in a card's menu.
[[nodiscard]] QString menuCaption(MenuBarItem item, const PinWords& words);
/// The symbol beside the item in a list.
[[nodiscard]] QString symbolName(MenuBarItem item);
/// The symbol of the status item while this is the first item pinned.
[[nodiscard]] QString labelSymbolName(MenuBarItem item);
/// A fixed sample of what the item looks like in the status item.
[[nodiscard]] QString previewExample(MenuBarItem item);
/// The welcome tour's own sample.
[[nodiscard]] QString tourExample(MenuBarItem item);

/// Pinned items; walking it gives declaration order.
using MenuBarItemSet = std::set<MenuBarItem>;

/// The sets that views offer as one-click presets. A preset replaces the whole set. Declaration order is the order of
/// every list.
enum class PinPreset { All, Resources, Thermals, Standard };
Q_ENUM_NS(PinPreset)

inline constexpr std::array allPinPresets{PinPreset::All, PinPreset::Resources, PinPreset::Thermals,
                                          PinPreset::Standard};

[[nodiscard]] MenuBarItemSet pins(PinPreset preset);
[[nodiscard]] QString symbolName(PinPreset preset);
/// Each view has a caption of its own for a preset; it is empty where the view does not offer the preset.
[[nodiscard]] QString menuCaption(PinPreset preset, const PinWords& words); ///< a card's menu
[[nodiscard]] QString sheetCaption(PinPreset preset);                       ///< the computer's sheet
[[nodiscard]] QString settingsCaption(PinPreset preset);                    ///< the settings sheet
[[nodiscard]] QString tourCaption(PinPreset preset);                        ///< the welcome tour

} // namespace tarnwick
