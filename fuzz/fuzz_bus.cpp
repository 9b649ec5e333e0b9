// What other programs on the session bus answer, announce and ask: a portal, a tray's watcher, a host of our menu. Each
// input is a list of values of any type, nested as it says. Needs a bus of its own: dbus-run-session.

#include "ColorScheme.h"
#include "Fuzz.h"
#include "InterfaceFont.h"
#include "StatusMenu.h"
#include "StatusNotifierItem.h"
#include "linux/SessionBus.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusSignature>
#include <QDBusVirtualObject>
#include <QFont>
#include <QGuiApplication>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

constexpr int deepest = 8;
constexpr int mostTurns = 20;

/// Values made of the bytes of an input; zeros when there are no more.
class Values {
public:
    Values(const std::uint8_t* data, std::size_t size) : rest_(bytesOf(data, size)) {}

    [[nodiscard]] bool isEmpty() const { return rest_.isEmpty(); }

    quint64 number(int bytes) {
        quint64 number = 0;
        for (; bytes > 0; --bytes)
            number = number << 8 | byte();
        return number;
    }

    /// Up to the next zero.
    QString text() {
        const qsizetype end = rest_.indexOf('\0');
        const QByteArray text = rest_.left(end);
        rest_ = end < 0 ? QByteArray() : rest_.sliced(end + 1);
        return QString::fromUtf8(text);
    }

    /// A value of a type of the bus, by its letter or by one of our own.
    QVariant value(char type, int depth = 0) {
        switch (type) {
        case 'b':
            return byte() % 2 == 1;
        case 'n':
            return QVariant::fromValue(static_cast<qint16>(number(2)));
        case 'i':
            return static_cast<qint32>(number(4));
        case 'u':
            return static_cast<quint32>(number(4));
        case 'x':
            return static_cast<qint64>(number(8));
        case 'd':
            return static_cast<double>(static_cast<qint64>(number(8))) * 1e-3;
        case 'o':
            return QVariant::fromValue(QDBusObjectPath(u"/a/b"_s));
        case 'g':
            return QVariant::fromValue(QDBusSignature(u"a{sv}"_s));
        case 'Y':
            return text().toUtf8();
        case 'S':
            return QStringList{text(), text()};
        case 'I':
            return QVariant::fromValue(QList{static_cast<int>(number(1)), static_cast<int>(number(4))});
        case 'E': {
            const auto event = [this] {
                return StatusMenuEvent{static_cast<int>(number(1)), text(), QDBusVariant(any(1)), 0};
            };
            return QVariant::fromValue(QList{event(), event()});
        }
        case 'v':
            return QVariant::fromValue(QDBusVariant(depth < deepest ? any(depth + 1) : 0));
        case 'a': {
            QVariantList list;
            for (auto count = number(1) % 4; count > 0 && depth < deepest; --count)
                list << any(depth + 1);
            return list;
        }
        case 'm': {
            QVariantMap map;
            for (auto count = number(1) % 4; count > 0 && depth < deepest; --count) {
                const QString key = text();
                map.insert(key, any(depth + 1));
            }
            return map;
        }
        case '(':
            return QVariant::fromValue(StatusNotifierToolTip{text(), {{1, 1, text().toUtf8()}}, text(), text()});
        default:
            return text();
        }
    }

    QVariant any(int depth = 0) { return value(static_cast<char>(byte()), depth); }

    /// Arguments of these types, or of any.
    QVariantList arguments(QByteArrayView types) {
        QVariantList list;
        if (number(1) % 4 != 0)
            for (const char type : types)
                list << value(type);
        else
            for (auto count = number(1) % 5; count > 0; --count)
                list << any();
        return list;
    }

private:
    quint8 byte() {
        const auto first = static_cast<quint8>(rest_.isEmpty() ? 0 : rest_.front());
        rest_ = rest_.sliced(std::min<qsizetype>(1, rest_.size()));
        return first;
    }

    QByteArray rest_;
};

/// Everybody else on the bus.
class Others : public QDBusVirtualObject {
public:
    Others() {
        require(us.isConnected() && them.isConnected(), "there is a session bus, as dbus-run-session makes one");
        for (const QString& name : {u"org.freedesktop.portal.Desktop"_s, u"org.kde.StatusNotifierWatcher"_s})
            require(them.registerService(name), "the bus is nobody else's");
        them.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath);
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == u"Settled"_s)
            return connection.send(message.createReply());
        const bool isRefused = values == nullptr || values->number(1) % 8 == 7;
        const QVariantList answer = isRefused ? QVariantList() : values->arguments("v");
        if (message.member() == u"Get")
            hostAnswer = answer;
        return connection.send(isRefused ? message.createErrorReply(QDBusError::Failed, u"no"_s)
                                         : message.createReply(answer));
    }

    /// Waits until an answer has come over the connection, and with it all that was sent before.
    static QDBusMessage answerTo(const QDBusConnection& from, const QDBusMessage& call) {
        const QDBusPendingCallWatcher watcher(from.asyncCall(call));
        bool hasCome = false;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &watcher, [&hasCome] { hasCome = true; });
        while (!hasCome)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return watcher.reply();
    }

    /// Until our program has all answers to what it asked, and to what it then asked.
    void settle() const {
        const QDBusMessage settled = QDBusMessage::createMethodCall(them.baseService(), u"/"_s, {}, u"Settled"_s);
        for (int rounds = 0; rounds < 2; ++rounds)
            (void)answerTo(us, settled);
    }

    SessionBus session;
    QDBusConnection us = session.connection();
    QDBusConnection them = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"them"_s);
    Values* values = nullptr; ///< what they answer with; null: they refuse
    QVariantList hostAnswer;  ///< to whether there is a host for the tray; empty when refused
};

struct Question {
    QStringView path;
    QStringView interface;
    QStringView member;
    QByteArrayView types;
};
constexpr QStringView menu = u"/StatusMenu";
constexpr QStringView menuInterface = u"com.canonical.dbusmenu";
constexpr QStringView itself = u"/StatusNotifierItem";
constexpr QStringView itemInterface = u"org.kde.StatusNotifierItem";
constexpr QStringView properties = u"org.freedesktop.DBus.Properties";
constexpr std::array questions{
    Question{menu, menuInterface, u"GetLayout", "iiS"},  Question{menu, menuInterface, u"GetGroupProperties", "IS"},
    Question{menu, menuInterface, u"GetProperty", "is"}, Question{menu, menuInterface, u"Event", "isvu"},
    Question{menu, menuInterface, u"EventGroup", "E"},   Question{menu, menuInterface, u"AboutToShowGroup", "I"},
    Question{itself, itemInterface, u"Activate", "ii"},  Question{itself, itemInterface, u"Scroll", "is"},
    Question{itself, properties, u"Get", "ss"},          Question{itself, properties, u"Set", "ssv"},
    Question{itself, properties, u"GetAll", "s"},
};

/// What somebody asks of our item. Each question gets its answer, and an item is clicked where one asks for it.
void ask(const Others& others, Values& values, const int& clicks) {
    const Question& question = questions.at(values.number(1) % questions.size());
    const int before = clicks;
    QDBusMessage call = QDBusMessage::createMethodCall(others.us.baseService(), question.path.toString(),
                                                       question.interface.toString(), question.member.toString());
    call.setArguments(values.arguments(question.types));
    const QDBusMessage answer = Others::answerTo(others.them, call);
    require(answer.type() == QDBusMessage::ReplyMessage || answer.errorName() != u"org.freedesktop.DBus.Error.NoReply",
            "every question is answered");
    const bool isClick = question.member == u"Activate" || question.member.startsWith(u"Event");
    require(clicks - before <= (isClick ? 2 : 0), "only a click is a click");
}

/// The desktop turns light or dark, or says something else about that or about its font.
void changeSetting(const Others& others, Values& values, const ColorScheme& colors) {
    const bool isScheme = values.number(1) % 2 == 0;
    const QVariant value = values.any();
    QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                     u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
    if (isScheme)
        signal << u"org.freedesktop.appearance"_s << u"color-scheme"_s;
    else
        signal << u"org.gnome.desktop.interface"_s << u"font-name"_s;
    signal << QVariant::fromValue(QDBusVariant(value));
    (void)others.them.send(signal);
    others.settle();
    const bool isStated = isScheme && value.typeId() == QMetaType::UInt && (value.toUInt() == 1 || value.toUInt() == 2);
    require(!isStated || colors.isDark() == (value.toUInt() == 1), "what the desktop states is what counts");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CURRENT_DESKTOP", "GNOME"); // there our item has a menu, too
    new QGuiApplication(*count, *arguments);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Others others;
    Values values(data, size);
    others.values = &values;
    const qreal fontSize = QGuiApplication::font().pointSizeF();
    {
        const ColorScheme colors(others.session);
        const InterfaceFont font(others.session);
        const StatusNotifierItem item(others.session, colors);
        bool hasHost = false;
        int clicks = 0;
        QObject::connect(
            &item, &StatusNotifierItem::hostChanged, &item, [&](bool present) { hasHost = present; });
        QObject::connect(&item, &StatusItem::clicked, &item, [&] { ++clicks; });
        others.hostAnswer.clear();
        others.settle();
        const QVariant told = others.hostAnswer.value(0).value<QDBusVariant>().variant();
        require(!others.hostAnswer.isEmpty() || !hasHost, "no host without an answer");
        require(told.typeId() != QMetaType::Bool || hasHost == told.toBool(), "a host where the watcher says so");
        for (int turn = 0; turn < mostTurns && !values.isEmpty(); ++turn)
            if (values.number(1) % 2 == 0)
                ask(others, values, clicks);
            else
                changeSetting(others, values, colors);
        require(item.title().isEmpty(), "nobody else sets the item's text");
    }
    others.values = nullptr;
    others.settle();
    const QFont font = QGuiApplication::font();
    require(font.pointSizeF() == fontSize, "the font keeps its size");
    return 0;
}
