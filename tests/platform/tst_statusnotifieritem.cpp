#include "Companion.h"
#include "DesktopStatusItem.h"
#include "StatusMenu.h"
#include "StatusNotifierItem.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {
const auto watcherName = u"org.kde.StatusNotifierWatcher"_s;
const auto portalName = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;
const auto itemPath = u"/StatusNotifierItem"_s;
const auto itemInterface = u"org.kde.StatusNotifierItem"_s;
const StatusItemContent content{u"thermometer.medium"_s, u" 41°C • 2 OK"_s, u"Tarnwick"_s};

/// The watcher and host of a desktop. It records who registered.
class Watcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hosted)

public:
    explicit Watcher(const QDBusConnection& bus) : bus_(bus) {
        bus_.registerObject(u"/StatusNotifierWatcher"_s, this, QDBusConnection::ExportAllContents);
        bus_.registerService(watcherName);
    }
    ~Watcher() override {
        bus_.unregisterService(watcherName);
        bus_.unregisterObject(u"/StatusNotifierWatcher"_s);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    bool hosted = true;
    QStringList registered;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& service) { registered << service; }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusConnection bus_;
};

class Portal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key) {
        asked = group + u' ' + key;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(1U)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

public:
    QString asked;
};

/// Every signal that the item sends, in order.
class Recorder : public QObject {
    Q_OBJECT

public:
    QStringList names;
    QList<QDBusMessage> messages;

public Q_SLOTS:
    void received(const QDBusMessage& message) {
        names << message.member();
        messages << message;
    }
};
} // namespace

class tst_StatusNotifierItem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        address_ = QString::fromUtf8(
            daemon_.announcementOf(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s}));
    }

    void init() {
        qunsetenv("XDG_CURRENT_DESKTOP");
        bus_ = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address_, u"item"_s));
        hostBus_ = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address_, u"host"_s));
        QVERIFY(bus_->isConnected() && hostBus_->isConnected());
        colors_ = std::make_unique<ColorScheme>(*bus_);
        item_ = std::make_unique<StatusNotifierItem>(*bus_, *colors_);
        item_->setContent(content);
    }

    void cleanup() {
        item_.reset();
        colors_.reset();
        bus_.reset();
        hostBus_.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
        QDBusConnection::disconnectFromBus(u"host"_s);
    }

    void tellsTheHostEverythingItAsksFor() {
        QVariantMap properties = allProperties();
        const auto toolTip = qdbus_cast<StatusNotifierToolTip>(properties.take(u"ToolTip"_s));
        QCOMPARE(toolTip.title, u"Tarnwick"_s);
        QCOMPARE(toolTip.description, u"41°C • 2 OK"_s);
        properties.remove(u"IconPixmap"_s);
        const QVariantMap expected{{u"Category"_s, u"SystemServices"_s},
                                   {u"Id"_s, u"tarnwick"_s},
                                   {u"Title"_s, u"41°C • 2 OK"_s},
                                   {u"Status"_s, u"Active"_s},
                                   {u"WindowId"_s, 0},
                                   {u"IconName"_s, QString()},
                                   {u"IconAccessibleDesc"_s, u"Tarnwick"_s},
                                   {u"ItemIsMenu"_s, false},
                                   {u"XAyatanaLabel"_s, u"41°C • 2 OK"_s},
                                   {u"XAyatanaLabelGuide"_s, u"00°C • 0 OK"_s}};
        QCOMPARE(properties, expected);

        item_->setContent({u"cpu"_s, {}, u"Tarnwick"_s});
        const QVariantMap iconOnly = allProperties();
        QCOMPARE(iconOnly.value(u"XAyatanaLabel"_s).toString(), QString());
        QCOMPARE(iconOnly.value(u"Title"_s).toString(), u"Tarnwick"_s);

        item_->setContent({u"cpu"_s, u" <b>1</b> & 2"_s, u"Tarnwick"_s}); // only the tool tip is markup
        properties = allProperties();
        QCOMPARE(qdbus_cast<StatusNotifierToolTip>(properties.value(u"ToolTip"_s)).description,
                 u"&lt;b&gt;1&lt;/b&gt; &amp; 2"_s);
        QCOMPARE(properties.value(u"XAyatanaLabel"_s).toString(), u"<b>1</b> & 2"_s);
    }

    void iconIsInNetworkByteOrder() {
        const auto pixmaps = qdbus_cast<QList<StatusNotifierPixmap>>(allProperties().value(u"IconPixmap"_s));
        QVERIFY(pixmaps.size() >= 4);
        for (const StatusNotifierPixmap& pixmap : pixmaps) {
            QCOMPARE(pixmap.width, pixmap.height);
            QCOMPARE(pixmap.pixels.size(), pixmap.width * pixmap.height * 4);
            QVERIFY(pixmap.pixels.contains(QByteArray::fromHex("ff2b2b2b"))); // opaque ink
            QCOMPARE(pixmap.pixels.first(4), QByteArray(4, '\0'));            // a clear corner
        }
        QImage image(1, 2, QImage::Format_ARGB32);
        image.setPixel(0, 0, 0x11223344);
        image.setPixel(0, 1, 0xaabbccdd);
        QCOMPARE(statusNotifierPixmap(image).pixels, QByteArray::fromHex("11223344aabbccdd"));
    }

    void saysOnlyWhatChanged() {
        Recorder recorder;
        for (const QString& interface : {itemInterface, u"org.freedesktop.DBus.Properties"_s})
            QVERIFY(hostBus_->connect(bus_->baseService(), itemPath, interface, {}, &recorder,
                                      SLOT(received(QDBusMessage))));
        const QStringList textSignals{u"NewTitle"_s, u"NewToolTip"_s, u"XAyatanaNewLabel"_s, u"PropertiesChanged"_s};

        // Signals of one sender arrive in order, so once those of the last change are here, no earlier ones are
        // missing.
        for (int i = 0; i < 10; ++i)
            item_->setContent(content);
        item_->setContent({content.symbolName, u" 42°C • 2 OK"_s, content.description});
        QTRY_COMPARE(recorder.names, textSignals);
        QCOMPARE(recorder.messages.at(2).arguments(), (QVariantList{u"42°C • 2 OK"_s, u"00°C • 0 OK"_s}));
        const QVariantList changed = recorder.messages.at(3).arguments();
        QCOMPARE(changed.at(0).toString(), itemInterface);
        QCOMPARE(qdbus_cast<QVariantMap>(changed.at(1)),
                 (QVariantMap{{u"XAyatanaLabel"_s, u"42°C • 2 OK"_s}, {u"XAyatanaLabelGuide"_s, u"00°C • 0 OK"_s}}));

        recorder.names.clear();
        item_->setContent({u"flame.fill"_s, u" 42°C • 2 OK"_s, content.description});
        item_->setContent({u"flame.fill"_s, u" 43°C • 2 OK"_s, content.description});
        QTRY_COMPARE(recorder.names, QStringList{u"NewIcon"_s} + textSignals);
    }

    void everyKindOfClickIsTheClick() {
        QSignalSpy clicked(item_.get(), &StatusItem::clicked);
        for (const auto& method : {u"Activate"_s, u"SecondaryActivate"_s, u"ContextMenu"_s}) {
            QCOMPARE(call(itemPath, itemInterface, method, {321, 12}).type(), QDBusMessage::ReplyMessage);
            QCOMPARE(clicked.takeFirst(), QVariantList{QPoint(321, 12)});
        }
        QCOMPARE(call(itemPath, itemInterface, u"Scroll"_s, {120, u"vertical"_s}).type(), QDBusMessage::ReplyMessage);
        QVERIFY(clicked.isEmpty());
    }

    void gnomeGetsAMenuThatClicks() {
        const auto menuInterface = u"com.canonical.dbusmenu"_s;
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
        item_.reset();
        item_ = std::make_unique<StatusNotifierItem>(*bus_, *colors_);
        item_->setContent(content);
        QSignalSpy clicked(item_.get(), &StatusItem::clicked);
        const QVariantMap properties = allProperties();
        QCOMPARE(properties.value(u"XAyatanaLabel"_s).toString(), u"41°C • 2 OK"_s);
        const QString menu = properties.value(u"Menu"_s).value<QDBusObjectPath>().path();

        const QVariantList reply = call(menu, menuInterface, u"GetLayout"_s, {0, -1, QStringList()}).arguments();
        QCOMPARE(reply.size(), 2);
        const auto root = qdbus_cast<StatusMenuLayout>(reply.at(1));
        QCOMPARE(root.children.size(), 1);
        const auto entry = qdbus_cast<StatusMenuLayout>(root.children.constFirst());
        QCOMPARE(entry.properties, (QVariantMap{{u"label"_s, u"Open Tarnwick"_s}}));
        const auto send = [&](int id, const QString& event) {
            return call(menu, menuInterface, u"Event"_s, {id, event, QVariant::fromValue(QDBusVariant(0)), 0U}).type();
        };
        QCOMPARE(send(0, u"opened"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(send(entry.id, u"hovered"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(clicked.size(), 0);
        QCOMPARE(send(entry.id, u"clicked"_s), QDBusMessage::ReplyMessage);
        QCOMPARE(clicked.size(), 1);
    }

    void registersWithEachNewWatcher() {
        for (int round = 0; round < 2; ++round) {
            const Watcher watcher(*hostBus_);
            QTRY_COMPARE(watcher.registered, QStringList{bus_->baseService()});
        }
        QVERIFY(bus_->baseService().startsWith(u':'));
    }

    void iconFollowsTheColourScheme() {
        Portal portal;
        QVERIFY(hostBus_->registerObject(portalPath, &portal, QDBusConnection::ExportAllContents));
        QVERIFY(hostBus_->registerService(portalName));
        const ColorScheme colors(*bus_);
        QTRY_VERIFY(colors.isDark());
        QCOMPARE(portal.asked, u"org.freedesktop.appearance color-scheme"_s);

        const auto lightInk = QByteArray::fromHex("fff2f2f2");
        QVERIFY(!item_->icon().constFirst().pixels.contains(lightInk));
        QSignalSpy icon(item_.get(), &StatusNotifierItem::iconChanged);
        Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, u"color-scheme"_s, QDBusVariant(1U));
        QTRY_COMPARE(icon.size(), 1);
        QVERIFY(item_->icon().constFirst().pixels.contains(lightInk));
        Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, u"accent-color"_s, QDBusVariant(0U));
        Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, u"color-scheme"_s, QDBusVariant(2U));
        QTRY_COMPARE(icon.size(), 2);
        QVERIFY(!item_->icon().constFirst().pixels.contains(lightInk));
    }

    void stripStandsInForAMissingHost() {
        DesktopStatusItem item(*bus_, 1ms);
        item.setContent(content);
        QTRY_VERIFY(item.isFloating());
        auto watcher = std::make_unique<Watcher>(*hostBus_);
        QTRY_VERIFY(!item.isFloating());
        QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
        watcher->hosted = false;
        Q_EMIT watcher->StatusNotifierHostUnregistered();
        QTRY_VERIFY(item.isFloating());
        watcher->hosted = true;
        Q_EMIT watcher->StatusNotifierHostRegistered();
        QTRY_VERIFY(!item.isFloating());
        watcher.reset();
        QTRY_VERIFY(item.isFloating());
        // The new strip shows the content that was set before.
        QCOMPARE(QGuiApplication::topLevelWindows().constFirst()->title(), u"41°C • 2 OK"_s);
    }

    void stripOnTheScreen() {
        DesktopStatusItem item(QDBusConnection(u"none"_s), 1ms); // a session without a bus
        item.setContent(content);
        QTRY_VERIFY(item.isFloating());
        QWindow* const strip = QGuiApplication::topLevelWindows().constFirst();
        const QRect place = strip->geometry();
        QVERIFY(strip->screen()->availableGeometry().contains(place));
        QVERIFY(strip->flags().testFlags(Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                                         Qt::FramelessWindowHint));

        item.setContent({u"flame.fill"_s, u" 58°C • 9 OK"_s, u"Tarnwick"_s});
        QCOMPARE(strip->geometry(), place); // digits change nothing
        item.setContent({u"flame.fill"_s, u" 58°C • CPU 100% • 9 OK"_s, u"Tarnwick"_s});
        QCOMPARE(strip->geometry().topRight(), place.topRight());
        QVERIFY(strip->width() > place.width());

        QSignalSpy clicked(&item, &StatusItem::clicked);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            QTest::mouseClick(strip, button, {}, {5, 5});
        QCOMPARE(clicked.size(), 2);
        QVERIFY(strip->geometry().contains(clicked.constFirst().constFirst().toPoint()));
        QTest::mousePress(strip, Qt::LeftButton, {}, {5, 5});
        QTest::mouseRelease(strip, Qt::LeftButton, {}, {5, 90});
        QCOMPARE(clicked.size(), 2); // released elsewhere
    }

private:
    QVariantMap allProperties() {
        const QDBusMessage reply = call(itemPath, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {itemInterface});
        return reply.arguments().isEmpty() ? QVariantMap() : qdbus_cast<QVariantMap>(reply.arguments().constFirst());
    }

    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(bus_->baseService(), path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall reply = hostBus_->asyncCall(message);
        return QTest::qWaitFor([&] { return reply.isFinished(); }) ? reply.reply() : QDBusMessage();
    }

    Companion daemon_;
    QString address_;
    std::unique_ptr<QDBusConnection> bus_;
    std::unique_ptr<QDBusConnection> hostBus_;
    std::unique_ptr<ColorScheme> colors_;
    std::unique_ptr<StatusNotifierItem> item_;
};

QTEST_MAIN(tst_StatusNotifierItem)
#include "tst_statusnotifieritem.moc"
