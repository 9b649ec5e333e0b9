// The whole monitor, headless: a thousand hosts at once, and an hour's worth of cycles.
//
//   bench_fleet thousand   1,000 enabled hosts in one cycle: file descriptors, and the main thread's worst lateness
//   bench_fleet hour       120 cycles of 10 hosts, fast-forwarded: resident memory, and whether it grows
//   bench_fleet large      a fleet of 1,000 hosts of 20 containers: resident memory

#include "AppDelegate.h"
#include "Figures.h"
#include "OpenSshServer.h"
#include "ProbePayload.h"
#include "ProcessRunner.h"
#include "ReadyFuture.h"
#include "RealComputer.h"
#include "ServerStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace tarnwick;

namespace {

class SilentStatusItem : public StatusItem {
public:
    void setContent(const StatusItemContent& content) override { shown = content; }
    StatusItemContent shown;
};

/// The worst lateness of a 1 ms timer while this object lives. A thousand clients keep every processor busy, so a part
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

int failures(const ServerStore& store) {
    return static_cast<int>(std::count_if(
        store.servers().cbegin(), store.servers().cend(),
        [](const Server& server) { return server.metrics && server.metrics->errorMessage; }));
}

int thousand(const OpenSshServer& host) {
    const QTemporaryDir folder;
    AppDelegate delegate(surroundings(folder.path(), hostsOn(host, 1000)));
    LatenessMeter meter;
    double worst = 0;
    double worstOurs = 0;
    delegate.applicationDidFinishLaunching();
    QObject::connect(delegate.store(), &ServerStore::lastRefreshedAllChanged, &meter,
                     [&] { // the save comes next, and is not measured
                         worst = meter.worst;
                         worstOurs = meter.worstOurs;
                     });
    waitForCycle(*delegate.store());
    int withoutDescriptor = 0;
    for (const Server& server : delegate.store()->servers()) {
        const QString error = server.metrics ? server.metrics->errorMessage.value_or(QString()) : QString();
        if (error.contains(QStringLiteral("open files")) || error.startsWith(QStringLiteral("Cannot start")))
            ++withoutDescriptor;
    }
    figures::report("1,000 hosts at once: probes without a file descriptor", withoutDescriptor, "", 0,
                    QStringLiteral("(%1 of %2 probes failed for any reason)")
                        .arg(failures(*delegate.store()))
                        .arg(delegate.store()->servers().size()));
    figures::report(
        "1,000 hosts at once: main thread busy or blocked, worst", worstOurs, "ms", 16,
        QStringLiteral("(1 ms timer's worst lateness, waiting for a processor included: %1 ms)").arg(worst, 0, 'f', 1));
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
    fleet.store.collect = [](const Server& server) {
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
    if (what == u"thousand")
        return thousand(host);
    if (what == u"hour")
        return hour(host);
    std::fprintf(stderr, "bench_fleet thousand | hour | large\n");
    return 2;
}
