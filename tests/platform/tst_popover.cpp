#include "Companion.h"
#include "DesktopPopover.h"
#include "PopoverGeometry.h"
#include "Rows.h"
#include "SwayWorkspaces.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QRasterWindow>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <thread>
#include <tuple>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Content that counts its presses. One of them may close the popover, as a button in it would.
class PressedWindow : public QRasterWindow {
public:
    std::function<void()> onPress = [] {
    };
    int presses = 0;
    QString keys;

private:
    void mousePressEvent(QMouseEvent* /*event*/) override {
        ++presses;
        onPress();
    }
    void keyPressEvent(QKeyEvent* event) override { keys += event->text(); }
};

/// The shell of Plasma, with a panel that floats at the top.
class PlasmaShell : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.PlasmaShell.StrutManager")

public Q_SLOTS:
    QRect availableScreenRect(const QString& screenName) {
        return screenName == QGuiApplication::primaryScreen()->name() ? free : QRect();
    }

public:
    QRect free{0, 56, 1280, 744};
};

/// Real mouse or keyboard actions on the X server.
void xdotool(const QString& words) {
    QCOMPARE(QProcess::execute(needed(u"xdotool"_s), words.split(u' ')), 0);
}

} // namespace

/// Runs on an X server of its own, without a window manager: see main().
class tst_Popover : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Each test starts with a popover that has the focus.
    void init() {
        popover_ = std::make_unique<DesktopPopover>();
        window_ = show();
        QVERIFY(QTest::qWaitForWindowActive(window_));
    }

    void geometry_data() { addRows("popover-geometry.json", {"anchor", "available", "expected"}); }
    void geometry() {
        QFETCH(const QString, anchor);
        QFETCH(const QString, available);
        const auto rect = [](const QString& numbers) {
            const QStringList n = numbers.split(u' ');
            return QRect(n[0].toInt(), n[1].toInt(), n.value(2).toInt(), n.value(3).toInt());
        };
        const QRect area = rect(available);
        const QPoint point =
            anchor == u"-" ? endOfPanel({0, 0, 1280, 800}, area) : rect(anchor).topLeft(); // the desktop tells none
        const QRect found = popoverGeometry(point, {400, 560}, area);
        QTEST(u"%1 %2 %3 %4"_s.arg(found.x()).arg(found.y()).arg(found.width()).arg(found.height()), "expected");
    }

    void hangsFromItsAnchor() {
        QVERIFY(popover_->isShown());
        QCOMPARE(window_->geometry(), QRect(440, 28, 400, 560));
        QCOMPARE(window_->maximumSize(), QSize(1280 - 12, 800 - 12));
        QVERIFY(window_->flags().testFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint));
        // Its corners are square, because there is no compositor.
        QVERIFY(!popover_->isTranslucent() && window_->requestedFormat().alphaBufferSize() <= 0);
        // A desktop that reports no position.
        QCOMPARE(show({})->geometry().right(), 1280 - 1 - 6);
    }

    void pressOutsideIsHeardAndPressInsideIsTheContents() {
        const QSignalSpy outside(popover_.get(), &Popover::pressedOutside);
        xdotool(u"mousemove 600 300 click 1"_s);
        QTRY_COMPARE(window_->presses, 1);
        xdotool(u"mousemove 100 300 click 5 click 1"_s); // scrolls first
        QTRY_COMPARE(outside.size(), 1);
        xdotool(u"click 3"_s);
        QTRY_COMPARE(outside.size(), 2);
        QCOMPARE(window_->presses, 1);

        popover_->close();
        xdotool(u"click 1"_s);
        show();
        xdotool(u"click 1"_s);
        QTRY_COMPARE(outside.size(), 3); // the click while it was closed is not reported
    }

    void pressOnAnotherWindowOfOursIsNotOutside() {
        PressedWindow other;
        other.setGeometry(0, 600, 200, 100);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        const QSignalSpy outside(popover_.get(), &Popover::pressedOutside);
        xdotool(u"mousemove 100 650 click 1"_s);
        QTRY_COMPARE(other.presses, 1);
        QCOMPARE(outside.size(), 0);
    }

    void focusLossIsToldButNotToAChild() {
        const QSignalSpy lost(popover_.get(), &Popover::lostFocus);
        QRasterWindow dialog;
        dialog.setTransientParent(window_);
        QRasterWindow stranger;
        for (const auto& [window, losses] : {std::pair{&dialog, 0}, {&stranger, 1}}) {
            window->show();
            window->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(window));
            QCOMPARE(lost.size(), losses);
        }
        show();
        Q_EMIT qGuiApp->focusWindowChanged(nullptr); // on the way from another window to this one
        QCOMPARE(lost.size(), 1);
    }

    void closesFromInsideItsOwnHandler() {
        window_->onPress = [this] {
            popover_->close();
            QVERIFY(!popover_->isShown());
            QVERIFY(window_); // its own code still runs
        };
        QTest::mousePress(window_, Qt::LeftButton);
        QTRY_VERIFY(!window_);
        popover_->close();
    }

    void closedByTheWindowManagerIsClosed() {
        window_->close();
        QVERIFY(!popover_->isShown());
        QTRY_VERIFY(!window_);
    }

    /// Some window managers let no window choose its place, and X servers inside a Wayland session do not hear of all
    /// presses.
    void isPlacedAndClosedUnderEachWindowManager() {
        QRasterWindow check;
        const auto row = [&](const QString& name, const QByteArray& wayland, const QRect& place = {440, 28, 400, 560},
                             int pressedY = 300) {
            check.setTitle(name);
            check.create();
            const QString id = QString::number(check.winId());
            qputenv("WAYLAND_DISPLAY", wayland);
            QCOMPARE(QProcess::execute(needed(u"xprop"_s), {u"-root"_s, u"-f"_s, u"_NET_SUPPORTING_WM_CHECK"_s,
                                                            u"32c"_s, u"-set"_s, u"_NET_SUPPORTING_WM_CHECK"_s, id}),
                     0);
            window_ = show();
            QVERIFY(QTest::qWaitForWindowActive(window_));
            QCOMPARE(window_->geometry(), place);
            const QSignalSpy outside(popover_.get(), &Popover::pressedOutside);
            xdotool(u"key a mousemove 100 %1 click 1"_s.arg(pressedY));
            QTRY_COMPARE(outside.size(), 1);
            QTRY_COMPARE(window_->keys, u"a"_s);
        };
        const auto windowsOnScreen = [] {
            return std::ranges::count_if(QGuiApplication::topLevelWindows(), &QWindow::isVisible);
        };
        row(u"wlroots wm"_s, "wayland-1");
        QVERIFY(window_->flags().testFlag(Qt::X11BypassWindowManagerHint));
        QCOMPARE(windowsOnScreen(), 2);
        row(u"GNOME Shell"_s, "wayland-1");
        QVERIFY(!window_->flags().testFlag(Qt::X11BypassWindowManagerHint));
        QCOMPARE(windowsOnScreen(), 2);
        row(u"GNOME Shell"_s, {}); // on X11 every press is heard of
        QCOMPARE(windowsOnScreen(), 1);

        QThread thread; // this one waits for its answer
        PlasmaShell shell;
        shell.moveToThread(&thread);
        thread.start();
        const auto ending = qScopeGuard([&] {
            thread.quit();
            thread.wait();
        });
        QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"shell"_s);
        QVERIFY(bus.registerObject(u"/StrutManager"_s, &shell, QDBusConnection::ExportAllSlots) &&
                bus.registerService(u"org.kde.plasmashell"_s));
        row(u"KWin"_s, {}, {440, 62, 400, 560});
        shell.free = {}; // it does not know the screen yet
        row(u"KWin"_s, {});

        // The panel takes no focus, so that it is covered.
        const auto setWorkArea = [](const QString& numbers) {
            const QString property = u"_GTK_WORKAREAS_D0"_s;
            QCOMPARE(QProcess::execute(needed(u"xprop"_s),
                                       {u"-root"_s, u"-f"_s, property, u"32c"_s, u"-set"_s, property, numbers}),
                     0);
        };
        setWorkArea(u"0,28,1280,772"_s);
        row(u"GNOME Shell"_s, "wayland-1", {440, 34, 400, 560}, 14);
        QVERIFY(std::ranges::any_of(QGuiApplication::topLevelWindows(), [](const QWindow* window) {
            return window->isVisible() && window->geometry() == QRect(0, 0, 1280, 28) &&
                   window->flags().testFlag(Qt::X11BypassWindowManagerHint);
        }));
        setWorkArea(u"0,0,1280,800"_s);
    }

    /// A stand-in for sway answers one question.
    void asksSwayForItsScreens() {
        const QTemporaryDir folder;
        sockaddr_un address{AF_UNIX, {}};
        const QByteArray path = folder.filePath(u"sway"_s).toUtf8();
        std::ranges::copy(path, address.sun_path);
        const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        QCOMPARE(::listen(listener, 1), 0);
        QByteArray answer = R"([{"visible":false,"rect":{"x":0,"y":28,"width":1,"height":1},"focused":false},
            {"visible":true,"rect":{"x":0,"y":0,"width":1280,"height":772},"focused":false},
            {"visible":true,"rect":{"x":1280,"y":28,"width":1920,"height":1052},"focused":true}])";
        std::array<char, 14> question{};
        std::jthread sway([&] {
            const int connection = ::accept(listener, nullptr, nullptr);
            ::recv(connection, question.data(), question.size(), MSG_WAITALL);
            const std::array<quint32, 2> lengthAndType{static_cast<quint32>(answer.size()), 1};
            answer.prepend("i3-ipc" + QByteArray(reinterpret_cast<const char*>(lengthAndType.data()), 8));
            ::send(connection, answer.data(), static_cast<size_t>(answer.size()), 0);
            ::close(connection);
            ::close(listener);
        });
        qputenv("SWAYSOCK", path);
        QCOMPARE(swayWorkspaces(), (QList{WorkArea{{0, 0, 1280, 772}}, WorkArea{{1280, 28, 1920, 1052}, true}}));
        sway.join();
        QCOMPARE(QByteArray(question.data(), question.size()), QByteArray("i3-ipc\0\0\0\0\1\0\0\0", 14));
        QCOMPARE(swayWorkspaces(), QList<WorkArea>()); // nobody answers
        qunsetenv("SWAYSOCK");
    }

    void takesItsContentAlong() {
        const QPointer<QWindow> second = show(); // the first one is destroyed, but not at once
        QVERIFY(window_ && popover_->isShown());
        QTRY_VERIFY(!window_);
        QVERIFY(popover_->isShown() && second);
        const QPointer<QWindow> third = show();
        popover_.reset();
        QVERIFY(!second && !third);
    }

private:
    PressedWindow* show(QPoint anchor = {640, 14}) {
        auto content = std::make_unique<PressedWindow>();
        content->resize(400, 560);
        PressedWindow* const window = content.get();
        popover_->show(std::move(content), anchor);
        return window;
    }

    std::unique_ptr<DesktopPopover> popover_;
    QPointer<PressedWindow> window_;
};

/// Only a real display server reports presses in other applications, so the test starts one.
int main(int argc, char* argv[]) {
    Companion screen;
    qputenv("DISPLAY", screen.startScreen());
    qputenv("QT_QPA_PLATFORM", "xcb");
    Companion bus; // without one Qt 6.8 leaks
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.startBus());
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    tst_Popover test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_popover.moc"
