#include "StatusNotifierAdaptor.h"

#include <QDBusMessage>
#include <QGuiApplication>
#include <QStringList>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace tarnwick {

StatusNotifierAdaptor::StatusNotifierAdaptor(StatusNotifierItem* item, const SessionBus& bus)
    : QDBusAbstractAdaptor(item), item_(*item), bus_(bus) {
    connect(item, &StatusNotifierItem::textChanged, this, &StatusNotifierAdaptor::sendText);
    connect(item, &StatusNotifierItem::iconChanged, this, &StatusNotifierAdaptor::NewIcon);
}

void StatusNotifierAdaptor::sendText() {
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
    Q_EMIT XAyatanaNewLabel(label(), labelGuide());
    // Hosts that cache properties notice a new label only by the standard signal.
    QDBusMessage changed = QDBusMessage::createSignal(u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s,
                                                      u"PropertiesChanged"_s);
    changed << u"org.kde.StatusNotifierItem"_s
            << QVariantMap{{u"XAyatanaLabel"_s, label()}, {u"XAyatanaLabelGuide"_s, labelGuide()}} << QStringList();
    bus_.connection().send(changed);
}

void StatusNotifierAdaptor::Activate(int x, int y) {
    item_.click(x, y);
}

void StatusNotifierAdaptor::SecondaryActivate(int x, int y) {
    item_.click(x, y);
}

void StatusNotifierAdaptor::ContextMenu(int x, int y) {
    item_.click(x, y);
}

void StatusNotifierAdaptor::Scroll(int /*delta*/, const QString& /*orientation*/) {}

void StatusNotifierAdaptor::ProvideXdgActivationToken(const QString& token, const QDBusMessage& call) {
    if (!QGuiApplication::platformName().startsWith("wayland"_L1)) {
        call.setDelayedReply(true);
        bus_.connection().send(call.createErrorReply(QDBusError::UnknownMethod, u"There are no such tokens on X11"_s));
        return;
    }
    // Qt reads it when a window asks for the focus, and clears it then.
    qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
}

} // namespace tarnwick
