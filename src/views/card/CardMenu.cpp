#include "CardMenu.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

struct PinCaption {
    MenuBarItem item;
    QStringView caption;
    QStringView symbol;
};
constexpr std::array pinCaptions{
    PinCaption{MenuBarItem::socTemp, u"Mac SoC Average Temp", u"thermometer.medium"},
    PinCaption{MenuBarItem::peakTemp, u"Hotspot / Peak Core Temp", u"flame"},
    PinCaption{MenuBarItem::ssdTemp, u"SSD Storage Temp", u"internaldrive"},
    PinCaption{MenuBarItem::cpuUsage, u"Mac CPU Usage", u"cpu"},
    PinCaption{MenuBarItem::gpuUsage, u"Mac GPU Usage", u"square.grid.2x2"},
    PinCaption{MenuBarItem::ramUsage, u"Mac RAM Usage", u"memorychip"},
    PinCaption{MenuBarItem::serverStatus, u"Server Fleet Status", u"server.rack"},
};

struct PresetCaption {
    QStringView caption;
    QStringView symbol;
    MenuBarItemSet (*pins)();
};
constexpr std::array presetCaptions{
    PresetCaption{u"Pin All Metrics (All 7)", u"pin.fill", PinPreset::all},
    PresetCaption{u"Pin All Resources (CPU + GPU + RAM)", u"cpu", PinPreset::resources},
    PresetCaption{u"Pin All Thermals (SoC + Peak + SSD)", u"flame.fill", PinPreset::thermals},
    PresetCaption{u"Reset Default (SoC + Status)", u"arrow.counterclockwise", PinPreset::standard},
};

bool isEnd(const QList<Server>& fleet, const Server& server, bool first) {
    return !fleet.isEmpty() && (first ? fleet.first() : fleet.last()).id == server.id;
}

} // namespace

QList<CardMenuEntry> cardMenu(const Server& server, const QList<Server>& fleet) {
    const CardMenuEntry divider;
    QList<CardMenuEntry> menu;
    if (server.isLocal) {
        menu += {.text = u"Hardware Specs & Thermals..."_s, .symbol = u"cpu"_s, .command = CardCommand::showHardware};
        menu += {.text = u"Pin to Menu Bar..."_s, .symbol = u"pin.fill"_s, .command = CardCommand::showPinMenu};
        menu += divider;
    }
    menu += {.text = u"Move Up"_s,
             .symbol = u"arrow.up"_s,
             .command = CardCommand::moveUp,
             .isEnabled = !isEnd(fleet, server, true)};
    menu += {.text = u"Move Down"_s,
             .symbol = u"arrow.down"_s,
             .command = CardCommand::moveDown,
             .isEnabled = !isEnd(fleet, server, false)};
    menu += divider;
    menu += {.text = u"Open SSH in Terminal"_s, .symbol = u"terminal"_s, .command = CardCommand::openSSH};
    menu += {.text = u"Refresh"_s, .symbol = u"arrow.clockwise"_s, .command = CardCommand::refresh};
    menu += {.text = server.isEnabled ? u"Pause Monitoring"_s : u"Resume Monitoring"_s,
             .symbol = server.isEnabled ? u"pause.circle"_s : u"play.circle"_s,
             .command = CardCommand::togglePause};
    menu += divider;
    menu += {.text = u"Delete Server"_s, .symbol = u"trash"_s, .command = CardCommand::remove, .isDestructive = true};
    return menu;
}

QList<CardMenuEntry> pinMenu(const MenuBarItemSet& pinned) {
    QList<CardMenuEntry> menu;
    for (const PinCaption& pin : pinCaptions) {
        const bool isPinned = pinned.contains(pin.item);
        menu += {.text = (isPinned ? u"\u2713 "_s : QString()) + pin.caption.toString(),
                 .symbol = isPinned ? u"checkmark"_s : pin.symbol.toString(),
                 .command = CardCommand::togglePin,
                 .pin = pin.item};
    }
    menu += CardMenuEntry();
    for (const PresetCaption& preset : presetCaptions) {
        menu += {.text = preset.caption.toString(),
                 .symbol = preset.symbol.toString(),
                 .command = CardCommand::assignPins,
                 .pins = preset.pins()};
    }
    return menu;
}

} // namespace tarnwick
