#include "PlasmaPanels.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace tarnwick {

QRect besidePlasmaPanels(const QScreen& screen, const QDBusConnection& bus) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.kde.plasmashell"_s, u"/StrutManager"_s, u"org.kde.PlasmaShell.StrutManager"_s, u"availableScreenRect"_s);
    question << screen.name();
    question.setAutoStartService(false);
    constexpr int patience = 100; // milliseconds
    const QDBusReply<QRect> answer = bus.call(question, QDBus::Block, patience);
    // The shell's pixels are those of the screen, but it scales the place of a screen, too; Qt scales only its size.
    const QPoint corner = screen.geometry().topLeft();
    const QRect free = answer.value().translated(corner - corner / screen.devicePixelRatio()) & screen.geometry();
    return answer.isValid() && !free.isEmpty() ? free : screen.geometry();
}

} // namespace tarnwick
