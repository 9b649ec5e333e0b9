// The program itself on a desktop: a real X server, a real panel that shows its status item, and a hand that clicks.

#include "Coding.h"
#include "OpenSshServer.h"
#include "ScreenReader.h"
#include "UserHome.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <csignal>
#include <functional>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

constexpr int patience = 30'000; ///< milliseconds, on a computer that does much else
constexpr QSize screenSize(1280, 900);
/// Where the panel below shows its only item.
constexpr QRect itemPlace(1252, 0, 28, 28);

/// A panel along the top edge with nothing but a tray at its right end.
constexpr QByteArrayView panelSettings = R"xml(<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/><value type="int" value="2"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator"><property name="expand" type="bool" value="true"/></property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
)xml";

bool write(const QString& path, QByteArrayView contents) {
    QFile file(path);
    return QDir().mkpath(path.section(u'/', 0, -2)) && file.open(QIODevice::WriteOnly) &&
           file.write(contents.data(), contents.size()) == contents.size();
}

/// A process that ends with the test, however that ends.
void prepare(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

void end(QProcess& process) {
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
    process.waitForFinished();
}

/// What a program prints; empty when it fails.
QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished(patience);
    return ended && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

/// One real action of the user's hand on the X server.
void xdotool(const QString& words) {
    QCOMPARE(QProcess::execute(u"xdotool"_s, words.split(u' ')), 0);
}

void moveTo(QPoint point) {
    xdotool(u"mousemove %1 %2"_s.arg(point.x()).arg(point.y()));
}

void click(QPoint point) {
    moveTo(point);
    xdotool(u"click 1"_s);
}

QImage screen() {
    return QImage::fromData(outputOf(u"import"_s, {u"-window"_s, u"root"_s, u"png:-"_s}), "png");
}

bool isOfOneColor(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                return false;
        }
    }
    return true;
}

/// The visible windows of the program on the screen.
QByteArrayList windows() {
    QByteArrayList ids =
        outputOf(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"tarnwick"_s}).split('\n');
    ids.removeAll({});
    return ids;
}

QStringList names(const QList<Server>& servers) {
    QStringList result;
    for (const Server& server : servers)
        result += server.name;
    return result;
}

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void aFleetIsUsedFromTheTray();

private:
    void startScreen();
    void startSession();
    void writeFleet(const OpenSshServer& server) const;
    [[nodiscard]] QString stored(const QString& name) const {
        return home_.folder() + u"/.local/share/Tarnwick/"_s + name;
    }
    [[nodiscard]] QList<Server> storedServers() const;
    [[nodiscard]] QStringList trayItems() const;
    void press(const ScreenReader& reader, const QString& name);

    UserHome home_;
    QProcess screen_;
    QProcess bus_;
    QProcess panel_;
    QProcess program_;
};

void DesktopTest::initTestCase() {
    QCOMPARE(home_.error(), QString());
    for (const auto& [program, package] : {std::pair{u"Xvfb"_s, u"xvfb"_s},
                                           {u"dbus-daemon"_s, u"dbus-daemon"_s},
                                           {u"xfce4-panel"_s, u"xfce4-panel"_s},
                                           {u"xdotool"_s, u"xdotool"_s},
                                           {u"import"_s, u"imagemagick"_s}})
        QVERIFY2(!QStandardPaths::findExecutable(program).isEmpty(),
                 qPrintable(u"%1 is missing: install %2"_s.arg(program, package)));
    for (const char* variable : {"WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                 "XDG_CURRENT_DESKTOP", "AT_SPI_BUS_ADDRESS", "DBUS_STARTER_ADDRESS"})
        qunsetenv(variable);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home_.folder()));
    startScreen();
    startSession();
}

void DesktopTest::startScreen() {
    prepare(screen_);
    screen_.setStandardErrorFile(QProcess::nullDevice());
    screen_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-screen"_s, u"0"_s,
                              u"%1x%2x24"_s.arg(screenSize.width()).arg(screenSize.height())});
    QVERIFY(screen_.waitForReadyRead(patience));
    qputenv("DISPLAY", ":" + screen_.readAllStandardOutput().trimmed());
}

void DesktopTest::startSession() {
    prepare(bus_);
    bus_.setStandardErrorFile(QProcess::nullDevice());
    bus_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    QVERIFY(bus_.waitForReadyRead(patience));
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.readLine().trimmed());

    QVERIFY(write(home_.folder() + u"/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"_s, panelSettings));
    prepare(panel_);
    panel_.setStandardErrorFile(QProcess::nullDevice());
    panel_.start(u"xfce4-panel"_s, {u"--disable-wm-check"_s});
    QVERIFY(panel_.waitForStarted(patience));
}

void DesktopTest::cleanupTestCase() {
    for (QProcess* process : {&program_, &panel_, &bus_, &screen_})
        end(*process);
}

void DesktopTest::writeFleet(const OpenSshServer& server) const {
    QList<Server> servers;
    for (const QString& name : {u"web"_s, u"db"_s, u"mail"_s, u"build"_s}) {
        Server entry;
        entry.id = QUuid::createUuid();
        entry.name = name;
        entry.host = server.address();
        entry.user = server.user();
        entry.port = server.port();
        entry.customSshKeyPath = server.keyPath();
        servers += entry;
    }
    AppSettings settings;
    settings.hasCompletedOnboarding = true;
    QVERIFY(write(stored(u"settings.json"_s), encodeSettings(settings).value()));
    QVERIFY(write(stored(u"servers.json"_s), encodeServers(servers).value()));
    QVERIFY(home_.writeSshFile(u"known_hosts"_s, server.knownHostsLine()));
}

QList<Server> DesktopTest::storedServers() const {
    QFile file(stored(u"servers.json"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const auto decoded = decodeServers(file.readAll());
    const auto* servers = std::get_if<QList<Server>>(&decoded);
    return servers ? *servers : QList<Server>();
}

QStringList DesktopTest::trayItems() const {
    QDBusMessage message =
        QDBusMessage::createMethodCall(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                                       u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message.setArguments({u"org.kde.StatusNotifierWatcher"_s, u"RegisteredStatusNotifierItems"_s});
    const QVariantList reply = QDBusConnection::sessionBus().call(message).arguments();
    return reply.value(0).value<QDBusVariant>().variant().toStringList();
}

/// Presses the topmost element of that name once it is there and has come to rest.
void DesktopTest::press(const ScreenReader& reader, const QString& name) {
    QRect before;
    QTRY_VERIFY2_WITH_TIMEOUT(
        [&] {
            const QRect now = reader.places(name).value(0);
            return now.isValid() && std::exchange(before, now) == now;
        }(),
        qPrintable(name), patience);
    click(before.center());
}

void DesktopTest::aFleetIsUsedFromTheTray() {
    OpenSshServer server;
    QVERIFY(server.standIns().addDocker(
        "4f1c2a9b7d10\tshop\tregistry.example/shop:2\tUp 12 days\trunning\t0.0.0.0:80->80/tcp\n"
        "9a7d3310cc02\told-shop\tregistry.example/shop:1\tExited (0) 3 weeks ago\texited\t\n"));
    QCOMPARE(server.start(), QString());
    writeFleet(server);
    QTRY_VERIFY_WITH_TIMEOUT(!screen().copy(itemPlace).isNull() && isOfOneColor(screen().copy(itemPlace)), patience);

    prepare(program_);
    program_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    // The sanitizer wants to be the first library, to see every library, and to find each object in one of them; but
    // libnss-wrapper stands before it and hides one, and the views' module has a copy of what it shares with the
    // program, which the loader leaves unused.
    environment.insert(u"ASAN_OPTIONS"_s,
                       environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0:detect_odr_violation=0"_s);
    environment.insert(u"NSS_WRAPPER_DISABLE_DEEPBIND"_s, u"1"_s);
    program_.setProcessEnvironment(environment);
    program_.start(QStringLiteral(TARNWICK_EXECUTABLE), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(trayItems().size(), 1, patience);
    QTRY_VERIFY_WITH_TIMEOUT(!isOfOneColor(screen().copy(itemPlace)), patience);
    QCOMPARE(windows(), QByteArrayList());

    click(itemPlace.center());
    QTRY_COMPARE_WITH_TIMEOUT(windows().size(), 1, patience);
    const ScreenReader reader(QDBusConnection::sessionBus());
    QVERIFY2(reader.isConnected(), "No accessibility bus: install at-spi2-core");
    QTRY_COMPARE_WITH_TIMEOUT(reader.places(u"1 / 2 Containers"_s).size(), 4, patience);
    const QRect first = reader.places(u"web"_s).value(0);
    QTRY_VERIFY_WITH_TIMEOUT(!isOfOneColor(screen().copy(first)), patience);

    press(reader, u"1 / 2 Containers"_s);
    press(reader, u"Restart container"_s);
    QTRY_COMPARE_WITH_TIMEOUT(server.standIns().restarts(), QStringList{u"4f1c2a9b7d10"_s}, patience);
    press(reader, u"1 / 2 Containers"_s);
    QTRY_VERIFY_WITH_TIMEOUT(reader.places(u"Restart container"_s).isEmpty(), patience);

    // By the heads: the names stand at the same place in every card.
    QTRY_COMPARE_WITH_TIMEOUT(reader.places(u"web"_s), QList<QRect>{first}, patience);
    const QPoint head = QPoint(60, 24);
    moveTo(reader.places(u"mail"_s).value(0).topLeft() + head);
    xdotool(u"mousedown 1"_s);
    moveTo(first.topLeft() + head + QPoint(0, 40));
    moveTo(first.topLeft() + head);
    QTRY_VERIFY_WITH_TIMEOUT(reader.places(u"mail"_s).value(0).top() < reader.places(u"web"_s).value(0).top(),
                             patience);
    xdotool(u"mouseup 1"_s);
    const QStringList order{u"mail"_s, u"web"_s, u"db"_s, u"build"_s};
    QTRY_COMPARE_WITH_TIMEOUT(names(storedServers()), order, patience);

    click({300, 800});
    QTRY_COMPARE_WITH_TIMEOUT(windows(), QByteArrayList(), patience);
    QProcess second;
    prepare(second);
    second.setProcessEnvironment(environment);
    second.start(program_.program(), QStringList());
    QVERIFY(second.waitForFinished(patience));
    QCOMPARE(second.exitCode(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(windows().size(), 1, patience);
    QTRY_COMPARE_WITH_TIMEOUT(reader.places(u"mail"_s).size(), 1, patience);
    xdotool(u"key Escape"_s);
    QTRY_COMPARE_WITH_TIMEOUT(windows(), QByteArrayList(), patience);

    program_.terminate();
    QVERIFY(program_.waitForFinished(patience));
    QCOMPARE(program_.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program_.exitCode(), 0);
    QCOMPARE(names(storedServers()), order);
    QTRY_COMPARE_WITH_TIMEOUT(trayItems(), QStringList(), patience);
}

QTEST_GUILESS_MAIN(DesktopTest)
#include "tst_desktop.moc"
