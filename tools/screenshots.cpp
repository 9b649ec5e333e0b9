// Takes the documentation's pictures of the running program, on a composited desktop and with servers of its own:
// screenshots FOLDER
#include "Coding.h"
#include "DesktopSession.h"
#include "Files.h"
#include "PictureFleet.h"
#include "ScreenReader.h"
#include "UserHome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>

#include <array>
#include <csignal>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

namespace {

/// The desktop's appearance. It is a Plasma session, because its colours are a plain file.
struct Look {
    QStringView suffix;
    int scale;
    bool isDark;
};
constexpr std::array looks{Look{u"-2x", 2, false}, Look{u"", 1, false}, Look{u"-dark", 1, true}};

/// Around the window in a picture, for its shadow; times the scale.
constexpr int margin = 32;
constexpr QStringView ground = u"#d3d9e0";
/// Where windows are moved for their picture: on the plain ground, away from the panel.
constexpr QPoint placeOnStage{160, 160};

/// The compositing manager, with the shadow of a usual desktop.
constexpr QStringView compositorSettings = uR"(
backend = "xrender";
shadow = true;
shadow-radius = %1;
shadow-opacity = 0.35;
shadow-offset-x = -%1;
shadow-offset-y = -%2;
wintypes: { utility = { full-shadow = true; }; };
)";

/// What is done before the picture. `opens`: it presses, and scrolls to what that shows. `points`: the pointer stays.
enum class Hand { rests, presses, scrolls, types, opens, points };

/// One picture, in each look.
struct Picture {
    QStringView name;
    Scene scene;
    Hand hand = Hand::rests;
    QStringView element = {}; ///< what the mouse acts on, or what is typed
    QStringView shows = {};   ///< what is shown then
    bool isLarge = false;     ///< also at twice the scale
    QPoint at = {};           ///< in the element, from its top left corner; null: its middle
};
constexpr std::array pictures{
    Picture{.name = u"popover", .scene = Scene::usual, .isLarge = true},
    Picture{u"states", Scene::states},
    Picture{u"containers", Scene::containers, Hand::presses, u"1 / 2 Containers", u"Restart container"},
    Picture{u"fleet", Scene::fleet, Hand::presses, u"2 offline", u"staging-eu"},
    Picture{u"finding", Scene::fleet, Hand::types, u"postgres", u"Show all servers (Escape)"},
    Picture{u"empty", Scene::paused, Hand::presses, u"Remove server from Tarnwick", u"Add First Server"},
    Picture{u"mac-info", Scene::usual, Hand::presses, u"Hardware Specs & Thermals", u"Refresh Sensors", true},
    Picture{u"mac-info-end", Scene::same, Hand::scrolls, u"Live Thermals & Sensors"},
    Picture{u"add-server", Scene::usual, Hand::presses, u"Add New Server", u"Save Server"},
    Picture{u"import", Scene::same, Hand::presses, u"Import from ~/.ssh/config (5)", u"Added"},
    Picture{u"settings", Scene::usual, Hand::presses, u"Settings", u"Quit Tarnwick", true},
    Picture{u"settings-end", Scene::same, Hand::scrolls, u"Refresh Interval:"},
    Picture{.name = u"tour-1", .scene = Scene::firstLaunch, .shows = u"Welcome to Tarnwick"},
    Picture{u"tour-2", Scene::same, Hand::presses, u"Explore Features", u"Server Fleets & Docker Containers"},
    Picture{u"tour-3", Scene::same, Hand::presses, u"Next", u"Hardware & Thermals"},
    Picture{u"tour-4", Scene::same, Hand::presses, u"Next", u"Custom Panel Multi-Pinning"},
    Picture{u"tour-5", Scene::same, Hand::presses, u"Next", u"You're All Set!"},
};

/// After two hours that are played, because nobody waits for those.
constexpr std::array hourPictures{
    Picture{u"trend", Scene::playedHours, Hand::points, u"CPU", {}, true},
    Picture{u"trend-state", Scene::same, Hand::points, u"staging", {}, true, {37, 26}},
    Picture{u"trend-computer", Scene::playedHours, Hand::presses, u"Hardware Specs & Thermals", u"Refresh Sensors",
            true},
};

/// The same program in the words of macOS, on a Mac that is played; in one look.
constexpr std::array macPictures{
    Picture{.name = u"macos-popover", .scene = Scene::playedMac},
    Picture{u"macos-mac-info", Scene::same, Hand::presses, u"Hardware Specs & Thermals", u"Refresh Sensors"},
    Picture{u"macos-mac-info-end", Scene::same, Hand::scrolls, u"Live Thermals & Sensors"},
    Picture{u"macos-sensors", Scene::same, Hand::opens, u"Individual Thermal Sensors (37)"},
    Picture{.name = u"macos-tour-1", .scene = Scene::playedFirstLaunch, .shows = u"Welcome to Tarnwick"},
    Picture{u"macos-tour-2", Scene::same, Hand::presses, u"Explore Features", u"Server Fleets & Docker Containers"},
    Picture{u"macos-tour-3", Scene::same, Hand::presses, u"Next", u"Apple Silicon Hardware & Thermals"},
    Picture{u"macos-tour-4", Scene::same, Hand::presses, u"Next", u"Custom Menu Bar Multi-Pinning"},
    Picture{u"macos-tour-5", Scene::same, Hand::presses, u"Next", u"You're All Set!"},
};

constexpr QByteArrayView darkColors = R"(
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
)";

[[noreturn]] void fail(const QString& why) {
    throw std::runtime_error(why.toStdString());
}

void check(const QString& error) {
    if (!error.isEmpty())
        fail(error);
}

void waitFor(const QString& what, const std::function<bool()>& condition) {
    for (const QDeadlineTimer deadline(DesktopSession::patience); !condition();) {
        if (deadline.hasExpired())
            fail(u"No "_s + what);
        QThread::msleep(200); // each question keeps the program busy
    }
}

void write(const QString& path, QByteArrayView contents) {
    QFile file(path);
    if (!QDir().mkpath(path.section(u'/', 0, -2)) || !file.open(QIODevice::WriteOnly) ||
        file.write(contents.data(), contents.size()) != contents.size())
        fail(u"Cannot write "_s + path);
}

/// A plain ground and a compositing manager, while this exists: windows may be round there, and have shadows.
class Stage {
public:
    Stage(const QString& folder, int scale) : processFile_(folder + u"/compositor.pid"_s) {
        const QString settings = folder + u"/compositor"_s;
        write(settings, compositorSettings.toString().arg(20 * scale).arg(12 * scale).toUtf8());
        if (QProcess::execute(u"hsetroot"_s, {u"-solid"_s, ground.toString()}) != 0)
            fail(u"hsetroot does not work"_s);
        // It goes to the background once it composes.
        if (QProcess::execute(u"picom"_s, {u"--config"_s, settings, u"-b"_s, u"--write-pid-path"_s, processFile_}) != 0)
            fail(u"picom does not start"_s);
    }
    ~Stage() {
        const int process = readFile(processFile_).trimmed().toInt();
        if (process > 0 && ::kill(process, SIGTERM) == 0)
            for (const QDeadlineTimer deadline(DesktopSession::patience);
                 ::kill(process, 0) == 0 && !deadline.hasExpired();)
                QThread::msleep(50);
    }
    Q_DISABLE_COPY_MOVE(Stage)

private:
    QString processFile_;
};

/// Takes pictures of one program in one look.
class Photographer {
public:
    Photographer(const UserHome& home, const DesktopSession& desktop, QString folder, Look look,
                 QString executable = QStringLiteral(TARNWICK_EXECUTABLE))
        : home_(home)
        , desktop_(desktop)
        , folder_(std::move(folder))
        , look_(look)
        , executable_(std::move(executable))
        , stage_(home.folder(), look.scale) {
        write(home_.folder() + u"/.config/kdeglobals"_s, look.isDark ? darkColors : QByteArrayView());
    }
    ~Photographer() { end(); }
    Photographer(const Photographer&) = delete;
    Photographer& operator=(const Photographer&) = delete;

    void take(const Picture& picture, const PictureFleet& fleet) {
        if (picture.scene != Scene::same)
            start(fleet.setting(picture.scene));
        if (picture.hand == Hand::types)
            type(picture.element.toString());
        else if (picture.hand == Hand::points)
            point(picture.element.toString(), picture.at);
        else if (picture.hand != Hand::rests)
            act(picture.hand, picture.element.toString());
        if (!picture.shows.isEmpty())
            waitForText(picture.shows.toString());
        save(u"%1/%2%3.png"_s.arg(folder_, picture.name, look_.suffix));
    }

private:
    /// Restarts the program, and opens its popover from the tray.
    void start(const Setting& setting) {
        end();
        AppSettings settings;
        settings.hasCompletedOnboarding = !setting.isFirstLaunch;
        const QString data = home_.folder() + u"/.local/share/Tarnwick/"_s;
        write(data + u"settings.json"_s, encodeSettings(settings).value());
        write(data + u"servers.json"_s, encodeServers(setting.servers).value());
        waitFor(u"empty tray"_s, [this] { return desktop_.trayItems().isEmpty(); });
        desktop_.run(
            program_, executable_,
            {u"XDG_CURRENT_DESKTOP=KDE"_s, u"KDE_SESSION_VERSION=5"_s, u"QT_SCALE_FACTOR=%1"_s.arg(look_.scale)});
        waitFor(u"tray item"_s, [this] { return desktop_.trayItems().size() == 1; });
        if (!setting.isFirstLaunch)
            open();
        waitForText(setting.shows);
    }
    void end() { DesktopSession::end(program_); }

    void open() const {
        QImage item;
        waitFor(u"picture of the tray item"_s, [&] {
            const QImage now = desktop_.picture().copy(DesktopSession::itemPlace);
            return now == std::exchange(item, now) && now.convertToFormat(QImage::Format_Indexed8).colorCount() > 2;
        });
        if (!desktop_.click(DesktopSession::itemPlace.center()))
            fail(u"The pointer does not click"_s);
        waitFor(u"popover"_s, [this] { return !desktop_.windows().isEmpty(); });
    }

    static void waitForText(const QString& text) {
        const ScreenReader reader;
        waitFor(text, [&] { return !reader.places(text).isEmpty(); });
    }

    void type(const QString& text) const {
        if (!desktop_.xdotool(u"type --delay 100 "_s + text))
            fail(u"The keyboard does not obey"_s);
    }

    /// Acts on the topmost element of that name once it rests, then moves the pointer away.
    void act(Hand hand, const QString& element) const {
        const QPoint place = desktop_.restingPlace(ScreenReader(), element).center() * look_.scale;
        if (place.isNull() || !desktop_.moveTo(place))
            fail(u"No "_s + element);
        const QString buttons = hand == Hand::presses   ? u"click 1"_s
                                : hand == Hand::scrolls ? u"click --repeat 30 5"_s // the wheel, downwards
                                                        : u"click 1 sleep 1 click --repeat 2 5"_s;
        if (!desktop_.xdotool(buttons) || !desktop_.moveTo({4, DesktopSession::size.height() - 4}))
            fail(u"The pointer does not obey"_s);
    }

    /// Points at the topmost element of that name, where it is in the picture. From elsewhere, or nothing would move.
    void point(const QString& element, QPoint at) const {
        QRect place;
        waitFor(element + u" on the stage"_s, [&] {
            moveToStage(); // more than once: a window that becomes larger goes back to its own place
            QThread::msleep(500);
            const QRect now = desktop_.restingPlace(ScreenReader(), element);
            return std::exchange(place, now) == now && now.isValid();
        });
        const QPoint target = at.isNull() ? place.center() : place.topLeft() + at;
        if (!desktop_.moveTo(QPoint(8, 8)) || !desktop_.moveTo(target * look_.scale))
            fail(u"The pointer does not obey"_s);
        QThread::msleep(1000); // longer than a help bubble's delay
    }

    void moveToStage() const {
        const QString window = QString::fromLatin1(desktop_.windows().value(0, "none"));
        if (!desktop_.xdotool(u"windowmove %1 %2 %3"_s.arg(window).arg(placeOnStage.x()).arg(placeOnStage.y())))
            fail(u"The window does not move"_s);
    }

    /// Saves a picture of the program's window and its shadow once nothing moves in it. While a probe runs it does not;
    /// then after 6 s.
    void save(const QString& path) const {
        const QByteArray window = desktop_.windows().value(0, "none");
        const int around = margin * look_.scale;
        QImage image;
        for (const QDeadlineTimer deadline(6s); !deadline.hasExpired();) {
            moveToStage();        // each time: a window that becomes larger goes back to its own place
            QThread::msleep(500); // longer than any animation's pause
            const QImage screen = desktop_.picture();
            const QRect place(placeOnStage, desktop_.picture(window).size());
            const QImage now = screen.copy(place.adjusted(-around, -around, around, around));
            const bool isOnStage = screen.pixelColor(place.center()) != QColor(ground);
            if (std::exchange(image, now) == now && isOnStage)
                break;
        }
        // Qt does not let us choose the filter that compresses such pictures best.
        if (image.isNull() || !image.convertToFormat(QImage::Format_RGB32).save(path) ||
            QProcess::execute(u"mogrify"_s,
                              {u"-strip"_s, u"-define"_s, u"png:compression-filter=1"_s, u"-define"_s,
                               u"png:compression-strategy=0"_s, u"-define"_s, u"png:compression-level=9"_s, path}) != 0)
            fail(u"Cannot take "_s + path);
        std::puts(qPrintable(path));
    }

    const UserHome& home_;
    const DesktopSession& desktop_;
    QString folder_;
    Look look_;
    QString executable_;
    Stage stage_;
    QProcess program_;
};

void takeAll(const QString& folder) {
    const UserHome home;
    check(home.error());
    DesktopSession desktop;
    check(desktop.start(home.folder()));
    PictureFleet fleet;
    fleet.start(home);
    for (const Look& look : looks) {
        Photographer photographer(home, desktop, folder, look);
        for (const Picture& picture : pictures)
            if (look.scale == 1 || picture.isLarge)
                photographer.take(picture, fleet);
    }
    for (const Look& look : looks) {
        Photographer photographer(home, desktop, folder, look, QStringLiteral(PLAYED_HOURS));
        for (const Picture& picture : hourPictures)
            photographer.take(picture, fleet);
    }
    Photographer photographer(home, desktop, folder, looks[1], QStringLiteral(PLAYED_MAC));
    for (const Picture& picture : macPictures)
        photographer.take(picture, fleet);
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    try {
        if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1])))
            fail(u"usage: screenshots FOLDER"_s);
        takeAll(QString::fromLocal8Bit(argv[1]));
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
