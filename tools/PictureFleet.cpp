#include "PictureFleet.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr QByteArrayView shop = "4f1c2a9b7d10\tshop-web\tnginx:1.25\tUp 12 days\trunning\t0.0.0.0:80->80/tcp\n"
                                "8d20c1e4a9f3\tshop-api\tregistry.example/shop:2.4\tUp 12 days\trunning\t8080/tcp\n"
                                "c77a01be5d42\tcache\tredis:7\tUp 5 weeks\trunning\t6379/tcp\n";
constexpr QByteArrayView jobs = "1be94c02d7aa\tqueue\trabbitmq:3\tUp 3 days\trunning\t5672/tcp\n"
                                "9a7d3310cc02\tmailer\tregistry.example/mailer:1\tExited (1) 2 hours ago\texited\t\n";
constexpr QByteArrayView tables = "1be94c02d7aa\tpostgres\tpostgres:16\tUp 3 weeks\trunning\t5432/tcp\n";

/// What the import list offers: web-1 and staging are in the usual fleet, and db-1 is behind a jump host.
constexpr QStringView aliases = uR"(
Host web-1
    HostName web-1.example
Host worker-2
    HostName worker-2.example
Host staging
    HostName staging.example
    Port 2
Host db-1
    HostName 192.0.2.21
    User deploy
    ProxyJump gateway.example
    IdentityFile /home/user/.ssh/id_ed25519
Host mail
    HostName mail.example
    User admin
    Port 2222
)";

Server local(const QString& name = u"workstation"_s) {
    Server server;
    server.id = QUuid::createUuid();
    server.name = name;
    server.host = u"localhost"_s;
    server.user = u"root"_s;
    server.isLocal = true;
    return server;
}

} // namespace

PictureHost::PictureHost(const QString& name, Disk disk, const QByteArray& idle, QByteArrayView containers)
    : name_(name) {
    StandIns& standIns = ssh_.standIns();
    if (!standIns.addDisk(disk.gibibytes, disk.percent) || !standIns.addProcessor(idle) ||
        !standIns.addDocker(containers.toByteArray()))
        throw std::runtime_error("Cannot write stand-ins");
}

void PictureHost::start(QStringView forceCommand) {
    const QString error = ssh_.start(forceCommand);
    if (!error.isEmpty())
        throw std::runtime_error(error.toStdString());
}

QString PictureHost::configuration() const {
    return u"Match originalhost %1.example,*.%1.example\n    ProxyCommand busybox nc 127.0.0.1 %2\n"_s.arg(name_).arg(
        ssh_.port());
}

Server PictureHost::entry() const {
    Server server;
    server.id = QUuid::createUuid();
    server.name = name_;
    server.host = name_ + u".example"_s;
    server.user = ssh_.user();
    server.customSshKeyPath = ssh_.keyPath();
    return server;
}

PictureFleet::PictureFleet()
    : web_(u"web-1"_s, {160, 85}, "62.0", shop)
    , worker_(u"worker-2"_s, {80, 23}, "94.0", jobs)
    , backup_(u"backup"_s, {80, 23}, "94.0", {})
    , database_(u"db"_s, {160, 41}, "81.0", tables) {}

void PictureFleet::start(const UserHome& home) {
    web_.start();
    worker_.start();
    backup_.start(HostBehaviour::hangs);
    database_.start();
    const QString configuration =
        web_.configuration() + worker_.configuration() + backup_.configuration() + database_.configuration() +
        u"Match originalhost staging,staging.example,*.staging.example\n    HostName 127.0.0.1\n"_s;
    if (!home.writeSshFile(u"config"_s, configuration.toUtf8() + aliases.toUtf8()))
        throw std::runtime_error("Cannot write the ssh configuration");
}

Setting PictureFleet::setting(Scene scene) const {
    switch (scene) {
    case Scene::same:
        break;
    case Scene::usual:
        return {{local(), web_.entry(), staging()}, u"3 / 3 Containers"_s};
    case Scene::states:
        return {{backup_.entry(), worker_.entry(), staging(), paused()}, u"1 / 2 Containers"_s};
    case Scene::containers:
        return {{worker_.entry(), web_.entry()}, u"3 / 3 Containers"_s};
    case Scene::fleet:
        return {large(), u"2 offline"_s};
    case Scene::paused: // the program would fill a fleet that is empty at the start
        return {{paused()}, u"build"_s};
    case Scene::firstLaunch:
        return {{local()}, u"Tarnwick Tour"_s, true};
    case Scene::playedHours:
        return {{local(), web_.entry(), staging()}, u"CPU"_s};
    case Scene::playedMac:
        return {{local(u"a played Mac"_s), web_.entry(), staging()}, u"3 / 3 Containers"_s};
    case Scene::playedFirstLaunch:
        return {{local(u"a played Mac"_s)}, u"Tarnwick Tour"_s, true};
    }
    return {};
}

/// A host on which nothing listens.
Server PictureFleet::staging() const {
    Server server = web_.entry();
    server.name = u"staging"_s;
    server.host = u"staging.example"_s;
    server.port = 2; // reserved, and not used by any service
    return server;
}

QList<Server> PictureFleet::large() const {
    QList<Server> servers{local(), web_.entry(), worker_.entry(), staging(), paused()};
    const auto add = [&servers](Server server, const QString& region) {
        server.id = QUuid::createUuid();
        server.name += u'-' + region;
        server.host = region + u'.' + server.host;
        servers += server;
    };
    for (const QString& region : {u"eu"_s, u"us"_s, u"asia"_s, u"africa"_s, u"oceania"_s})
        add(database_.entry(), region);
    add(staging(), u"eu"_s);
    return servers;
}

Server PictureFleet::paused() const {
    Server server = worker_.entry();
    server.name = u"build"_s;
    server.host = u"build.example"_s;
    server.isEnabled = false;
    return server;
}

} // namespace tarnwick
