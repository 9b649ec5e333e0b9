#include "CardMenu.h"

#include "CardWords.h"
#include "PinCaptions.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isEnd(const QList<Server>& fleet, const Server& server, bool first) {
    return !fleet.isEmpty() && (first ? fleet.first() : fleet.last()).id == server.id;
}

} // namespace

QList<CardMenuEntry> cardMenu(const Server& server, const QList<Server>& fleet, const SystemWords& words) {
    const CardWords captions = cardWords(words);
    const CardMenuEntry divider;
    QList<CardMenuEntry> menu;
    if (server.isLocal) {
        menu += {.text = captions.hardware + u"..."_s, .symbol = u"cpu"_s, .command = CardCommand::showHardware};
        menu += {.text = captions.pinMenu, .symbol = u"pin.fill"_s, .command = CardCommand::showPinMenu};
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
    menu += {.text = captions.openSSH, .symbol = u"terminal"_s, .command = CardCommand::openSSH};
    menu += {.text = u"Refresh"_s, .symbol = u"arrow.clockwise"_s, .command = CardCommand::refresh};
    menu += {.text = server.isEnabled ? u"Pause Monitoring"_s : u"Resume Monitoring"_s,
             .symbol = server.isEnabled ? u"pause.circle"_s : u"play.circle"_s,
             .command = CardCommand::togglePause};
    menu += divider;
    menu += {.text = u"Delete Server"_s, .symbol = u"trash"_s, .command = CardCommand::remove, .isDestructive = true};
    return menu;
}

QList<CardMenuEntry> containerMenu(const ContainerInfo& container, bool isBusy) {
    const bool stops = container.canBeStopped();
    return {{.text = stops ? u"Stop"_s : u"Start"_s,
             .symbol = stops ? u"stop.circle"_s : u"play.circle"_s,
             .command = stops ? CardCommand::askToStopContainer : CardCommand::startContainer,
             .isEnabled = !isBusy,
             .containerId = container.id},
            {.text = u"Restart"_s,
             .symbol = u"arrow.clockwise"_s,
             .command = CardCommand::restartContainer,
             .isEnabled = !isBusy,
             .containerId = container.id},
            {},
            {.text = u"Enter Shell"_s,
             .symbol = u"terminal"_s,
             .command = CardCommand::openShell,
             .isEnabled = container.isRunning(),
             .containerId = container.id},
            {.text = u"Show Last 200 Log Lines"_s,
             .symbol = u"doc.text"_s,
             .command = CardCommand::openLog,
             .containerId = container.id}};
}

QList<CardMenuEntry> pinMenu(const MenuBarItemSet& pinned, const SystemWords& words) {
    QList<CardMenuEntry> menu;
    for (const MenuBarItem item : allMenuBarItems) {
        const bool isPinned = pinned.contains(item);
        menu += {.text = (isPinned ? u"\u2713 "_s : QString()) + menuCaption(item, pinWords(words)),
                 .symbol = isPinned ? u"checkmark"_s : symbolName(item),
                 .command = CardCommand::togglePin,
                 .pin = item};
    }
    menu += CardMenuEntry();
    for (const PinPreset preset : allPinPresets)
        menu += {.text = menuCaption(preset, pinWords(words)),
                 .symbol = symbolName(preset),
                 .command = CardCommand::assignPins,
                 .pins = pins(preset)};
    return menu;
}

} // namespace tarnwick
