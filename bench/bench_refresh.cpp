// A refresh of 50 hosts against one OpenSSH server, compared with the same 50 ssh command lines under xargs.

#include "Figures.h"
#include "OpenSshServer.h"
#include "ProcessRunner.h"
#include "RealComputer.h"
#include "SSHMetricsCollector.h"
#include "Xargs.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <algorithm>
#include <vector>

using namespace tarnwick;

namespace {

constexpr int hosts = 50;
constexpr int rounds = 5;

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// Wall time in ms of one probe of every server at once; negative when a probe failed.
double refresh(const QList<Server>& servers) {
    static RealComputer here;
    const double start = figures::wallMilliseconds();
    QList<QFuture<ServerMetrics>> probes;
    for (const Server& server : servers)
        probes.append(SSHMetricsCollector::collect(server, here.computer, {ProcessRequest::Launch::paced}));
    QEventLoop loop;
    QtFuture::whenAll(probes.begin(), probes.end()).then(&loop, [&loop](const auto&) { loop.quit(); });
    loop.exec();
    const double elapsed = figures::wallMilliseconds() - start;
    for (const auto& probe : probes) {
        if (const ServerMetrics metrics = probe.result(); metrics.errorMessage) {
            std::fprintf(stderr, "probe failed: %s\n", qPrintable(*metrics.errorMessage));
            return -1;
        }
    }
    return elapsed;
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
    Server server;
    server.host = host.address();
    server.port = host.port();
    server.user = host.user();
    server.customSshKeyPath = host.keyPath();
    QList<Server> servers;
    for (int i = 0; i < hosts; ++i) {
        server.id = QUuid::createUuid();
        servers.append(server);
    }

    std::vector<double> ours;
    std::vector<double> theirs;
    double cpu = 0;
    if (refresh(servers.first(5)) < 0)
        return 2;
    for (int round = 0; round < rounds; ++round) {
        const double before = figures::cpuMilliseconds();
        ours.push_back(refresh(servers));
        cpu += figures::cpuMilliseconds() - before;
        const UnderXargs xargs(SSHMetricsCollector::remoteProbeRequest(server), hosts, hosts);
        theirs.push_back(xargs.elapsed);
        if (ours.back() < 0 || xargs.elapsed < 0 || xargs.answers < hosts)
            return 2;
    }
    figures::report("refresh of 50 hosts, wall time, share of xargs -P 50", median(ours) / median(theirs), "x", 1.10,
                    QStringLiteral("(%1 ms, xargs %2 ms; medians of %3)")
                        .arg(median(ours), 0, 'f', 0)
                        .arg(median(theirs), 0, 'f', 0)
                        .arg(rounds));
    figures::report("own CPU time per probe", cpu / (rounds * hosts), "ms", 3);
    return figures::exitStatus();
}
