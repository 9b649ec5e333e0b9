// The popover and its sheets, drawn without a screen: how soon they appear, what a frame costs, and how much memory
// stays.
//
//   bench_popover opening | typing | motion | trends | rest | sheets | memory

#include "Figures.h"
#include "FleetTrends.h"
#include "FreeMemory.h"
#include "Popover.h"
#include "PopoverView.h"
#include "ReadyFuture.h"
#include "RealComputer.h"
#include "ServerStore.h"
#include "UIState.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <vector>

#include <malloc.h>

using namespace tarnwick;

namespace {

double threadMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void waitFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void waitForFrame(QQuickWindow& window) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
    loop.exec();
}

/// The main thread's work from the end of one frame to the end of the next: events, models, drawing.
class FrameMeter : public QObject {
public:
    explicit FrameMeter(QQuickWindow& window) {
        connect(
            &window, &QQuickWindow::frameSwapped, this,
            [this] {
                const double work = threadMilliseconds();
                const double time = figures::wallMilliseconds();
                ++frames;
                worstWork = std::max(worstWork, work - lastWork_);
                worstGap = std::max(worstGap, time - lastTime_);
                lastWork_ = work;
                lastTime_ = time;
            });
    }
    int frames = 0;
    double worstWork = 0; ///< ms of processor
    double worstGap = 0;  ///< ms, including waits for a processor

    [[nodiscard]] QString beside() const {
        return QStringLiteral("(%1 frames, %2 ms apart at most)").arg(frames).arg(worstGap, 0, 'f', 1);
    }

private:
    double lastWork_ = threadMilliseconds();
    double lastTime_ = figures::wallMilliseconds();
};

/// A fleet whose hosts all answer at once, each time a little differently, in a home of its own.
class Fleet {
public:
    explicit Fleet(int size) {
        qputenv("HOME", home.path().toLocal8Bit());
        store = std::make_unique<ServerStore>(StoreCollaborators{
            .collect = [this](const Server&, const ProbeManner&) { return readyFuture(answer()); },
            .clock = [this] { return now; },
            .claim = [](const QString&, Instant) { return false; },
            .notify = {},
            .hasDefaultRoute = [] { return true; },
            .sshHosts = [] { return QList<SSHConfigHost>(); },
            .computerName = [] { return std::optional<QString>(); },
            .folder = home.filePath(QStringLiteral("data")),
        });
        QList<Server> servers;
        for (int i = 0; i < size; ++i) {
            Server server;
            server.id = QUuid::createUuid();
            server.name = QStringLiteral("host-%1").arg(i);
            server.host = QStringLiteral("host-%1.example").arg(i);
            server.user = QStringLiteral("root");
            server.metrics = answer();
            servers.append(server);
        }
        store->setServers(servers);
        waitFor(std::chrono::milliseconds(100)); // the start-up refresh
    }

    [[nodiscard]] std::unique_ptr<PopoverView> open() {
        auto view = std::make_unique<PopoverView>(*store, ui, ViewCollaborators::real(here.computer));
        view->show();
        waitForFrame(*view);
        return view;
    }

    QTemporaryDir home;
    UIState ui;
    Instant now; ///< of all that is answered
    RealComputer here;
    std::unique_ptr<ServerStore> store;

private:
    ServerMetrics answer() {
        ServerMetrics metrics;
        metrics.cpuPercent = answers_++ * 7 % 60;
        metrics.lastChecked = now;
        metrics.memoryUsedMB = 512 + answers_ % 512;
        metrics.memoryTotalMB = 2048;
        metrics.diskUsedGB = 10;
        metrics.diskTotalGB = 40;
        metrics.uptimeString = QStringLiteral("14");
        metrics.loadAvg1m = 0.5;
        metrics.latencyMs = 12 + answers_ % 30;
        for (int i = 0; i < 3; ++i) {
            ContainerInfo container;
            container.id = QStringLiteral("4f1c2a9b7d1%1").arg(i);
            container.name = QStringLiteral("service-%1").arg(i);
            container.status = QStringLiteral("Up 12 days");
            container.state = QStringLiteral("running");
            metrics.containers.append(container);
        }
        return metrics;
    }

    int answers_ = 0;
};

void opening(int size, double limit) {
    Fleet fleet(size);
    std::vector<double> times;
    double first = 0;
    for (int i = 0; i < 21; ++i) {
        const double start = figures::wallMilliseconds();
        auto view = fleet.open();
        const double time = figures::wallMilliseconds() - start;
        view.reset();
        returnWindowMemory(); // as after each time the popover closes
        if (i == 0)
            first = time;
        else
            times.push_back(time);
    }
    figures::report(qPrintable(QStringLiteral("%1 servers: click to first frame, median of 20").arg(size)),
                    median(times), "ms", limit,
                    QStringLiteral("(worst %1, the process's very first %2 ms)")
                        .arg(*std::ranges::max_element(times), 0, 'f', 1)
                        .arg(first, 0, 'f', 1));
}

/// Types a text key by key, "\b" and "\x1b" for Backspace and Escape; each key's work on the main thread is counted
/// until its frame is drawn and nothing moves any more.
void typing() {
    Fleet fleet(1000);
    const auto view = fleet.open();
    view->requestActivate();
    waitFor(std::chrono::milliseconds(500));
    const auto* const list = view->rootObject()->findChild<QQuickItem*>(QStringLiteral("serverList"));
    const auto type = [&](const QString& keys, int shown) {
        double worst = 0;
        QStringList each;
        for (const QChar character : keys) {
            const int key = character == u'\b' ? Qt::Key_Backspace : character == u'\x1b' ? Qt::Key_Escape : Qt::Key_A;
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, character);
            const double start = threadMilliseconds();
            QCoreApplication::sendEvent(view.get(), &press);
            waitForFrame(*view);
            const double work = threadMilliseconds() - start;
            worst = std::max(worst, work);
            each += QString::number(work, 'f', 1);
            waitFor(std::chrono::milliseconds(100));
        }
        if (list->property("count").toInt() != shown)
            qFatal("%d cards are left", list->property("count").toInt());
        figures::report("1,000 servers, typing: worst key's work", worst, "ms", 16, u'(' + each.join(u' ') + u')');
    };
    type(QStringLiteral("host-999"), 1);
    type(QStringLiteral("\b\b\b\b"), 1000);
    type(QStringLiteral("nothing"), 0);
    type(QStringLiteral("\x1b"), 1000);
    type(QStringLiteral("example service-2 777"), 1);
    type(QStringLiteral("\x1b"), 1000);
}

/// Calls `step` at the rate of a display for two seconds, then waits until nothing moves any more.
void paced(const std::function<void(int)>& step) {
    for (int i = 0; i < 120; ++i) {
        step(i);
        waitFor(std::chrono::milliseconds(16));
    }
    waitFor(std::chrono::milliseconds(500));
}

/// Scrolls a list in the middle of the view by wheel.
void scroll(PopoverView& view, const char* listName, const char* figure) {
    const FrameMeter meter(view);
    paced([&](int) {
        const QPointF middle(view.width() / 2.0, view.height() / 2.0);
        QWheelEvent wheel(middle, middle, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        wheel.setTimestamp(static_cast<quint64>(figures::wallMilliseconds())); // the list computes its speed from it
        QCoreApplication::sendEvent(&view, &wheel);
    });
    figures::report(figure, meter.worstWork, "ms", 16, meter.beside());
    if (view.rootObject()->findChild<QQuickItem*>(QString::fromLatin1(listName))->property("contentY").toReal() < 1000)
        qFatal("the wheel did not scroll the list");
}

void motion() {
    Fleet fleet(1000);
    const auto view = fleet.open();
    waitFor(std::chrono::milliseconds(500));
    scroll(*view, "serverList", "1,000 servers, scrolling by wheel: worst frame's work");
    view->rootObject()->findChild<QQuickItem*>(QStringLiteral("serverList"))->setProperty("contentY", -12);
    waitFor(std::chrono::milliseconds(500));
    {
        const FrameMeter meter(*view);
        fleet.ui.setDraggedServerId(fleet.store->servers().first().id);
        paced([&](int i) {
            if (i % 6 == 0)
                fleet.store->moveServer(i / 6 % 4, (i / 6 + 1) % 4);
        });
        fleet.ui.setDraggedServerId({});
        figures::report("1,000 servers, live reorder: worst frame's work", meter.worstWork, "ms", 16, meter.beside());
    }
    {
        const FrameMeter meter(*view);
        for (int cycle = 0; cycle < 3; ++cycle) {
            fleet.store->refreshAll();
            waitFor(std::chrono::milliseconds(300));
        }
        figures::report("1,000 results arriving at once: worst frame's work", meter.worstWork, "ms", 1000.0 / 30,
                        meter.beside());
    }
}

/// The first visible item of a QML type below this one, or null.
const QQuickItem* itemOf(const QQuickItem* root, const char* type) {
    for (const QQuickItem* child : root->childItems()) {
        if (!child->isVisible())
            continue;
        if (QByteArray(child->metaObject()->className()).contains(type))
            return child;
        if (const QQuickItem* found = itemOf(child, type))
            return found;
    }
    return nullptr;
}

/// Two hours of a fleet: their memory, and the work of showing one of them.
void trends() {
    constexpr int results = static_cast<int>(ServerTrend::slotCount);
    Fleet fleet(1000);
    QList<Server> servers = fleet.store->servers();
    const auto answer = [&](int number) {
        fleet.now = {number * ServerTrend::slotSeconds};
        for (Server& server : servers) {
            server.metrics->cpuPercent = number * 7 % 60;
            server.metrics->lastChecked = fleet.now;
        }
    };
    {
        const size_t before = mallinfo2().uordblks;
        FleetTrends kept;
        for (int number = 0; number < results; ++number) {
            answer(number);
            for (const Server& server : servers)
                kept.note(server);
        }
        figures::report("1,000 servers: memory of their last two hours",
                        static_cast<double>(mallinfo2().uordblks - before) / 1e6, "MB", 4);
    }
    for (int number = 0; number < results; ++number) {
        answer(number);
        fleet.store->setServers(servers);
    }
    const auto view = fleet.open();
    waitFor(std::chrono::milliseconds(500));
    std::vector<double> works;
    for (int i = 0; i < 10; ++i) {
        const QQuickItem* const bar = itemOf(view->contentItem(), "MetricBarView");
        const QPointF outside(1, 1);
        for (const QPointF place : {outside, bar->mapToScene({20, 10})}) {
            QMouseEvent move(QEvent::MouseMove, place, place, Qt::NoButton, Qt::NoButton, {});
            const double start = threadMilliseconds();
            QCoreApplication::sendEvent(view.get(), &move);
            waitFor(std::chrono::seconds(1)); // the bubble comes after 0.6 s
            if ((itemOf(view->contentItem(), "Sparkline") != nullptr) != (place != outside))
                qFatal("the chart does not follow the pointer");
            if (place != outside)
                works.push_back(threadMilliseconds() - start);
        }
    }
    figures::report("1,000 servers: work of showing a bar's chart, median of 10", median(works), "ms", 16,
                    QStringLiteral("(worst %1 ms)").arg(*std::ranges::max_element(works), 0, 'f', 1));
}

/// The share of a processor that this process uses while nothing happens, in percent.
double cpuShare(std::chrono::milliseconds time) {
    const double cpu = figures::cpuMilliseconds();
    const double start = figures::wallMilliseconds();
    waitFor(time);
    return (figures::cpuMilliseconds() - cpu) / (figures::wallMilliseconds() - start) * 100;
}

void rest() {
    Fleet fleet(10);
    const auto view = fleet.open();
    waitFor(std::chrono::seconds(1));
    const FrameMeter meter(*view);
    const double share = cpuShare(std::chrono::seconds(4));
    figures::report("open and untouched: frames drawn in 4 s", meter.frames, "", 0);
    figures::report("open and untouched: processor", share, "%", 0.5);
}

/// The time from setting the flag to the first frame with the sheet, median of five.
void sheet(Fleet& fleet, const char* name, double limit, const std::function<void(bool)>& show) {
    const auto view = fleet.open();
    std::vector<double> times;
    for (int i = 0; i < 6; ++i) {
        waitFor(std::chrono::milliseconds(300));
        const double start = figures::wallMilliseconds();
        show(true);
        waitForFrame(*view);
        if (i > 0) // the first one compiles QML that all later ones share
            times.push_back(figures::wallMilliseconds() - start);
        waitFor(std::chrono::milliseconds(300));
        show(false);
    }
    figures::report(name, median(times), "ms", limit,
                    QStringLiteral("(worst %1 ms)").arg(*std::ranges::max_element(times), 0, 'f', 1));
    waitFor(std::chrono::milliseconds(300));
}

void sheets() {
    Fleet fleet(10);
    UIState& ui = fleet.ui;
    sheet(
        fleet, "add sheet: flag to first frame", 50, [&](bool on) { ui.setShowingAddServer(on); });
    sheet(
        fleet, "settings: flag to first frame", 50, [&](bool on) { ui.setShowingSettings(on); });
    sheet(fleet, "computer's sheet: flag to first frame", 50, [&](bool on) { ui.setShowingMacInfoSheet(on); });
    ui.setShowingSettings(true);
    sheet(fleet, "tour over the settings: flag to first frame", 50, [&](bool on) { ui.setShowingOnboarding(on); });
    ui.setShowingSettings(false);

    QDir(fleet.home.path()).mkdir(QStringLiteral(".ssh"));
    QFile config(fleet.home.filePath(QStringLiteral(".ssh/config")));
    if (!config.open(QIODevice::WriteOnly))
        qFatal("cannot write the ssh configuration");
    for (int i = 0; i < 5000; ++i)
        config.write("Host alias-" + QByteArray::number(i) + "\n  HostName 192.0.2.1\n  IdentityFile ~/.ssh/id\n");
    config.close();
    ui.setAddServerTab(1); // the list of the hosts
    sheet(fleet, "add sheet with 5,000 ssh hosts: flag to first frame", 200,
          [&](bool on) { ui.setShowingAddServer(on); });

    {
        const auto view = fleet.open();
        ui.setShowingAddServer(true);
        waitFor(std::chrono::milliseconds(500));
        scroll(*view, "hosts", "5,000 ssh hosts, scrolling by wheel: worst frame's work");
        ui.setShowingAddServer(false);
    }

    std::vector<double> snapshots;
    RealComputer hurried(hurriedTime());
    for (int i = 0; i < 20; ++i) {
        const double start = threadMilliseconds();
        const MacHardwareInfo info = hurried.computer.info();
        snapshots.push_back(threadMilliseconds() - start);
    }
    figures::report("computer's snapshot: main thread's work, median of 20", median(snapshots), "ms", 2,
                    QStringLiteral("(worst %1 ms)").arg(*std::ranges::max_element(snapshots), 0, 'f', 2));
    const auto view = fleet.open();
    ui.setShowingMacInfoSheet(true);
    waitFor(std::chrono::seconds(1));
    figures::report("computer's sheet open: processor", cpuShare(std::chrono::seconds(10)), "%", 1.5);
    ui.setShowingMacInfoSheet(false);
}

void memory() {
    Fleet fleet(10);
    const auto openings = [&fleet](int count) {
        for (int i = 0; i < count; ++i) {
            auto view = fleet.open();
            view->hide();
            view.reset();
            returnWindowMemory();
        }
        return figures::statusMegabytes("RssAnon");
    };
    returnWindowMemory();
    const double idle = figures::statusMegabytes("RssAnon");
    const double early = openings(20);
    const double late = openings(200);
    figures::report("200 openings: growth of private memory", late - early, "MB", 0.5,
                    QStringLiteral("(%1 before the first, %2 after 20, %3 after 220)")
                        .arg(idle, 0, 'f', 1)
                        .arg(early, 0, 'f', 1)
                        .arg(late, 0, 'f', 1));
}

} // namespace

int main(int argc, char* argv[]) {
    shareHeaps();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    configureQuick();
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QString what = QCoreApplication::arguments().value(1);
    if (what == u"opening") {
        opening(10, 60);
        opening(1000, 100);
    } else if (what == u"typing") {
        typing();
    } else if (what == u"motion") {
        motion();
    } else if (what == u"trends") {
        trends();
    } else if (what == u"rest") {
        rest();
    } else if (what == u"sheets") {
        sheets();
    } else if (what == u"memory") {
        memory();
    } else {
        std::fprintf(stderr, "bench_popover opening | typing | motion | trends | rest | sheets | memory\n");
        return 2;
    }
    return figures::exitStatus();
}
