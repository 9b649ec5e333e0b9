// The whole monitor, headless: hundreds of hosts, and an hour's worth of cycles.
//
//   bench_fleet pace N     N hosts in one cycle: who answers, how soon beside xargs, the main thread's worst lateness
//   bench_fleet hanging    how much a hundred hosts that hang delay 200 others
//   bench_fleet cost N own|shared   the processor time of a cycle, here and on the hosts, and memory
//   bench_fleet hour       120 cycles of 10 hosts, fast-forwarded: resident memory, and whether it grows
//   bench_fleet large      a fleet of 1,000 hosts of 20 containers: resident memory

#include "AppDelegate.h"
#include "Figures.h"
#include "OpenSshServer.h"
#include "ProbePayload.h"
#include "ProcessRunner.h"
#include "ReadyFuture.h"
#include "RealComputer.h"
#include "SSHMetricsCollector.h"
#include "ServerStore.h"
#include "Xargs.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>

#include <sys/resource.h>
#include <unistd.h>

using namespace tarnwick;

namespace {

class SilentStatusItem : public StatusItem {
public:
    void setContent(const StatusItemContent& content) override { shown = content; }
    StatusItemContent shown;
};

/// The worst lateness of a 1 ms timer while this object lives. Many clients keep every processor busy, so a part
/// of it is time in which the thread was ready and waited for a processor. The rest is ours: the thread was busy or
/// blocked.
class LatenessMeter : public QObject {
public:
    LatenessMeter() {
        schedule_.setFileName(QStringLiteral("/proc/thread-self/schedstat"));
        if (!schedule_.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            std::fprintf(stderr, "no scheduler statistics: all lateness counts as ours\n");
        elapsed_.start();
        startTimer(1, Qt::PreciseTimer);
    }
    double worst = 0;     ///< ms
    double worstOurs = 0; ///< ms

protected:
    void timerEvent(QTimerEvent*) override {
        const double late = static_cast<double>(elapsed_.nsecsElapsed()) / 1e6 - 1;
        const double waited = waitedForProcessor();
        worst = std::max(worst, late);
        worstOurs = std::max(worstOurs, late - (waited - waitedBefore_));
        waitedBefore_ = waited;
        elapsed_.start();
    }

private:
    /// Milliseconds this thread has ever been ready to run without running: the second figure of schedstat.
    double waitedForProcessor() {
        schedule_.seek(0);
        return schedule_.read(64).split(' ').value(1).toDouble() / 1e6;
    }

    QFile schedule_;
    QElapsedTimer elapsed_;
    double waitedBefore_ = 0;
};

QList<SSHConfigHost> hostsOn(const OpenSshServer& server, int count) {
    QList<SSHConfigHost> hosts;
    for (int i = 0; i < count; ++i)
        hosts.append(
            {QStringLiteral("host-%1").arg(i), server.address(), server.user(), server.port(), server.keyPath()});
    return hosts;
}

AppSurroundings surroundings(const QString& folder, const QList<SSHConfigHost>& hosts) {
    static RealComputer here; // a probe may read it after its delegate has ended
    AppSurroundings result{
        .store = StoreCollaborators::real(here.computer),
        .computer = here.computer,
        .clock = ThisComputer::steadyTime,
        .statusItem = std::make_unique<SilentStatusItem>(),
        .popover = {},
        .views = {},
    };
    result.store.folder = folder;
    result.store.sshHosts = [hosts] {
        return hosts;
    };
    result.store.notify = [](const Alert&, bool) {
    };
    return result;
}

void waitForCycle(ServerStore& store) {
    QEventLoop loop;
    const auto connection = QObject::connect(&store, &ServerStore::isRefreshingChanged, &loop, [&] {
        if (!store.isRefreshing())
            loop.quit();
    });
    loop.exec();
    QObject::disconnect(connection);
}

/// One cycle of a fleet on these hosts, from its start.
struct CycleFigures {
    double elapsed = std::numeric_limits<double>::infinity(); ///< ms, until all that were to answer have
    qsizetype answers = 0;
    double late = 0;     ///< ms, the worst lateness of the main thread's timer
    double lateOurs = 0; ///< ms, without the time in which it waited for a processor
    QStringList reasons; ///< why others did not answer
};

CycleFigures cycleOf(const QList<SSHConfigHost>& hosts, qsizetype toAnswer) {
    const QTemporaryDir folder;
    AppDelegate delegate(surroundings(folder.path(), hosts));
    CycleFigures result;
    delegate.applicationDidFinishLaunching();
    ServerStore& store = *delegate.store();
    const double start = figures::wallMilliseconds();
    LatenessMeter meter;
    QObject::connect(&store, &ServerStore::serverChanged, &meter, [&](const QUuid& id) {
        const Server& server = *store.server(id);
        if (server.isLocal)
            return;
        if (server.metrics->errorMessage)
            result.reasons += *server.metrics->errorMessage;
        else if (++result.answers == toAnswer)
            result.elapsed = figures::wallMilliseconds() - start;
    });
    QObject::connect(&store, &ServerStore::lastRefreshedAllChanged, &meter,
                     [&] { // the save comes next, and is not measured
                         result.late = meter.worst;
                         result.lateOurs = meter.worstOurs;
                     });
    waitForCycle(store);
    return result;
}

/// A fleet of many, whose hosts are on this computer: it cannot carry as many clients at once as there are hosts.
int pace(const OpenSshServer& host, int count) {
    const QList<SSHConfigHost> hosts = hostsOn(host, count);
    const UnderXargs xargs(SSHMetricsCollector::remoteProbeRequest(SSHConfigParser::newServer(hosts.first())), count,
                           64);
    const CycleFigures cycle = cycleOf(hosts, count);
    const QByteArray fleet = QByteArray::number(count) + " hosts: ";
    figures::report(fleet + "without an answer", static_cast<double>(count - cycle.answers), "", 0,
                    QStringLiteral("(under xargs %1) %2").arg(count - xargs.answers).arg(cycle.reasons.value(0)));
    figures::report(
        fleet + "wall time, share of xargs -P 64", cycle.elapsed / xargs.elapsed, "x", 1.05,
        QStringLiteral("(%1 s, xargs %2 s)").arg(cycle.elapsed / 1000, 0, 'f', 1).arg(xargs.elapsed / 1000, 0, 'f', 1));
    figures::report(fleet + "lateness of a timer such as the label's, worst", cycle.late, "ms", 50);
    figures::report(fleet + "main thread busy or blocked, worst", cycle.lateOurs, "ms", 16);
    return figures::exitStatus();
}

/// Every third of the fleet hangs.
int hanging(const OpenSshServer& host) {
    OpenSshServer stuck;
    if (const QString problem = stuck.start(u"exec sleep 40"); !problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    constexpr int well = 200;
    const QList<SSHConfigHost> hosts = hostsOn(host, well);
    QList<SSHConfigHost> mixed = hosts;
    for (int place = 2; place <= mixed.size(); place += 3)
        mixed.insert(place, hostsOn(stuck, 1).first());
    const CycleFigures alone = cycleOf(hosts, well);
    const CycleFigures beside = cycleOf(mixed, well);
    figures::report("200 hosts beside 100 that hang: without an answer", static_cast<double>(well - beside.answers), "",
                    0);
    figures::report("200 hosts beside 100 that hang: time, share of 200 alone", beside.elapsed / alone.elapsed, "x",
                    1.1,
                    QStringLiteral("(%1 s, alone %2 s)")
                        .arg(beside.elapsed / 1000, 0, 'f', 1)
                        .arg(alone.elapsed / 1000, 0, 'f', 1));
    return figures::exitStatus();
}

QByteArray processFile(const QString& process, const char* name) {
    QFile file(QStringLiteral("/proc/%1/%2").arg(process, QLatin1StringView(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Memory, what is shared with other processes in proportion.
double proportionalMegabytes(const QString& process) {
    for (const QByteArray& line : processFile(process, "smaps_rollup").split('\n'))
        if (line.startsWith("Pss:"))
            return line.mid(4).trimmed().split(' ').first().toDouble() * 1024 / 1e6;
    return 0;
}

/// What processes have used so far; times in ms.
struct Use {
    double ours = 0;        ///< this program, and the clients that have ended
    double connections = 0; ///< the clients that keep connections open
    double hosts = 0;       ///< the server, its sessions and what these ran
    int connectionCount = 0;
    double connectionMegabytes = 0;
    double hostMegabytes = 0;

    Use(const OpenSshServer& host, const QByteArray& socketFolder) {
        rusage ended{};
        ::getrusage(RUSAGE_CHILDREN, &ended);
        ours = figures::cpuMilliseconds() + milliseconds(ended.ru_utime) + milliseconds(ended.ru_stime);
        const QByteArray hostFolder = QFileInfo(host.keyPath()).path().toUtf8();
        const double tick = 1e3 / static_cast<double>(::sysconf(_SC_CLK_TCK));
        for (const QString& process : QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
            const QByteArray command = processFile(process, "cmdline");
            // The accounting of ticks would lose most of a process that rarely runs.
            const double running = processFile(process, "schedstat").split(' ').first().toDouble() / 1e6;
            if (command.startsWith("ssh: " + socketFolder)) {
                connections += running;
                connectionMegabytes += proportionalMegabytes(process);
                ++connectionCount;
            } else if (command.contains(hostFolder) && command.startsWith("sshd: ")) {
                const QByteArray stat = processFile(process, "stat");
                listener_ = process.toLatin1();
                const QByteArrayList fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
                hosts += running + (fields.value(13).toDouble() + fields.value(14).toDouble()) * tick;
            }
        }
        addSessions(listener_, tick);
    }

private:
    static double milliseconds(const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    }
    void addSessions(const QByteArray& parent, double tick) {
        const QByteArray list = processFile(QString::fromLatin1(parent + "/task/" + parent), "children");
        for (const QByteArray& child : list.simplified().split(' ')) {
            if (child.isEmpty())
                continue;
            const QString process = QString::fromLatin1(child);
            const QByteArray stat = processFile(process, "stat");
            const QByteArrayList fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
            hosts += processFile(process, "schedstat").split(' ').first().toDouble() / 1e6 +
                     (fields.value(13).toDouble() + fields.value(14).toDouble()) * tick;
            hostMegabytes += proportionalMegabytes(process);
            addSessions(child, tick);
        }
    }

    QByteArray listener_;
};

int cost(const OpenSshServer& host, int count, bool isShared) {
    const QTemporaryDir folder;
    const QByteArray runtime = QFile::encodeName(folder.path());
    qputenv("XDG_RUNTIME_DIR", runtime);
    QList<SSHConfigHost> hosts = hostsOn(host, count);
    for (SSHConfigHost& each : hosts) { // who has another key has another connection
        each.identityFile = folder.filePath(each.alias);
        QFile::link(host.keyPath(), *each.identityFile);
    }
    AppDelegate delegate(surroundings(folder.path(), hosts));
    delegate.applicationDidFinishLaunching();
    ServerStore& store = *delegate.store();
    store.editSettings([isShared](AppSettings& settings) { settings.shareConnections = isShared; });
    int answers = 0;
    QObject::connect(&store, &ServerStore::serverChanged, &store, [&](const QUuid& id) {
        answers += !store.server(id)->isLocal && !store.server(id)->metrics->errorMessage ? 1 : 0;
    });
    const int cycles = isShared ? 2 : 1;
    if (isShared) { // the connections are made; from the next on the cycles are as far apart as the timer has them
        waitForCycle(store);
        waitForCycle(store);
    }
    answers = 0;
    const Use before(host, runtime);
    const double start = figures::wallMilliseconds();
    double cycleTime = 0;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        waitForCycle(store);
        cycleTime += std::chrono::duration<double>(store.latestCycleTime()).count();
    }
    const double elapsed = figures::wallMilliseconds() - start;
    const Use after(host, runtime);

    constexpr double any = std::numeric_limits<double>::infinity();
    const double connections = (after.connections - before.connections) / cycles;
    const double here = (after.ours - before.ours) / cycles + connections;
    const double interval = std::chrono::duration<double, std::milli>(store.refreshInterval()).count();
    const QByteArray fleet = QByteArray::number(count) + (isShared ? " hosts, shared: " : " hosts: ");
    figures::report(fleet + "without an answer", static_cast<double>(count * cycles - answers), "", 0);
    figures::report(fleet + "a cycle", cycleTime / cycles, "s", any);
    figures::report(fleet + "processor time here", here / 1e3, "s", any,
                    QStringLiteral("(the program alone and its clients; open connections %1 s of it)")
                        .arg(connections / 1e3, 0, 'f', 2));
    figures::report(fleet + "processor time on the hosts", (after.hosts - before.hosts) / cycles / 1e3, "s", any);
    figures::report(fleet + "here, share of a core", here / interval * 100, "%", isShared && count == 300 ? 3 : any);
    figures::report(fleet + "resident memory", figures::statusMegabytes("VmRSS"), "MB", any);
    if (isShared && after.connectionCount > 0)
        figures::report(fleet + "memory of an open connection", after.connectionMegabytes / after.connectionCount, "MB",
                        any,
                        QStringLiteral("(%1 of them, %2 MB each on the host; a cycle every %3 s)")
                            .arg(after.connectionCount)
                            .arg(after.hostMegabytes / after.connectionCount, 0, 'f', 2)
                            .arg(elapsed / cycles / 1e3, 0, 'f', 1));
    return figures::exitStatus();
}

int hour(const OpenSshServer& host) {
    const QTemporaryDir folder;
    AppDelegate delegate(surroundings(folder.path(), hostsOn(host, 10)));
    delegate.applicationDidFinishLaunching();
    ServerStore& store = *delegate.store();
    waitForCycle(store);
    constexpr int cycles = 120;
    double early = 0;
    for (int cycle = 1; cycle < cycles; ++cycle) {
        store.refreshAll();
        waitForCycle(store);
        if (cycle == 20)
            early = figures::statusMegabytes("VmRSS");
    }
    const double late = figures::statusMegabytes("VmRSS");
    figures::report("10 hosts, 120 cycles: resident memory", late, "MB", 25,
                    QStringLiteral("(private %1 MB)").arg(figures::statusMegabytes("RssAnon"), 0, 'f', 1));
    figures::report("10 hosts, 120 cycles: growth since the 20th cycle", late - early, "MB", 0.5);
    return figures::exitStatus();
}

/// A thousand hosts that all answer would need a thousand computers, so their lines are made here and parsed as usual.
int large() {
    const QTemporaryDir folder;
    AppSurroundings fleet = surroundings(folder.path(), {});
    fleet.store.sshHosts = [] {
        return QList<SSHConfigHost>(1000);
    };
    fleet.store.collect = [](const Server& server, const ProbeManner&) {
        const QByteArray host = uuidString(server.id).left(8).toLatin1();
        QByteArray line = "{\"cpu\":12,\"mem_used\":512,\"mem_total\":2048,\"disk_used\":10.0,\"disk_total\":40.0,"
                          "\"load\":0.50,\"uptime\":\"14\",\"containers\":[";
        for (int i = 0; i < 20; ++i) {
            const QByteArray n = QByteArray::number(i);
            line += (i == 0 ? "" : ",") + QByteArray("{\"id\":\"") + host + n + "\",\"name\":\"service-" + n +
                    "\",\"image\":\"registry.example/team/service-" + n +
                    ":1.4\",\"status\":\"Up 12 days\",\"state\":\"running\",\"ports\":\"0.0.0.0:80" + n + "->80/tcp\"}";
        }
        return readyFuture(parseMetrics(line + "]}", 19));
    };
    AppDelegate delegate(std::move(fleet));
    delegate.applicationDidFinishLaunching();
    for (int cycle = 0; cycle < 5; ++cycle) {
        delegate.store()->refreshAll();
        waitForCycle(*delegate.store());
    }
    qsizetype containers = 0;
    for (const Server& server : delegate.store()->servers())
        containers += server.metrics ? server.metrics->containers.size() : 0;
    figures::report("1,000 hosts x 20 containers: resident memory", figures::statusMegabytes("VmRSS"), "MB", 60,
                    QStringLiteral("(private %1 MB; %2 containers)")
                        .arg(figures::statusMegabytes("RssAnon"), 0, 'f', 1)
                        .arg(containers));
    return figures::exitStatus();
}

} // namespace

int main(int argc, char* argv[]) {
    ProcessRunner::raiseOpenFileLimit();
    QCoreApplication app(argc, argv);
    const QString what = QCoreApplication::arguments().value(1);
    if (what == u"large")
        return large();
    OpenSshServer host;
    if (const QString problem = host.start(); !problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    host.yieldProcessor();
    if (what == u"pace")
        return pace(host, QCoreApplication::arguments().value(2).toInt());
    if (what == u"cost")
        return cost(host, QCoreApplication::arguments().value(2).toInt(),
                    QCoreApplication::arguments().value(3) == u"shared");
    if (what == u"hanging")
        return hanging(host);
    if (what == u"hour")
        return hour(host);
    std::fprintf(stderr, "bench_fleet pace N | cost N own|shared | hanging | hour | large\n");
    return 2;
}
