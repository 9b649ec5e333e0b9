#include "Companion.h"
#include "Desktop.h"
#include "FileTree.h"
#include "linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QVariantMap>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

const QString serviceName = u"org.freedesktop.Notifications"_s;
const QString servicePath = u"/org/freedesktop/Notifications"_s;

/// What the real service shows, newest first.
QJsonArray dunstHistory() {
    QProcess dunstctl;
    dunstctl.start(u"/bin/sh"_s, {u"-c"_s, u"dunstctl close-all; dunstctl history"_s});
    dunstctl.waitForFinished();
    return QJsonDocument::fromJson(dunstctl.readAllStandardOutput())["data"_L1][0].toArray();
}

} // namespace

/// A notification service that records the calls.
class RecordingService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    QStringList capabilities;
    QList<QStringList> texts; ///< application, summary and body of each notification
    QList<QVariantMap> hints;

public Q_SLOTS:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString& application, uint, const QString&, const QString& summary, const QString& body,
                const QStringList&, const QVariantMap& hintsOfIt, int) {
        texts.append({application, summary, body});
        hints.append(hintsOfIt);
        return 1;
    }
};

class NotificationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("XDG_RUNTIME_DIR", runtime_.root().toUtf8());
        Desktop::post({u"Tarnwick"_s, u"no bus"_s, u"x"_s, {}});
        const auto isConnected = [] {
            return SessionBus::shared().connection().isConnected();
        };
        QByteArray address;
        for (int start = 0; start < 2; ++start) { // the tests below run on a bus that was away
            bus_.stop();
            QTRY_VERIFY(!isConnected());
            address = bus_.startBus({u"--address=unix:path="_s + runtime_.full(u"bus"_s)});
            QTRY_VERIFY(isConnected());
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        QVERIFY(QDBusConnection::connectToBus(QString::fromUtf8(address), u"service"_s).isConnected());
    }

    void noServiceIsNoHarm() {
        Desktop::post({u"Tarnwick"_s, u"lost"_s, u"x"_s, {}});
        // The answer comes after the one to the call above.
        QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(serviceName));
        QCoreApplication::processEvents();
    }

    void argumentsSuitTheService() {
        QDBusConnection connection(u"service"_s);
        RecordingService service;
        QVERIFY(connection.registerObject(servicePath, &service, QDBusConnection::ExportAllSlots));
        QVERIFY(connection.registerService(serviceName));

        DesktopNotification notification{u"Tarnwick"_s, u"Server Offline: <i>a</i>\n\u202e"_s,
                                         u"<b>bold</b> & \"q\" \x1b[0m\nline\u2067"_s + QChar(0), u"Hero"_s};
        Desktop::post(notification);
        QTRY_COMPARE(service.texts.size(), 1);
        notification.soundName.reset();
        service.capabilities = QStringList{u"body"_s, u"body-markup"_s};
        Desktop::post(notification);
        QTRY_COMPARE(service.texts.size(), 2);

        QStringList texts{u"Tarnwick"_s, u"Server Offline: <i>a</i> "_s, u"<b>bold</b> & \"q\"  [0m\nline "_s};
        QCOMPARE(service.texts[0], texts);
        texts[2] = u"&lt;b&gt;bold&lt;/b&gt; &amp; &quot;q&quot;  [0m\nline "_s;
        QCOMPARE(service.texts[1], texts);
        QVariantMap hints{{u"urgency"_s, QVariant::fromValue(uchar{1})}, {u"desktop-entry"_s, u"tarnwick"_s}};
        QCOMPARE(service.hints[1].value(u"urgency"_s).metaType(), QMetaType::fromType<uchar>());
        hints.insert(u"suppress-sound"_s, true);
        QCOMPARE(service.hints[1], hints);
        hints.remove(u"suppress-sound"_s);
        hints.insert(u"sound-name"_s, u"dialog-warning"_s);
        QCOMPARE(service.hints[0], hints);
        notification.body = QString(65536, u'e');
        Desktop::post(notification);
        QTRY_COMPARE(service.texts.value(2).value(2).size(), 1000);
        QVERIFY(connection.unregisterService(serviceName));
    }

    void aRealServiceShowsHostileTextAsText() {
        Companion display;
        qputenv("DISPLAY", display.startScreen());
        Companion dunst;
        runtime_.write(u"dunstrc"_s, "[global]\nmarkup = full\n");
        dunst.start(u"dunst"_s, {u"-conf"_s, runtime_.full(u"dunstrc"_s)});
        QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::sessionBus().interface()->isServiceRegistered(serviceName), 20'000);

        Desktop::post(
            {u"Tarnwick"_s, u"Server Offline: <u>a"_s, u"<b>x</b> </span> &amp; <img src='/dev/zero'>"_s, u"Hero"_s});
        QJsonArray history;
        QTRY_VERIFY_WITH_TIMEOUT(!(history = dunstHistory()).isEmpty(), 20'000);
        const QJsonObject shown = history.at(0).toObject();
        QCOMPARE(shown["appname"_L1]["data"_L1].toString(), u"Tarnwick"_s);
        QCOMPARE(shown["summary"_L1]["data"_L1].toString(), u"Server Offline: <u>a"_s);
        // The service adds its own markup around them; there is none inside.
        QCOMPARE(shown["message"_L1]["data"_L1].toString(),
                 u"<b>Server Offline: &lt;u&gt;a</b>\n"
                 "&lt;b&gt;x&lt;/b&gt; &lt;/span&gt; &amp;amp; &lt;img src='/dev/zero'&gt;"_s);
    }

    void theComputerHasAName() { QVERIFY(!Desktop::computerName().value_or(QString()).isEmpty()); }

private:
    FileTree runtime_;
    Companion bus_;
};

QTEST_GUILESS_MAIN(NotificationsTest)
#include "tst_notifications.moc"
