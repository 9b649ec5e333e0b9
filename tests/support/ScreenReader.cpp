#include "ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
constexpr int patience = 30'000; ///< milliseconds
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
    for (const Element& element : elements(name))
        found += place(element);
    std::ranges::sort(found, {}, &QRect::top);
    return found;
}

QString ScreenReader::description(const QString& name) const {
    const QList<Element> found = elements(name);
    return found.isEmpty() ? QString() : text(found.first(), u"Description"_s);
}

QVariant ScreenReader::ask(const Element& element, const QString& interface, const QString& method,
                           const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(element.service, element.path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = bus_.call(message, QDBus::Block, patience);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QString ScreenReader::text(const Element& element, const QString& property) const {
    const QVariant reply =
        ask(element, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {u"org.a11y.atspi.Accessible"_s, property});
    return reply.value<QDBusVariant>().variant().toString();
}

QList<ScreenReader::Element> ScreenReader::elements(const QString& name) const {
    QList<Element> found;
    collect({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s}, name, found);
    return found;
}

void ScreenReader::collect(const Element& element, const QString& name, QList<Element>& found) const {
    if (text(element, u"Name"_s) == name && isShown(element))
        found += element;
    for (const Element& child : children(element))
        collect(child, name, found);
}

bool ScreenReader::isShown(const Element& element) const {
    constexpr quint32 showing = 1U << 25;
    const QVariant reply = ask(element, u"org.a11y.atspi.Accessible"_s, u"GetState"_s, {});
    return reply.isValid() && (qdbus_cast<QList<quint32>>(reply).value(0) & showing) != 0;
}

QRect ScreenReader::place(const Element& element) const {
    const QVariant reply = ask(element, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {0U}); // on the screen
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (reply.isValid()) {
        const auto argument = reply.value<QDBusArgument>();
        argument.beginStructure();
        argument >> x >> y >> width >> height;
        argument.endStructure();
    }
    return {x, y, width, height};
}

QList<ScreenReader::Element> ScreenReader::children(const Element& element) const {
    QList<Element> result;
    const QVariant reply = ask(element, u"org.a11y.atspi.Accessible"_s, u"GetChildren"_s, {});
    if (!reply.isValid())
        return result;
    const auto argument = reply.value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Element child;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> child.service >> path;
        argument.endStructure();
        child.path = path.path();
        result += child;
    }
    argument.endArray();
    return result;
}

} // namespace tarnwick
