// The whole monitor, headless: hundreds of hosts, and an hour's worth of cycles.
//
//   bench_fleet pace N     N hosts in one cycle: who answers, how soon beside xargs, the main thread's worst lateness
//   bench_fleet hanging    how much a hundred hosts that hang delay 200 others
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
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <limits>

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
    if (what == u"hanging")
        return hanging(host);
    if (what == u"hour")
        return hour(host);
    std::fprintf(stderr, "bench_fleet pace N | hanging | hour | large\n");
    return 2;
}
