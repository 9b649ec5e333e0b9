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

/// Makes the process end when this one does, even by a crash.
void prepare(QProcess& process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

/// Starts a part of the desktop.
bool startPart(QProcess& process, const QString& program, const QStringList& arguments) {
    prepare(process);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForStarted(DesktopSession::patience);
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
    auto message = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message << interface << name;
    const QVariantList reply = QDBusConnection::sessionBus().call(message).arguments();
    return reply.value(0).value<QDBusVariant>().variant();
}

} // namespace

DesktopSession::~DesktopSession() {
    for (QProcess* process : {&panel_, &bus_, &screen_})
        end(*process);
}

QString DesktopSession::start(const QString& home) {
    for (const QString& program : {u"Xvfb"_s, u"dbus-daemon"_s, u"xfce4-panel"_s, u"xdotool"_s, u"import"_s})
        if (QStandardPaths::findExecutable(program).isEmpty())
            return program + u" is missing: install xvfb, dbus-daemon, xfce4-panel, xdotool and imagemagick"_s;
    for (const char* variable : {"WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                 "XDG_CURRENT_DESKTOP", "AT_SPI_BUS_ADDRESS", "DBUS_STARTER_ADDRESS"})
        qunsetenv(variable);
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home));

    const QString screen = u"-displayfd 1 -nolisten tcp -screen 0 %1x%2x24"_s.arg(size.width()).arg(size.height());
    if (!startPart(screen_, u"Xvfb"_s, screen.split(u' ')) || !screen_.waitForReadyRead(patience))
        return u"The X server does not start"_s;
    qputenv("DISPLAY", ":" + screen_.readAllStandardOutput().trimmed());
    if (!startPart(bus_, u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s}) ||
        !bus_.waitForReadyRead(patience))
        return u"The session bus does not start"_s;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus_.readLine().trimmed());
    // Otherwise the bus starts an installed notification service, whose bubbles cover the program's windows.
    if (!QDBusConnection::sessionBus().registerService(u"org.freedesktop.Notifications"_s))
        return u"The session bus does not answer"_s;

    const QByteArray panel = readFile(QStringLiteral(TARNWICK_FIXTURES "/xfce4-panel.xml"));
    if (panel.isEmpty() || !writeFile(home + u"/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"_s, panel))
        return u"Cannot write to %1"_s.arg(home);
    return startPart(panel_, u"xfce4-panel"_s, {u"--disable-wm-check"_s}) ? QString() : u"The panel does not start"_s;
}

void DesktopSession::end(QProcess& process) {
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
    process.waitForFinished();
}

void DesktopSession::run(QProcess& program, const QString& executable, const QStringList& variables) const {
    prepare(program);
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // AddressSanitizer insists on being loaded first and on seeing every library. libnss-wrapper is loaded before it
    // and hides one.
    const QString sanitizer = u"ASAN_OPTIONS=%1:verify_asan_link_order=0"_s.arg(environment.value(u"ASAN_OPTIONS"_s));
    const QStringList always{u"QT_QPA_PLATFORM=xcb"_s, u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1"_s, sanitizer,
                             u"NSS_WRAPPER_DISABLE_DEEPBIND=1"_s};
    for (const QString& variable : always + variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    program.setProcessEnvironment(environment);
    program.start(executable, QStringList());
}

QStringList DesktopSession::trayItems() const {
    const QString watcher = u"org.kde.StatusNotifierWatcher"_s;
    return property(watcher, u"/StatusNotifierWatcher"_s, watcher, u"RegisteredStatusNotifierItems"_s).toStringList();
}

QString DesktopSession::label() const {
    const QString item = trayItems().value(0);
    const QString path = u'/' + item.section(u'/', 1);
    return property(item.section(u'/', 0, 0), path, u"org.kde.StatusNotifierItem"_s, u"XAyatanaLabel"_s).toString();
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
