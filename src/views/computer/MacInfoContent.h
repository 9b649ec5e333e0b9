#pragma once

#include "MacHardwareCollector.h"
#include "MenuBarItem.h"
#include "controls/ColorRole.h"
#include "settings/PinListModel.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

#include <optional>

namespace tarnwick {

/// A live metric that pins itself to the status item when it is pressed.
struct MacTile {
    Q_GADGET
    QML_VALUE_TYPE(macTile)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(int role MEMBER role CONSTANT)
    Q_PROPERTY(QString help MEMBER help)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(bool isPinned MEMBER isPinned)
    Q_PROPERTY(QString spoken READ spoken)
    Q_PROPERTY(int pinRow READ pinRow)

public:
    QString title;
    QString value;
    QString subtitle;
    ColorRole::Role role = ColorRole::Role::Gray;
    QString help = {};
    QString hint = {}; ///< empty on a pinned tile
    bool isPinned = false;
    MenuBarItem item = MenuBarItem::socTemp;

    /// What a screen reader says after the title.
    [[nodiscard]] QString spoken() const { return value + QStringLiteral(", ") + subtitle; }
    /// The item's row in PinListModel.
    [[nodiscard]] int pinRow() const { return static_cast<int>(item); }

    friend bool operator==(const MacTile&, const MacTile&) = default;
};

/// The fleet summary's row: like a tile, without a live value.
struct FleetPinRow {
    Q_GADGET
    QML_VALUE_TYPE(fleetPinRow)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString example MEMBER example)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(bool isPinned MEMBER isPinned)
    Q_PROPERTY(int pinRow READ pinRow)

public:
    QString title;
    QString example;
    QString symbol;
    bool isPinned = false;

    [[nodiscard]] static int pinRow() { return static_cast<int>(MenuBarItem::serverStatus); }

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
    Q_PROPERTY(int role MEMBER role CONSTANT)

public:
    QString name;
    QString category;
    QString temperature;
    ColorRole::Role role = ColorRole::Role::Gray;

    friend bool operator==(const MacSensorRow&, const MacSensorRow&) = default;
};

/// A button that replaces the whole set of pins.
struct PinPresetButton {
    Q_GADGET
    QML_VALUE_TYPE(pinPresetButton)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(tarnwick::PinListModel::Preset preset MEMBER preset)

public:
    QString symbol;
    QString caption;
    PinListModel::Preset preset = PinListModel::Preset::Standard;
};

/// Everything the sheet about this computer shows.
struct MacInfoContent {
    Q_GADGET
    QML_VALUE_TYPE(macInfoContent)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QString identity MEMBER identity)
    Q_PROPERTY(QString chip MEMBER chip)
    Q_PROPERTY(QString thermalState MEMBER thermalState)
    Q_PROPERTY(int thermalRole MEMBER thermalRole CONSTANT)
    Q_PROPERTY(tarnwick::FleetPinRow fleet MEMBER fleet)
    Q_PROPERTY(int factCount READ factCount)
    Q_PROPERTY(QString sensorsCaption MEMBER sensorsCaption)
    Q_PROPERTY(QString sensorsSymbol MEMBER sensorsSymbol)
    Q_PROPERTY(bool showsSensors MEMBER showsSensors)

public:
    QString heading;
    QString identity;
    QString chip;
    QString thermalState;
    ColorRole::Role thermalRole = ColorRole::Role::Gray;
    QList<MacTile> tiles; ///< three of load, then three of temperature
    FleetPinRow fleet;
    QList<MacFact> facts;
    QString sensorsCaption; ///< tells their number, shown or not
    QString sensorsSymbol;
    bool showsSensors = false;
    QList<MacSensorRow> sensors; ///< hottest first

    /// An empty one beyond the last.
    Q_INVOKABLE [[nodiscard]] tarnwick::MacTile tile(int index) const { return tiles.value(index); }
    Q_INVOKABLE [[nodiscard]] tarnwick::MacFact fact(int index) const { return facts.value(index); }
    [[nodiscard]] int factCount() const { return static_cast<int>(facts.size()); }

    friend bool operator==(const MacInfoContent&, const MacInfoContent&) = default;
};

[[nodiscard]] MacInfoContent macInfoContent(const MacHardwareInfo& info, const MenuBarItemSet& pinned,
                                            bool showingAllSensors);
/// The presets, in the order of their buttons.
[[nodiscard]] QList<PinPresetButton> macPinPresets();

/// "Mac mini (Apple M2 Pro)"
[[nodiscard]] QString machineHeading(const MacHardwareInfo& info);
/// "Mac14,12 • macOS 14.5"
[[nodiscard]] QString machineIdentity(const MacHardwareInfo& info);
/// "10 Cores" from "10 Cores (4 Performance + 6 Efficiency)": the text up to its first space, and " Cores".
[[nodiscard]] QString coreCountText(const QString& cpuCores);
/// "11.0/16GB"
[[nodiscard]] QString ramAmountText(const MacHardwareInfo& info);
/// "41.3°C"; "--" when there is no reading.
[[nodiscard]] QString temperatureText(std::optional<double> celsius);

} // namespace tarnwick
