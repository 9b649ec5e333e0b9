#pragma once

#include "MacHardwareCollector.h"
#include "MenuBarItem.h"
#include "SystemWords.h"
#include "controls/ColorRole.h"
#include "controls/TrendContent.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

#include <optional>

namespace tarnwick {

/// A live metric: three lines of text and, where it can be pinned, what pressing it does.
struct MacTile {
    Q_GADGET
    QML_VALUE_TYPE(macTile)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)
    Q_PROPERTY(tarnwick::MenuBarItem item MEMBER item)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(bool isPinned MEMBER isPinned)
    Q_PROPERTY(QString spoken READ spoken)
    Q_PROPERTY(tarnwick::TrendContent trend MEMBER trend)

public:
    QString title;
    QString value;
    QString subtitle;
    ColorRole::Role role = ColorRole::Role::Gray;
    MenuBarItem item = MenuBarItem::socTemp;
    QString help = {};
    QString hint = {}; ///< empty on a pinned tile
    bool isPinned = false;
    TrendContent trend = {}; ///< of the last two hours, where that is kept

    /// What a screen reader says after the title.
    [[nodiscard]] QString spoken() const {
        return value + QStringLiteral(", ") + subtitle + (trend.text.isEmpty() ? QString() : QStringLiteral(", ")) +
               trend.text;
    }

    friend bool operator==(const MacTile&, const MacTile&) = default;
};

/// Tiles under a heading.
struct MacTileGroup {
    Q_GADGET
    QML_VALUE_TYPE(macTileGroup)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(int count READ count)

public:
    QString symbol;
    ColorRole::Role role = ColorRole::Role::Gray;
    QString heading;
    QList<MacTile> tiles;

    [[nodiscard]] int count() const { return static_cast<int>(tiles.size()); }
    /// Default-constructed when there is none at that index.
    Q_INVOKABLE [[nodiscard]] tarnwick::MacTile tile(int index) const { return tiles.value(index); }

    friend bool operator==(const MacTileGroup&, const MacTileGroup&) = default;
};

/// The words and digits that differ between the sheet's tiles and the tour's.
struct MacTileWording {
    int cpuDecimals;
    QStringView SystemWords::*gpu;
    QStringView processor;
    QStringView hotspot;
};

/// The loads of processor, graphics and memory.
[[nodiscard]] MacTileGroup loadTiles(const MacHardwareInfo& info, const MacTileWording& wording,
                                     const SystemWords& words);
/// The temperatures of the processor, its hottest core and the storage.
[[nodiscard]] MacTileGroup thermalTiles(const MacHardwareInfo& info, const MacTileWording& wording,
                                        const SystemWords& words);

} // namespace tarnwick
