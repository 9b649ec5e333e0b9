#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QRect>

#include <algorithm>

namespace tarnwick {

/// The program's windows as a screen reader meets them: what there is to press, and where.
class ScreenReader {
public:
    explicit ScreenReader(const QDBusConnection& session) {
        const QDBusMessage reply =
            session.call(QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                                        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")),
                         QDBus::Block, patience_);
        if (reply.type() == QDBusMessage::ReplyMessage)
            bus_ = QDBusConnection::connectToBus(reply.arguments().constFirst().toString(),
                                                 QStringLiteral("accessibility"));
    }
    ~ScreenReader() { QDBusConnection::disconnectFromBus(QStringLiteral("accessibility")); }
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    [[nodiscard]] bool isConnected() const { return bus_.isConnected(); }
    /// The places on the screen of all elements of that name, from top to bottom.
    [[nodiscard]] QList<QRect> places(const QString& name) const {
        QList<QRect> found;
        collect({QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root")}, name,
                found);
        std::ranges::sort(found, {}, &QRect::top);
        return found;
    }

private:
    static constexpr int patience_ = 30'000; ///< milliseconds
    struct Element {
        QString service;
        QString path;
    };

    [[nodiscard]] QVariant ask(const Element& element, const QString& interface, const QString& method,
                               const QVariantList& arguments) const {
        QDBusMessage message = QDBusMessage::createMethodCall(element.service, element.path, interface, method);
        message.setArguments(arguments);
        const QDBusMessage reply = bus_.call(message, QDBus::Block, patience_);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
    }

    void collect(const Element& element, const QString& name, QList<QRect>& found) const {
        const QVariant named = ask(element, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                                   {QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("Name")});
        if (named.value<QDBusVariant>().variant().toString() == name)
            found += place(element);
        for (const Element& child : children(element))
            collect(child, name, found);
    }

    [[nodiscard]] QRect place(const Element& element) const {
        const QVariant reply = ask(element, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GetExtents"),
                                   {0U}); // on the screen
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

    [[nodiscard]] QList<Element> children(const Element& element) const {
        QList<Element> result;
        const QVariant reply =
            ask(element, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetChildren"), {});
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

    QDBusConnection bus_{QStringLiteral("accessibility")};
};

} // namespace tarnwick
