#pragma once

#include "MacTile.h"
#include "SharedCaptions.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// The fleet summary's row: like a tile, without a live value.
struct FleetPinRow {
    Q_GADGET
    QML_VALUE_TYPE(fleetPinRow)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString example MEMBER example)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool isPinned MEMBER isPinned)
    Q_PROPERTY(tarnwick::MenuBarItem item READ item CONSTANT)

public:
    QString title;
    QString example;
    QString symbol;
    bool isPinned = false;

    [[nodiscard]] static MenuBarItem item() { return MenuBarItem::serverStatus; }

    friend bool operator==(const FleetPinRow&, const FleetPinRow&) = default;
};

/// One line of the hardware description.
struct MacFact {
    Q_GADGET
    QML_VALUE_TYPE(macFact)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString symbol;
    QString label;
    QString value;

    friend bool operator==(const MacFact&, const MacFact&) = default;
};

/// One temperature sensor.
struct MacSensorRow {
    Q_GADGET
    QML_VALUE_TYPE(macSensorRow)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString category MEMBER category)
    Q_PROPERTY(QString temperature MEMBER temperature)
    Q_PROPERTY(tarnwick::ColorRole::Role role MEMBER role)

public:
    QString name;
    QString category;
    QString temperature;
    ColorRole::Role role = ColorRole::Role::Gray;

    friend bool operator==(const MacSensorRow&, const MacSensorRow&) = default;
};

/// Everything the sheet about this computer shows.
struct MacInfoContent {
    Q_GADGET
    QML_VALUE_TYPE(macInfoContent)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QString identity MEMBER identity)
    Q_PROPERTY(QString refresh MEMBER refresh)
    Q_PROPERTY(QString done MEMBER done)
    Q_PROPERTY(QString guide MEMBER guide)
    Q_PROPERTY(QString chip MEMBER chip)
    Q_PROPERTY(QString thermalState MEMBER thermalState)
    Q_PROPERTY(tarnwick::ColorRole::Role thermalRole MEMBER thermalRole)
    Q_PROPERTY(tarnwick::MacTileGroup loads MEMBER loads)
    Q_PROPERTY(tarnwick::MacTileGroup thermals MEMBER thermals)
    Q_PROPERTY(tarnwick::FleetPinRow fleet MEMBER fleet)
    Q_PROPERTY(QString factsHeading MEMBER factsHeading)
    Q_PROPERTY(int factCount READ factCount)
    Q_PROPERTY(QString sensorsCaption MEMBER sensorsCaption)
    Q_PROPERTY(QString sensorsSymbol MEMBER sensorsSymbol)
    Q_PROPERTY(bool showsSensors MEMBER showsSensors)

public:
    QString heading;
    QString identity;
    QString refresh = QStringLiteral("Refresh Sensors");
    QString done = SharedCaptions::done.toString();
    QString guide; ///< says what pressing a tile does
    QString chip;
    QString thermalState;
    ColorRole::Role thermalRole = ColorRole::Role::Gray;
    MacTileGroup loads;
    MacTileGroup thermals;
    FleetPinRow fleet;
    QString factsHeading = QStringLiteral("Hardware Specifications");
    QList<MacFact> facts;   ///< those that are known
    QString sensorsCaption; ///< with their number
    QString sensorsSymbol;
    bool showsSensors = false;
    QList<MacSensorRow> sensors; ///< hottest first

    /// Default-constructed when there is none at that index.
    Q_INVOKABLE [[nodiscard]] tarnwick::MacFact fact(int index) const { return facts.value(index); }
    [[nodiscard]] int factCount() const { return static_cast<int>(facts.size()); }

    friend bool operator==(const MacInfoContent&, const MacInfoContent&) = default;
};

/// `trend` is this computer's as a server of the fleet; null: the tiles have no charts.
[[nodiscard]] MacInfoContent macInfoContent(const MacHardwareInfo& info, const MenuBarItemSet& pinned,
                                            bool showingAllSensors, const SystemWords& words,
                                            const ServerTrend* trend = nullptr);

/// "Mac mini (Apple M2 Pro)"
[[nodiscard]] QString machineHeading(const MacHardwareInfo& info);
/// "Mac14,12 • macOS 14.5"
[[nodiscard]] QString machineIdentity(const MacHardwareInfo& info);

} // namespace tarnwick
