// Tarnwick after two hours that are played: played-hours. For pictures alone. The program is the real one, and its
// store asks for results and times as ever; here they come at once, two hours of them before the popover can be opened.
#include "AppDelegate.h"
#include "SystemParts.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPluginLoader>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace tarnwick;

Q_IMPORT_PLUGIN(ViewsModule)

namespace {

constexpr int resultCount = 240;
constexpr double secondsBetween = 30;

/// From 0 to 1 and back, with some noise.
double wave(double hour, double period) {
    return 0.5 + 0.4 * std::sin(hour * 6.2832 / period) + 0.1 * std::sin(hour * 97) * std::sin(hour * 41);
}

/// What a server of that name answers when so much of the two hours has passed.
ServerMetrics result(const QString& name, double hour) {
    if (name == "staging"_L1 && (hour > 1.6 || (hour > 0.5 && hour < 0.6)))
        return ServerMetrics::offline(u"ssh: connect to host staging.example port 2: Connection refused"_s);
    const bool isWeb = name == "web-1"_L1;
    const bool isInBackup = !isWeb && hour > 0.7 && hour < 1.2;
    ServerMetrics metrics;
    metrics.cpuPercent = (isWeb ? 30 : 8) + 26 * wave(hour, isWeb ? 1.4 : 0.9) + (isInBackup ? 30 : 0);
    metrics.memoryTotalMB = 16'384;
    metrics.memoryUsedMB = (isWeb ? 8'200 : 5'000) + 2'600 * wave(hour, 2.3) + (isInBackup ? 1'500 : 0);
    metrics.diskTotalGB = 160;
    metrics.diskUsedGB = isWeb ? 122 + 7 * hour : 60;
    metrics.latencyMs = isWeb ? std::lround(170 + 60 * wave(hour, 0.31)) : std::lround(22 + 6 * wave(hour, 0.2));
    metrics.uptimeString = u"12 days"_s;
    return metrics;
}

/// Plays the hours that end now to a store whose clock and results are `now` and result().
void play(ServerStore& store, Instant& now) {
    const Instant end = now;
    for (int i = resultCount - 1; i >= 0; --i) {
        now = {end.secondsSinceReferenceDate - i * secondsBetween};
        store.refreshAll();
        while (store.isRefreshing())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(u"tarnwick"_s);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QGuiApplication application(argc, argv);

    SystemParts parts = makeSystemParts(true);
    ThisComputer computer(*parts.kernel, *parts.sensors, systemWords());
    Instant now = Instant::now();
    const Instant end = now;
    StoreCollaborators store = StoreCollaborators::real(computer);
    store.clock = [&now] {
        return now;
    };
    store.collect = [&](const Server& server, const ProbeManner&) {
        const double hour = 2 - end.secondsSince(now) / 3600;
        ServerMetrics metrics = result(server.name, hour);
        metrics.lastChecked = now;
        return QtFuture::makeReadyFuture(metrics);
    };
    store.notify = [](const Alert&, bool) {
    };
    AppDelegate delegate({
        .store = store,
        .computer = computer,
        .clock = ThisComputer::steadyTime,
        .statusItem = std::move(parts.statusItem),
        .popover = std::move(parts.popover),
        .views = [] { return qobject_cast<ViewFactory*>(QPluginLoader::staticInstances().value(0)); },
    });
    delegate.applicationDidFinishLaunching();
    play(*delegate.store(), now);
    return QCoreApplication::exec();
}
