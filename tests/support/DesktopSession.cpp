#include "DesktopSession.h"

#include "Files.h"
#include "ScreenReader.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <utility>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

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

/// Makes the process end when this one does, even by a crash.
void prepare(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

/// What a program prints; empty when it fails.
QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool ended = process.waitForFinished(DesktopSession::patience);
    return ended && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

/// A property of an object on the session bus; invalid when there is none.
QVariant property(const QString& service, const QString& path, const QString& interface, const QString& name) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message.setArguments({interface, name});
    const QVariantList reply = QDBusConnection::sessionBus().call(message).arguments();
    return reply.value(0).value<QDBusVariant>().variant();
}

} // namespace

DesktopSession::~DesktopSession() {
    stop();
}

QString DesktopSession::start(const QString& home) {
    for (const auto& [program, package] : {std::pair{u"Xvfb"_s, u"xvfb"_s},
                                           {u"dbus-daemon"_s, u"dbus-daemon"_s},
                                           {u"xfce4-panel"_s, u"xfce4-panel"_s},
                                           {u"xdotool"_s, u"xdotool"_s},
                                           {u"import"_s, u"imagemagick"_s}})
        if (QStandardPaths::findExecutable(program).isEmpty())
            return u"%1 is missing: install %2"_s.arg(program, package);
    for (const char* variable : {"WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                 "XDG_CURRENT_DESKTOP", "AT_SPI_BUS_ADDRESS", "DBUS_STARTER_ADDRESS"})
        qunsetenv(variable);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home));
    const QString error = startScreen();
    return error.isEmpty() ? startPanel(home) : error;
}

QString DesktopSession::startScreen() {
    prepare(screen_);
    screen_.setStandardErrorFile(QProcess::nullDevice());
    screen_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-screen"_s, u"0"_s,
                              u"%1x%2x24"_s.arg(size.width()).arg(size.height())});
    if (!screen_.waitForReadyRead(patience))
        return u"The X server does not start"_s;
    qputenv("DISPLAY", ":" + screen_.readAllStandardOutput().trimmed());
    return {};
}

QString DesktopSession::startPanel(const QString& home) {
    prepare(bus_);
    bus_.setStandardErrorFile(QProcess::nullDevice());
    bus_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    if (!bus_.waitForReadyRead(patience))
        return u"The session bus does not start"_s;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.readLine().trimmed());
    // Otherwise the bus starts an installed notification service, whose bubbles cover the program's windows.
    if (!QDBusConnection::sessionBus().registerService(u"org.freedesktop.Notifications"_s))
        return u"The session bus does not answer"_s;

    if (!writeFile(home + u"/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"_s, panelSettings))
        return u"Cannot write to %1"_s.arg(home);
    prepare(panel_);
    panel_.setStandardErrorFile(QProcess::nullDevice());
    panel_.start(u"xfce4-panel"_s, {u"--disable-wm-check"_s});
    return panel_.waitForStarted(patience) ? QString() : u"The panel does not start"_s;
}

void DesktopSession::stop() {
    for (QProcess* process : {&panel_, &bus_, &screen_})
        end(*process);
}

void DesktopSession::end(QProcess& process) {
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
    process.waitForFinished();
}

void DesktopSession::run(QProcess& program, const QString& executable, const QStringList& variables) const {
    prepare(program);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    // AddressSanitizer insists on being loaded first and on seeing every library. libnss-wrapper is loaded before it
    // and hides one.
    environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    environment.insert(u"NSS_WRAPPER_DISABLE_DEEPBIND"_s, u"1"_s);
    for (const QString& variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    program.setProcessEnvironment(environment);
    program.start(executable, QStringList());
}

QStringList DesktopSession::trayItems() const {
    return property(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s, u"org.kde.StatusNotifierWatcher"_s,
                    u"RegisteredStatusNotifierItems"_s)
        .toStringList();
}

QString DesktopSession::label() const {
    const QString item = trayItems().value(0);
    return property(item.section(u'/', 0, 0), u'/' + item.section(u'/', 1), u"org.kde.StatusNotifierItem"_s,
                    u"XAyatanaLabel"_s)
        .toString();
}

QByteArrayList DesktopSession::windows() const {
    QByteArrayList ids =
        outputOf(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"tarnwick"_s}).split('\n');
    ids.removeAll({});
    return ids;
}

QImage DesktopSession::picture(const QByteArray& window) const {
    return QImage::fromData(outputOf(u"import"_s, {u"-window"_s, QString::fromLatin1(window), u"png:-"_s}), "png");
}

bool DesktopSession::moveTo(QPoint point) const {
    return xdotool(u"mousemove %1 %2"_s.arg(point.x()).arg(point.y()));
}

bool DesktopSession::click(QPoint point) const {
    return moveTo(point) && xdotool(u"click 1"_s);
}

QRect DesktopSession::restingPlace(const ScreenReader& reader, const QString& name) const {
    QRect before;
    for (const QDeadlineTimer deadline(patience); !deadline.hasExpired(); QThread::msleep(50)) {
        const QRect now = reader.places(name).value(0);
        if (now.isValid() && std::exchange(before, now) == now)
            return now;
    }
    return {};
}

bool DesktopSession::press(const ScreenReader& reader, const QString& name) const {
    const QRect place = restingPlace(reader, name);
    return place.isValid() && click(place.center());
}

bool DesktopSession::xdotool(const QString& words) const {
    return QProcess::execute(u"xdotool"_s, words.split(u' ')) == 0;
}

} // namespace tarnwick
