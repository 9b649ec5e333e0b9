// The whole monitor, headless: a thousand hosts at once, and an hour's worth of cycles.
//
//   bench_fleet thousand   1,000 enabled hosts in one cycle: file descriptors, and the main thread's worst lateness
//   bench_fleet hour       120 cycles of 10 hosts, fast-forwarded: resident memory, and whether it grows
//   bench_fleet large      a fleet of 1,000 hosts of 20 containers: resident memory

#include "AppDelegate.h"
#include "Figures.h"
#include "MacHardwareCollector.h"
#include "OpenSshServer.h"
#include "ProcessRunner.h"
#include "ServerStore.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

#include <algorithm>

using namespace tarnwick;

namespace {

class SilentStatusItem : public StatusItem {
public:
    void setContent(const StatusItemContent& content) override { shown = content; }
    StatusItemContent shown;
};

/// The worst lateness in ms of a 1 ms timer while it lives: for so long was the main thread blocked.
class LatenessMeter : public QObject {
public:
    LatenessMeter() {
        elapsed_.start();
        startTimer(1, Qt::PreciseTimer);
    }
    double worst = 0;

protected:
    void timerEvent(QTimerEvent*) override {
        worst = std::max(worst, static_cast<double>(elapsed_.nsecsElapsed()) / 1e6 - 1);
        elapsed_.start();
    }

private:
    QElapsedTimer elapsed_;
};

QList<SSHConfigHost> hostsOn(const OpenSshServer& server, int count) {
    QList<SSHConfigHost> hosts;
    for (int i = 0; i < count; ++i)
        hosts.append(
            {QStringLiteral("host-%1").arg(i), server.address(), server.user(), server.port(), server.keyPath()});
    return hosts;
}

AppSurroundings surroundings(const QString& folder, const QList<SSHConfigHost>& hosts) {
    AppSurroundings result;
    result.store = StoreCollaborators::real();
    result.store.folder = folder;
    result.store.sshHosts = [hosts] {
        return hosts;
    };
    result.store.notify = [](const Alert&, bool, Instant) {
    };
    result.thermals = [] {
        return MacHardwareCollector::queryQuickThermals();
    };
    result.loads = {[] { return MacHardwareCollector::queryCpuUsage(); },
                    [] { return MacHardwareCollector::queryGpuUsage(); },
                    [] {
                        return MacHardwareCollector::queryRamUsage().percent;
                    }};
    result.clock = [] {
        return std::chrono::steady_clock::now().time_since_epoch();
    };
    result.statusItem = std::make_unique<SilentStatusItem>();
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
    return static_cast<int>(std::count_if(store.servers().cbegin(), store.servers().cend(), [](const Server& server) {
        return server.metrics && server.metrics->errorMessage;
    }));
}

int thousand(const OpenSshServer& host) {
    const QTemporaryDir folder;
    AppDelegate delegate(surroundings(folder.path(), hostsOn(host, 1000)));
    LatenessMeter meter;
    double worstBeforeSave = 0;
    delegate.applicationDidFinishLaunching();
    QObject::connect(delegate.store(), &ServerStore::lastRefreshedAllChanged, &meter,
                     [&] { worstBeforeSave = meter.worst; });
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
    figures::report("1,000 hosts at once: worst lateness of a 1 ms timer", worstBeforeSave, "ms", 16);
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

int large(OpenSshServer& host) {
    QByteArray rows;
    for (int i = 0; i < 20; ++i) {
        const QByteArray n = QByteArray::number(i);
        rows += "4f1c2a9b7d" + n + "\tservice-" + n + "\tregistry.example/team/service-" + n +
                ":1.4\tUp 12 days\trunning\t0.0.0.0:80" + n + "->80/tcp\n";
    }
    if (!host.standIns().addDocker(rows))
        return 2;
    const QTemporaryDir folder;
    AppDelegate delegate(surroundings(folder.path(), hostsOn(host, 1000)));
    delegate.applicationDidFinishLaunching();
    waitForCycle(*delegate.store());
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
    OpenSshServer host;
    if (const QString problem = host.start(); !problem.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(problem));
        return 2;
    }
    const QStringList arguments = QCoreApplication::arguments();
    const QString what = arguments.value(1);
    if (what == u"thousand")
        return thousand(host);
    if (what == u"hour")
        return hour(host);
    if (what == u"large")
        return large(host);
    std::fprintf(stderr, "bench_fleet thousand | hour | large\n");
    return 2;
}
