#include "AppDelegate.h"
#include "DisplayServer.h"
#include "FreeMemory.h"
#include "ProcessRunner.h"
#include "SingleInstance.h"
#include "SystemParts.h"
#include "TerminationSignals.h"
#include "ThisComputer.h"
#include "ViewFactory.h"

#include <QDir>
#include <QGuiApplication>
#include <QPluginLoader>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

using namespace tarnwick;
using namespace Qt::StringLiterals;

namespace {

/// If a standard stream is closed when the program starts, the next file that is opened gets its number, and whatever
/// is printed to the stream would end up in that file. So /dev/null takes the place of closed streams.
void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1)
            static_cast<void>(::open("/dev/null", O_RDWR)); // gets the lowest free number, which is the stream's
}

/// `platform`: as in DisplayServer.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, const QByteArray& platform) {
    QCoreApplication::setApplicationName(u"tarnwick"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(TARNWICK_VERSION));
    if (platform.isEmpty())
        return std::make_unique<QCoreApplication>(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(u"tarnwick"_s);
    // The choice is this program's own: what it starts, such as a terminal or a browser, makes another.
    constexpr auto variable = "QT_QPA_PLATFORM";
    const bool isRequested = qEnvironmentVariableIsSet(variable);
    const QByteArray requested = qgetenv(variable);
    qputenv(variable, platform);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    isRequested ? qputenv(variable, requested) : qunsetenv(variable);
    return application;
}

/// The views' module, from beside the executable, from where it is installed or from the program's bundle; null when it
/// cannot be loaded, which one line on standard error says.
ViewFactory* views() {
    const QDir here(QCoreApplication::applicationDirPath());
    QString problem = u"tarnwick-views.so is missing"_s;
    for (const QString& path :
         {u"tarnwick-views.so"_s, u"../lib/tarnwick/tarnwick-views.so"_s, u"../PlugIns/tarnwick-views.so"_s}) {
        if (!here.exists(path))
            continue;
        QPluginLoader loader(here.filePath(path));
        if (auto* loaded = qobject_cast<ViewFactory*>(loader.instance()))
            return loaded;
        problem = loader.isLoaded() ? path + u" is of another version"_s : loader.errorString().simplified();
    }
    std::fprintf(stderr, "tarnwick: no window can be opened: %s\n", qPrintable(problem));
    return nullptr;
}

/// The delegate while the event loop runs.
AppDelegate* running = nullptr;

} // namespace

int main(int argc, char* argv[]) {
    shareHeaps();
    occupyStandardStreams();
    ProcessRunner::raiseOpenFileLimit();
    const DisplayServer display = DisplayServer::find();
    if (!display.problem.isEmpty())
        std::fprintf(stderr, "tarnwick: %s\n", qPrintable(display.problem));
    const std::unique_ptr<QCoreApplication> app = makeApplication(argc, argv, display.platform);

    SingleInstance instance(ServerStore::standardFolder(), !display.platform.isEmpty());
    if (instance.isSurplus()) {
        instance.requestActivation();
        std::fputs("tarnwick is running already.\n", stderr);
        return 0;
    }

    SystemParts parts = makeSystemParts(!display.platform.isEmpty());
    QObject::connect(parts.statusItem.get(), &StatusItem::outputClosed, app.get(), [](const QString& problem) {
        if (!problem.isEmpty())
            std::fprintf(stderr, "tarnwick: cannot write to the standard output: %s\n", qPrintable(problem));
        QCoreApplication::exit(problem.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    ThisComputer computer(*parts.kernel, *parts.sensors, systemWords());
    AppDelegate delegate({
        .store = StoreCollaborators::real(computer, instance.role()),
        .computer = computer,
        .clock = ThisComputer::steadyTime,
        .statusItem = std::move(parts.statusItem),
        .popover = std::move(parts.popover),
        .views = views,
    });

    auto* const signalsToQt = new TerminationSignals(app.get()); // it limits the end until all else is destroyed
    QObject::connect(signalsToQt, &TerminationSignals::terminationRequested, app.get(), &QCoreApplication::quit);
    QObject::connect(&instance, &SingleInstance::activationRequested, &delegate, &AppDelegate::showPopover);
    QObject::connect(&instance, &SingleInstance::roleChanged, &delegate, [&] { delegate.setRole(instance.role()); });
    QObject::connect(app.get(), &QCoreApplication::aboutToQuit, &delegate, &AppDelegate::applicationWillTerminate);

    delegate.applicationDidFinishLaunching();
    // Qt calls exit() when it loses the display.
    running = &delegate;
    std::atexit([] {
        if (running)
            running->applicationWillTerminate();
    });
    const int status = QCoreApplication::exec();
    running = nullptr;
    // All is saved by now. A reading may hang that the objects above wait for when they are destroyed.
    TerminationSignals::limitEnd(status);
    ProcessRunner::endAll();
    return status;
}
