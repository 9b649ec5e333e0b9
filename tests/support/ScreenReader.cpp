#include "ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
constexpr int patience = 30'000; ///< milliseconds
const std::pair root{u"org.a11y.atspi.Registry"_s, QDBusObjectPath(u"/org/a11y/atspi/accessible/root"_s)};
} // namespace

ScreenReader::ScreenReader(const QDBusConnection& session) {
    const QDBusMessage reply = session.call(
        QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s),
        QDBus::Block, patience);
    if (reply.type() == QDBusMessage::ReplyMessage)
        bus_ = QDBusConnection::connectToBus(reply.arguments().constFirst().toString(), u"accessibility"_s);
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(u"accessibility"_s);
}

QList<QRect> ScreenReader::places(const QString& name) const {
    QList<QRect> found;
    const QList<Element> shown = elements(name, root);
    for (const Element& element : shown)
        found += qdbus_cast<QRect>(ask(element, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {0U})); // on the screen
    std::ranges::sort(found, {}, &QRect::top);
    return found;
}

QString ScreenReader::description(const QString& name) const {
    const QList<Element> found = elements(name, root);
    return found.isEmpty() ? QString() : text(found.first(), u"Description"_s);
}

QVariant ScreenReader::ask(const Element& element, const QString& interface, const QString& method,
                           const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(element.first, element.second.path(), interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = bus_.call(message, QDBus::Block, patience);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QString ScreenReader::text(const Element& element, const QString& property) const {
    const QVariant reply =
        ask(element, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {u"org.a11y.atspi.Accessible"_s, property});
    return reply.value<QDBusVariant>().variant().toString();
}

QList<ScreenReader::Element> ScreenReader::elements(const QString& name, const Element& from) const {
    QList<Element> found;
    if (text(from, u"Name"_s) == name && isShown(from))
        found += from;
    const auto children = qdbus_cast<QList<Element>>(ask(from, u"org.a11y.atspi.Accessible"_s, u"GetChildren"_s));
    for (const Element& child : children)
        found += elements(name, child);
    return found;
}

bool ScreenReader::isShown(const Element& element) const {
    constexpr quint32 showing = 1U << 25;
    const QVariant states = ask(element, u"org.a11y.atspi.Accessible"_s, u"GetState"_s);
    return (qdbus_cast<QList<quint32>>(states).value(0) & showing) != 0;
}

} // namespace tarnwick
