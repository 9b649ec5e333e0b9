#include "Companion.h"
#include "DesktopStatusItem.h"
#include "StatusItemIcon.h"
#include "StatusMenu.h"
#include "StatusNotifierItem.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QPalette>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {
const auto watcherName = u"org.kde.StatusNotifierWatcher"_s;
const auto itemPath = u"/StatusNotifierItem"_s;
const auto itemInterface = u"org.kde.StatusNotifierItem"_s;
const StatusItemContent content{u"thermometer.medium"_s, u" 41°C • 2 OK"_s, u"Tarnwick"_s};

/// The watcher and host of a desktop. It records who registered.
class Watcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ answer)

public:
    explicit Watcher(const QDBusConnection& bus) : bus_(bus) {
        bus_.registerObject(u"/StatusNotifierWatcher"_s, this, QDBusConnection::ExportAllContents);
        bus_.registerService(watcherName);
    }
    ~Watcher() override { bus_.unregisterService(watcherName); }

    bool answer() {
        ++asked;
        return hosted;
    }

    bool hosted = true;
    int asked = 0;
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

public:
    explicit Portal(QDBusConnection bus, uint colorScheme = 1) : scheme(colorScheme) {
        bus.registerObject(u"/org/freedesktop/portal/desktop"_s, this, QDBusConnection::ExportAllContents);
        bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }

public Q_SLOTS:
    QDBusVariant Read(const QString& group, const QString& key) {
        const QVariant value = key == "font-name"_L1 ? QVariant(u"Inter Semi-Bold 11"_s) : QVariant(scheme);
        return QDBusVariant(QVariant::fromValue(QDBusVariant(group.startsWith("org."_L1) ? value : QVariant())));
    }

Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    uint scheme;
};

/// What shows the item, in the place of a panel.
struct Host {
    QDBusConnection bus;
    QString item;

    /// The answer, which an error is not.
    QVariantList ask(const QString& path, const QString& interface, const QString& method,
                     const QVariantList& arguments) const {
        QDBusMessage message = QDBusMessage::createMethodCall(item, path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingReply<> reply = bus.asyncCall(message);
        if (!QTest::qWaitFor([&] { return reply.isFinished(); }) || reply.isError())
            QTest::qFail(qPrintable(method + reply.error().message()), __FILE__, __LINE__);
        return reply.reply().arguments();
    }
    QVariantMap properties() const {
        return qdbus_cast<QVariantMap>(
            ask(itemPath, u"org.freedesktop.DBus.Properties"_s, u"GetAll"_s, {itemInterface}).value(0));
    }
    QString label() const { return properties().value(u"XAyatanaLabel"_s).toString(); }
};

/// Every signal that the item sends, in order.
class Recorder : public QObject {
    Q_OBJECT

public:
    QStringList names;
    QHash<QString, QVariantList> arguments;

public Q_SLOTS:
    void received(const QDBusMessage& message) { arguments[names.emplaceBack(message.member())] = message.arguments(); }
};
} // namespace

class tst_StatusNotifierItem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        qputenv("XDG_CURRENT_DESKTOP", "XFCE");
        makeItem();
    }

    /// The first test, because the types that the bus needs are registered by later ones.
    void windowsAndIconFollowTheColourScheme() {
        Portal portal(host_.bus);
        const auto isLight = [this] { // the ink, and so the windows are dark
            const int windows = QGuiApplication::palette().color(QPalette::Window).lightness();
            const bool ink = item_->icon().constFirst().pixels.contains(QByteArray::fromHex("fff2f2f2"));
            return windows < 64 && ink ? u"yes"_s : windows > 192 && !ink ? u"no"_s : u"?"_s;
        };
        const auto announce = [&portal](const QString& key, uint value) {
            Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, key, QDBusVariant(value));
        };
        QSignalSpy icon(item_.get(), &StatusNotifierItem::iconChanged);
        announce(u"color-scheme"_s, 1);
        QTRY_COMPARE(icon.size(), 1);
        QCOMPARE(isLight(), u"yes"_s);
        announce(u"accent-color"_s, 0);
        announce(u"color-scheme"_s, 1);
        announce(u"color-scheme"_s, 2);
        QTRY_COMPARE(icon.size(), 2);
        QCOMPARE(isLight(), u"no"_s);

        const ColorScheme colors(bus_); // asks, and is answered "dark"
        QTRY_VERIFY(colors.isDark());
        announce(u"color-scheme"_s, 0); // as the toolkit has it
        QTRY_VERIFY(!colors.isDark());
        QCOMPARE(icon.size(), 2);
        QGuiApplication::setFont(QFont(u"Sans"_s));
        const InterfaceFont font(bus_);
        QTRY_COMPARE(QGuiApplication::font().family(), u"Inter"_s);
        QGuiApplication::setFont({});
    }

    void tellsTheHostEverythingItAsksFor() {
        QVariantMap properties = host_.properties();
        const auto toolTip = qdbus_cast<StatusNotifierToolTip>(properties.take(u"ToolTip"_s));
        QCOMPARE(toolTip.title, u"Tarnwick"_s);
        QCOMPARE(toolTip.description, u"41°C • 2 OK"_s);
        properties.remove(u"IconPixmap"_s);
        QCOMPARE(QJsonDocument(QJsonObject::fromVariantMap(properties)).toJson(QJsonDocument::Compact),
                 R"({"Category":"SystemServices","IconAccessibleDesc":"Tarnwick","IconName":"","Id":"tarnwick",)"
                 R"("ItemIsMenu":false,"Status":"Active","Title":"41°C • 2 OK","WindowId":0,)"
                 R"("XAyatanaLabel":"41°C • 2 OK","XAyatanaLabelGuide":"00°C • 0 OK"})");

        item_->setContent({u"cpu"_s, {}, u"Tarnwick"_s});
        QCOMPARE(host_.label(), QString());
        QCOMPARE(item_->title(), u"Tarnwick"_s);
        item_->setContent({u"cpu"_s, u" <b>1</b>\u202e & 2\a"_s, u"Tarnwick"_s}); // only the tool tip is markup
        QCOMPARE(host_.label(), u"<b>1</b> & 2"_s);
        QCOMPARE(item_->toolTip().description, u"&lt;b&gt;1&lt;/b&gt; &amp; 2"_s);
    }

    void iconIsInNetworkByteOrder() {
        const auto pixmaps = qdbus_cast<QList<StatusNotifierPixmap>>(host_.properties().value(u"IconPixmap"_s));
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

    /// Whatever the ink, as no host says what its panel looks like.
    static void iconIsSeenOnEveryPanel() {
        constexpr int plainDifference = 135; // of 255
        for (const char* panel : {"#000000", "#2b2b2b", "#26405e", "#d0d3d6", "#ffffff"})
            for (const char* ink : {"#2b2b2b", "#f2f2f2"})
                for (const int side : {16, 22, 48}) {
                    QImage shown(side, side, QImage::Format_RGB32);
                    shown.fill(QColor(QLatin1String(panel)));
                    const int behind = qGray(shown.pixel(0, 0));
                    const QImage icon = statusItemIcon(u"thermometer.medium"_s, side, QColor(QLatin1String(ink)));
                    QPainter(&shown).drawImage(0, 0, icon);
                    const auto* const pixels = reinterpret_cast<const QRgb*>(shown.constBits());
                    const auto seen = std::count_if(pixels, pixels + shown.sizeInBytes() / 4, [&](QRgb pixel) {
                        return std::abs(qGray(pixel) - behind) >= plainDifference;
                    });
                    QVERIFY2(seen >= side / 3,
                             qPrintable(u"%1: %2 of %3"_s.arg(QLatin1String(panel)).arg(seen).arg(side)));
                }
    }

    void panelsOfWindowManagersAreTakenForDark() {
        for (const auto& [desktop, ink] : {std::pair("sway", "fff2f2f2"), {"", "fff2f2f2"}, {"KDE", "ff2b2b2b"}}) {
            qputenv("XDG_CURRENT_DESKTOP", desktop);
            makeItem();
            QVERIFY2(item_->icon().constFirst().pixels.contains(QByteArray::fromHex(ink)), desktop);
        }
    }

    void saysOnlyWhatChanged() {
        Recorder recorder;
        QCOMPARE(host_.label(), u"41°C • 2 OK"_s); // the bus has passed on by now what the item sent at first
        for (const QString& interface : {itemInterface, u"org.freedesktop.DBus.Properties"_s})
            QVERIFY(host_.bus.connect(bus_.connection().baseService(), itemPath, interface, {}, &recorder,
                                      SLOT(received(QDBusMessage))));
        const QStringList textSignals{u"NewTitle"_s, u"NewToolTip"_s, u"XAyatanaNewLabel"_s, u"PropertiesChanged"_s};

        // Signals of one sender arrive in order, so once those of the last change are here, no earlier ones are
        // missing.
        for (int i = 0; i < 10; ++i)
            item_->setContent(content);
        item_->setContent({content.symbolName, u" 42°C • 2 OK"_s, content.description});
        QTRY_COMPARE(recorder.names, textSignals);
        QCOMPARE(recorder.arguments[textSignals[2]], (QVariantList{u"42°C • 2 OK"_s, u"00°C • 0 OK"_s}));
        const QVariantList changed = recorder.arguments[textSignals[3]];
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
            host_.ask(itemPath, itemInterface, method, {321, 12});
            QCOMPARE(clicked.takeFirst(), QVariantList{QPoint(321, 12)});
        }
        host_.ask(itemPath, itemInterface, u"Scroll"_s, {120, u"vertical"_s});
        QVERIFY(clicked.isEmpty());
    }

    void gnomeGetsAMenuThatClicks() {
        const auto menuInterface = u"com.canonical.dbusmenu"_s;
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
        makeItem();
        QCOMPARE(host_.label(), u"41°C • 2 OK"_s);
        const QString menu = host_.properties().value(u"Menu"_s).value<QDBusObjectPath>().path();
        const QVariant layout = host_.ask(menu, menuInterface, u"GetLayout"_s, {0, -1, QStringList()}).value(1);
        const auto root = qdbus_cast<StatusMenuLayout>(layout);
        QCOMPARE(root.children.size(), 1);
        const auto entry = qdbus_cast<StatusMenuLayout>(root.children.constFirst());
        QCOMPARE(entry.properties, (QVariantMap{{u"label"_s, u"Open Tarnwick"_s}}));

        const QSignalSpy clicked(item_.get(), &StatusItem::clicked);
        for (const auto& [id, event, clicks] :
             {std::tuple{0, u"opened"_s, 0}, {entry.id, u"hovered"_s, 0}, {entry.id, u"clicked"_s, 1}}) {
            host_.ask(menu, menuInterface, u"Event"_s, {id, event, QVariant::fromValue(QDBusVariant(0)), 0U});
            QCOMPARE(clicked.size(), clicks);
        }
    }

    void registersWithEachNewWatcher() {
        for (int round = 0; round < 2; ++round) {
            const Watcher watcher(host_.bus);
            QTRY_COMPARE(watcher.registered, QStringList{bus_.connection().baseService()});
        }
    }

    void stripStandsInForAMissingHost() {
        DesktopStatusItem item(bus_, 1ms);
        item.setContent(content);
        QTRY_VERIFY(item.isFloating());
        auto watcher = std::make_unique<Watcher>(host_.bus);
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

    void hostThatReturnsSoonGetsNoStrip() {
        Watcher watcher(host_.bus);
        const DesktopStatusItem item(bus_, 200ms);
        for (const bool hosted : {true, false, true}) {
            watcher.hosted = hosted;
            const int asked = watcher.asked;
            Q_EMIT watcher.StatusNotifierHostRegistered();
            QTRY_VERIFY(watcher.asked > asked);
        }
        QTimer after;
        after.setSingleShot(true);
        after.start(200ms);
        QTRY_VERIFY(!after.isActive());
        QVERIFY(!item.isFloating());
    }

    void everythingReturnsWithTheBus() {
        const QTemporaryDir folder;
        const QString address = u"unix:path="_s + folder.filePath(u"bus"_s);
        std::optional<SessionBus> bus;
        std::unique_ptr<DesktopStatusItem> item;
        for (const uint scheme : {1U, 2U}) {
            Companion daemon;
            daemon.startBus({u"--address="_s + address});
            const QString name = u"host of round %1"_s.arg(scheme);
            const QDBusConnection host = QDBusConnection::connectToBus(address, name);
            const Portal portal(host, scheme);
            const Watcher watcher(host);
            if (!item) {
                bus.emplace(address);
                item = std::make_unique<DesktopStatusItem>(*bus, 1ms);
                item->setContent(content);
            }
            QTRY_COMPARE(watcher.registered, QStringList{bus->connection().baseService()});
            QTRY_VERIFY(!item->isFloating());
            QCOMPARE((Host{host, watcher.registered.constFirst()}.label()), u"41°C • 2 OK"_s);
            QTRY_COMPARE(QGuiApplication::palette().color(QPalette::Window).lightness() < 128, scheme == 1);
            daemon.kill(); // so that it takes no leave
            QTRY_VERIFY(item->isFloating());
            QDBusConnection::disconnectFromBus(name);
        }
    }

    void stripOnTheScreen() {
        const SessionBus none(u"unix:path=/none"_s);
        DesktopStatusItem item(none, 1ms);
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
        QTest::mousePress(strip, Qt::LeftButton, {}, {5, 5});
        QTest::mouseMove(strip, {45, 8});
        QTest::mouseRelease(strip, Qt::LeftButton, {}, {5, 5});
        QCOMPARE(clicked.size(), 2); // moved to another place
    }

private:
    /// As the desktop of the environment gets it.
    void makeItem() {
        item_.reset();
        colors_.emplace(bus_);
        item_ = std::make_unique<StatusNotifierItem>(bus_, *colors_);
        item_->setContent(content);
        bus_.connection().interface()->isServiceRegistered(watcherName); // what the item asked is answered before
    }

    Companion daemon_;
    const QString address_ = QString::fromUtf8(daemon_.startBus());
    const SessionBus bus_{address_};
    Host host_{QDBusConnection::connectToBus(address_, u"host"_s), bus_.connection().baseService()};
    std::optional<ColorScheme> colors_;
    std::unique_ptr<StatusNotifierItem> item_;
};

QTEST_MAIN(tst_StatusNotifierItem)
#include "tst_statusnotifieritem.moc"
