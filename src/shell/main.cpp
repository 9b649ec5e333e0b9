#include "AppDelegate.h"
#include "DesktopPopover.h"
#include "DesktopStatusItem.h"
#include "DisplayServer.h"
#include "FreeMemory.h"
#include "MacHardwareCollector.h"
#include "ProcessRunner.h"
#include "SingleInstance.h"
#include "TerminationSignals.h"
#include "ViewFactory.h"
#include "linux/TerminalStatusItem.h"

#include <QDir>
#include <QGuiApplication>
#include <QPluginLoader>

#include <chrono>
#include <cstdio>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// A stream that is closed at start would be the number of the next file opened, and get what is written to the stream.
void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", O_RDWR)); // takes the lowest free number: the stream's
}

std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, bool hasDisplay) {
    QCoreApplication::setApplicationName(u"tarnwick"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
    if (!hasDisplay)
        return std::make_unique<QCoreApplication>(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(u"tarnwick"_s);
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// The views' module, from beside the executable or from where it is installed; null when it cannot be loaded.
ViewFactory* views() {
    static ViewFactory* const factory = [] {
        const QDir here(QCoreApplication::applicationDirPath());
        for (const QString& path : {u"tarnwick-views.so"_s, u"../lib/tarnwick/tarnwick-views.so"_s}) {
            if (!here.exists(path))
                continue;
            QPluginLoader loader(here.filePath(path));
            if (auto* loaded = qobject_cast<ViewFactory*>(loader.instance()))
                return loaded;
            std::fprintf(stderr, "tarnwick: %s\n", qPrintable(loader.errorString()));
        }
        return static_cast<ViewFactory*>(nullptr);
    }();
    return factory;
}

void addReadings(AppSurroundings& surroundings) {
    surroundings.store = StoreCollaborators::real();
    surroundings.thermals = [] {
        return MacHardwareCollector::queryQuickThermals();
    };
    surroundings.loads = {[] { return MacHardwareCollector::queryCpuUsage(); },
                          [] { return MacHardwareCollector::queryGpuUsage(); },
                          [] {
                              return MacHardwareCollector::queryRamUsage().percent;
                          }};
    surroundings.clock = [] {
        return std::chrono::steady_clock::now().time_since_epoch();
    };
}

void addDesktop(AppSurroundings& surroundings) {
    surroundings.statusItem = std::make_unique<DesktopStatusItem>();
    surroundings.popover = std::make_unique<DesktopPopover>();
    surroundings.makePopoverContent = [](ServerStore& store, UIState& ui, bool rounded, std::function<void()> close) {
        ViewFactory* const factory = views();
        return factory ? factory->makePopover(store, ui, rounded, std::move(close)) : nullptr;
    };
    surroundings.makeOnboardingWindow = [](ServerStore& store, UIState& ui, std::function<void()> onComplete) {
        ViewFactory* const factory = views();
        return factory ? factory->makeOnboardingWindow(store, ui, std::move(onComplete)) : nullptr;
    };
}

void addTerminal(AppSurroundings& surroundings) {
    auto item = std::make_unique<TerminalStatusItem>();
    QObject::connect(item.get(), &TerminalStatusItem::outputClosed, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    surroundings.statusItem = std::move(item);
}

} // namespace

int main(int argc, char* argv[]) {
    shareHeaps();
    occupyStandardStreams();
    ProcessRunner::raiseOpenFileLimit();
    const bool hasDisplay = DisplayServer::isReachable();
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv, hasDisplay);

    SingleInstance instance(ServerStore::standardFolder());
    if (!instance.isFirst()) {
        instance.requestActivation();
        std::fputs("tarnwick is running already.\n", stderr);
        return 0;
    }

    AppSurroundings surroundings;
    addReadings(surroundings);
    if (hasDisplay)
        addDesktop(surroundings);
    else
        addTerminal(surroundings);
    AppDelegate delegate(std::move(surroundings));

    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::terminationRequested, app.get(), &QCoreApplication::quit);
    QObject::connect(&instance, &SingleInstance::activationRequested, &delegate, &AppDelegate::showPopover);
    QObject::connect(app.get(), &QCoreApplication::aboutToQuit, &delegate, &AppDelegate::applicationWillTerminate);

    delegate.applicationDidFinishLaunching();
    return QCoreApplication::exec();
}
