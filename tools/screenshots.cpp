// Takes the documentation's pictures of the running program, on a desktop and with servers of its own:
// screenshots FOLDER
#include "Coding.h"
#include "DesktopSession.h"
#include "OpenSshServer.h"
#include "ScreenReader.h"
#include "UserHome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

#include <array>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {

/// How the desktop looks. Plasma's session is the one whose colours are a plain file.
struct Look {
    QStringView suffix;
    int scale;
    bool isDark;
    bool isWhole; ///< all scenes, not only the first: places to press are known unscaled alone
};
constexpr std::array looks{Look{u"-2x", 2, false, false}, Look{u"", 1, false, true}, Look{u"-dark", 1, true, true}};

constexpr QByteArrayView darkColors = R"(
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
)";

constexpr QByteArrayView shop = "4f1c2a9b7d10\tshop-web\tnginx:1.25\tUp 12 days\trunning\t0.0.0.0:80->80/tcp\n"
                                "8d20c1e4a9f3\tshop-api\tregistry.example/shop:2.4\tUp 12 days\trunning\t8080/tcp\n"
                                "c77a01be5d42\tcache\tredis:7\tUp 5 weeks\trunning\t6379/tcp\n";
constexpr QByteArrayView jobs = "1be94c02d7aa\tqueue\trabbitmq:3\tUp 3 days\trunning\t5672/tcp\n"
                                "9a7d3310cc02\tmailer\tregistry.example/mailer:1\tExited (1) 2 hours ago\texited\t\n";

[[noreturn]] void fail(const QString& why) {
    throw std::runtime_error(why.toStdString());
}

void check(const QString& error) {
    if (!error.isEmpty())
        fail(error);
}

void waitFor(const QString& what, const std::function<bool()>& condition) {
    for (const QDeadlineTimer deadline(DesktopSession::patience); !condition();) {
        if (deadline.hasExpired())
            fail(u"No "_s + what);
        QThread::msleep(50);
    }
}

void write(const QString& path, QByteArrayView contents) {
    QFile file(path);
    if (!QDir().mkpath(path.section(u'/', 0, -2)) || !file.open(QIODevice::WriteOnly) ||
        file.write(contents.data(), contents.size()) != contents.size())
        fail(u"Cannot write "_s + path);
}

/// What `df -P -k /` prints of a disk of this size, so full.
QByteArray disk(qint64 gibibytes, int percent) {
    const qint64 total = gibibytes * 1024 * 1024;
    const qint64 used = total / 100 * percent;
    return u"Filesystem 1024-blocks Used Available Capacity Mounted on\n/dev/vda1 %1 %2 %3 %4% /\n"_s.arg(total)
        .arg(used)
        .arg(total - used)
        .arg(percent)
        .toLatin1();
}

/// A host at an address of its own, which the user's ssh configuration leads to a server on this computer. Its disk,
/// its processor's idle share and its containers are the given ones; the rest is this computer's.
class Host {
public:
    Host(const QString& name, const QByteArray& diskReport, QByteArrayView idlePercent, QByteArrayView containers)
        : name_(name) {
        StandIns& standIns = ssh_.standIns();
        if (!standIns.addRecording(u"df"_s, diskReport) || !standIns.addDocker(containers.toByteArray()) ||
            !standIns.addRecording(u"top"_s, "%Cpu(s):  1.0 us,  0.0 sy,  0.0 ni, " + idlePercent.toByteArray() +
                                                 " id,  0.0 wa,  0.0 hi,  0.0 si,  0.0 st\n"))
            fail(u"Cannot write stand-ins"_s);
    }

    void start(QStringView forceCommand = {}) { check(ssh_.start(forceCommand)); }
    [[nodiscard]] QString configuration() const {
        return u"Host %1.example\n    ProxyCommand busybox nc 127.0.0.1 %2\n"_s.arg(name_).arg(ssh_.port());
    }
    [[nodiscard]] Server entry() const {
        Server server;
        server.id = QUuid::createUuid();
        server.name = name_;
        server.host = name_ + u".example"_s;
        server.user = ssh_.user();
        server.customSshKeyPath = ssh_.keyPath();
        return server;
    }

private:
    QString name_;
    OpenSshServer ssh_;
};

Server workstation() {
    Server server;
    server.id = QUuid::createUuid();
    server.name = u"workstation"_s;
    server.host = u"localhost"_s;
    server.user = u"root"_s;
    server.isLocal = true;
    return server;
}

/// Takes pictures of one program in one look.
class Photographer {
public:
    Photographer(const UserHome& home, const DesktopSession& desktop, QString folder, Look look)
        : home_(home), desktop_(desktop), folder_(std::move(folder)), look_(look) {
        write(home_.folder() + u"/.config/kdeglobals"_s, look.isDark ? darkColors : QByteArrayView());
    }
    ~Photographer() { end(); }
    Photographer(const Photographer&) = delete;
    Photographer& operator=(const Photographer&) = delete;

    /// Starts the program anew with this fleet.
    void start(const QList<Server>& servers, bool isFirstLaunch = false) {
        end();
        AppSettings settings;
        settings.hasCompletedOnboarding = !isFirstLaunch;
        const QString data = home_.folder() + u"/.local/share/Tarnwick/"_s;
        write(data + u"settings.json"_s, encodeSettings(settings).value());
        write(data + u"servers.json"_s, encodeServers(servers).value());
        waitFor(u"empty tray"_s, [this] { return desktop_.trayItems().isEmpty(); });
        desktop_.run(
            program_, QStringLiteral(TARNWICK_EXECUTABLE),
            {u"XDG_CURRENT_DESKTOP=KDE"_s, u"KDE_SESSION_VERSION=5"_s, u"QT_SCALE_FACTOR=%1"_s.arg(look_.scale)});
        waitFor(u"tray item"_s, [this] { return desktop_.trayItems().size() == 1; });
    }

    /// Opens the popover from the tray.
    void open() const {
        QImage item;
        waitFor(u"picture of the tray item"_s, [&] {
            const QImage now = desktop_.picture().copy(DesktopSession::itemPlace);
            return now == std::exchange(item, now) && now.convertToFormat(QImage::Format_Indexed8).colorCount() > 2;
        });
        click(DesktopSession::itemPlace.center());
        waitFor(u"popover"_s, [this] { return !desktop_.windows().isEmpty(); });
    }

    void waitForText(const QString& text) const {
        const ScreenReader reader;
        waitFor(text, [&] { return !reader.places(text).isEmpty(); });
    }

    /// Presses the topmost element of that name, once it rests, and takes the pointer away.
    void press(const QString& name) const {
        if (!desktop_.press(ScreenReader(), name))
            fail(u"No "_s + name);
        if (!desktop_.moveTo({100, 1000}))
            fail(u"The pointer does not move"_s);
    }

    /// Writes what the program's window shows once it stands still, which it does not while a probe
    /// runs. One that never ends: after 6 s.
    void take(const QString& name) const {
        QImage picture;
        for (const QDeadlineTimer deadline(6s); !deadline.hasExpired();) {
            QThread::msleep(500); // longer than any animation's pause
            const QImage now = desktop_.picture(desktop_.windows().value(0, "none"));
            if (std::exchange(picture, now) == now)
                break;
        }
        const QString path = u"%1/%2%3.png"_s.arg(folder_, name, look_.suffix);
        if (picture.isNull() || !picture.convertToFormat(QImage::Format_RGB32).save(path, "png", 0))
            fail(u"Cannot take "_s + path);
        std::puts(qPrintable(path));
    }

private:
    void end() { DesktopSession::end(program_); }
    void click(QPoint point) const {
        if (!desktop_.click(point))
            fail(u"The pointer does not click"_s);
    }

    const UserHome& home_;
    const DesktopSession& desktop_;
    QString folder_;
    Look look_;
    QProcess program_;
};

/// The hosts of all pictures.
struct Fleet {
    Host web{u"web-1"_s, disk(160, 85), "62.0", shop};
    Host worker{u"worker-2"_s, disk(80, 23), "94.0", jobs};
    Host backup{u"backup"_s, disk(80, 23), "94.0", {}};

    /// Starts them, and leads ssh to them.
    void start(const UserHome& home) {
        web.start();
        worker.start();
        backup.start(HostBehaviour::hangs);
        const QString configuration = web.configuration() + worker.configuration() + backup.configuration() +
                                      u"Host staging.example\n    HostName 127.0.0.1\n"_s;
        if (!home.writeSshFile(u"config"_s, configuration.toUtf8()))
            fail(u"Cannot write the ssh configuration"_s);
    }
    /// Nothing listens there.
    [[nodiscard]] Server staging() const {
        Server server = web.entry();
        server.name = u"staging"_s;
        server.host = u"staging.example"_s;
        server.port = 2; // reserved, and of no service in use
        return server;
    }
    [[nodiscard]] Server paused() const {
        Server server = worker.entry();
        server.name = u"build"_s;
        server.host = u"build.example"_s;
        server.isEnabled = false;
        return server;
    }
};

/// A fleet's popover, and over it the sheet that a button of its head opens.
void takeSheet(Photographer& photographer, const QList<Server>& servers, const QString& button, const QString& name) {
    photographer.start(servers);
    photographer.open();
    photographer.waitForText(u"3 / 3 Containers"_s);
    if (!button.isEmpty())
        photographer.press(button);
    photographer.take(name);
}

void takeStates(Photographer& photographer, const Fleet& fleet) {
    photographer.start({fleet.backup.entry(), fleet.worker.entry(), fleet.staging(), fleet.paused()});
    photographer.open();
    photographer.waitForText(u"1 / 2 Containers"_s);
    photographer.take(u"states"_s);

    photographer.start({fleet.worker.entry(), fleet.web.entry()});
    photographer.open();
    photographer.waitForText(u"3 / 3 Containers"_s);
    photographer.press(u"1 / 2 Containers"_s);
    photographer.waitForText(u"Restart container"_s);
    photographer.take(u"containers"_s);
}

void takeFirstSteps(Photographer& photographer, const Fleet& fleet) {
    photographer.start({fleet.paused()}); // the program fills a fleet that is empty at its start
    photographer.open();
    photographer.press(u"Remove server from Tarnwick"_s);
    photographer.waitForText(u"Add First Server"_s);
    photographer.take(u"empty"_s);

    photographer.start({workstation()}, true);
    photographer.waitForText(u"Tarnwick Tour"_s);
    photographer.take(u"tour"_s);
}

void takeAll(Photographer& photographer, const Fleet& fleet, bool isWhole) {
    const QList<Server> servers{workstation(), fleet.web.entry(), fleet.staging()};
    takeSheet(photographer, servers, {}, u"popover"_s);
    if (!isWhole)
        return;
    takeSheet(photographer, servers, u"Hardware Specs & Thermals"_s, u"mac-info"_s);
    takeSheet(photographer, servers, u"Add New Server"_s, u"add-server"_s);
    takeSheet(photographer, servers, u"Settings"_s, u"settings"_s);
    takeStates(photographer, fleet);
    takeFirstSteps(photographer, fleet);
}

void takeAllLooks(const QString& folder) {
    const UserHome home;
    check(home.error());
    DesktopSession desktop;
    check(desktop.start(home.folder()));
    Fleet fleet;
    fleet.start(home);
    for (const Look& look : looks) {
        Photographer photographer(home, desktop, folder, look);
        takeAll(photographer, fleet, look.isWhole);
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
            fail(u"usage: screenshots FOLDER"_s);
        takeAllLooks(QString::fromLocal8Bit(argv[1]));
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
