#include "Companion.h"
#include "DesktopPopover.h"
#include "PopoverGeometry.h"

#include <QGuiApplication>
#include <QPointer>
#include <QProcess>
#include <QRasterWindow>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

/// Content that closes the popover from inside its own event handler, as a button in it would.
class ClosingWindow : public QRasterWindow {
public:
    std::function<void()> onPress;

private:
    void mousePressEvent(QMouseEvent* /*event*/) override {
        if (onPress)
            onPress();
    }
};

constexpr QPoint panel{640, 14};

std::unique_ptr<ClosingWindow> makeContent() {
    auto window = std::make_unique<ClosingWindow>();
    window->resize(400, 560);
    return window;
}

/// Shows content in the popover, and waits until it has the focus.
ClosingWindow* showContent(DesktopPopover& popover) {
    auto content = makeContent();
    ClosingWindow* const window = content.get();
    popover.show(std::move(content), panel);
    return QTest::qWaitForWindowActive(window) ? window : nullptr;
}

/// One real mouse or keyboard action on the X server.
void xdotool(const QStringList& arguments) {
    QCOMPARE(QProcess::execute(u"xdotool"_s, arguments), 0);
}

} // namespace

/// Runs on an X server of its own, without a window manager: see main().
class tst_Popover : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QVERIFY2(!QStandardPaths::findExecutable(u"xdotool"_s).isEmpty(), "xdotool is missing: install xdotool");
    }

    void geometry_data() {
        QTest::addColumn<QPoint>("anchor");
        QTest::addColumn<QRect>("available");
        QTest::addColumn<QRect>("expected");
        const QRect topPanel(0, 28, 1280, 772);
        const auto row = [](const char* name, QPoint anchor, const QRect& available, const QRect& expected) {
            QTest::newRow(name) << anchor << available << expected;
        };
        row("panel above", {640, 14}, topPanel, {440, 34, 400, 560});
        row("right corner", {1270, 14}, topPanel, {874, 34, 400, 560});
        row("left corner", {3, 14}, topPanel, {6, 34, 400, 560});
        row("panel below", {1270, 790}, {0, 0, 1280, 772}, {874, 206, 400, 560});
        row("panel at the left", {14, 700}, {28, 0, 1252, 800}, {34, 126, 400, 560});
        row("panel of unknown height", {1000, 14}, {0, 0, 1280, 800}, {800, 28, 400, 560});
        row("second screen", {1900, 14}, {1280, 28, 1920, 1052}, {1700, 34, 400, 560});
        row("screen left of the first", {-10, 14}, {-1280, 28, 1280, 772}, {-406, 34, 400, 560});
        row("low screen", {700, 10}, {0, 20, 1024, 460}, {500, 26, 400, 448});
        row("narrow screen", {100, 10}, {0, 20, 320, 700}, {6, 26, 308, 560});
        row("anchor off the screen", {9999, -50}, topPanel, {874, 34, 400, 560});
    }
    void geometry() {
        QFETCH(const QPoint, anchor);
        QFETCH(const QRect, available);
        QTEST(popoverGeometry(anchor, {400, 560}, available), "expected");
    }

    void hangsFromItsAnchor() {
        DesktopPopover popover;
        QWindow* const window = showContent(popover);
        QVERIFY(window);
        QVERIFY(popover.isShown());
        QCOMPARE(window->geometry(), QRect(440, 28, 400, 560));
        QVERIFY(window->flags().testFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint));
        popover.show(makeContent(), {}); // from a desktop that reports no position
        QCOMPARE(QGuiApplication::topLevelWindows().constLast()->geometry().right(), 1280 - 1 - 6);
    }

    void pressOutsideIsHeardAndPressInsideIsTheContents() {
        DesktopPopover popover;
        QSignalSpy outside(&popover, &Popover::pressedOutside);
        int inside = 0;
        ClosingWindow* const window = showContent(popover);
        QVERIFY(window);
        window->onPress = [&inside] {
            ++inside;
        };

        xdotool({u"mousemove"_s, u"600"_s, u"300"_s, u"click"_s, u"1"_s});
        QTRY_COMPARE(inside, 1);
        xdotool({u"mousemove"_s, u"100"_s, u"300"_s, u"click"_s, u"5"_s, u"click"_s, u"1"_s}); // scrolls first
        QTRY_COMPARE(outside.size(), 1);
        xdotool({u"click"_s, u"3"_s});
        QTRY_COMPARE(outside.size(), 2);

        popover.close();
        xdotool({u"click"_s, u"1"_s});
        popover.show(makeContent(), panel);
        xdotool({u"click"_s, u"1"_s});
        QTRY_COMPARE(outside.size(), 3); // the click while it was closed is not reported
        QCOMPARE(inside, 1);
    }

    void pressOnAnotherWindowOfOursIsNotOutside() {
        ClosingWindow other;
        int pressed = 0;
        other.onPress = [&pressed] {
            ++pressed;
        };
        other.setGeometry(0, 600, 200, 100);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        DesktopPopover popover;
        QSignalSpy outside(&popover, &Popover::pressedOutside);
        popover.show(makeContent(), panel);
        xdotool({u"mousemove"_s, u"100"_s, u"650"_s, u"click"_s, u"1"_s});
        QTRY_COMPARE(pressed, 1);
        QCOMPARE(outside.size(), 0);
    }

    void focusLossIsToldButNotToAChild() {
        DesktopPopover popover;
        QSignalSpy lost(&popover, &Popover::lostFocus);
        QWindow* const window = showContent(popover);
        QVERIFY(window);

        QRasterWindow dialog;
        dialog.setTransientParent(window);
        dialog.show();
        dialog.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(lost.size(), 0);

        QRasterWindow stranger;
        stranger.show();
        stranger.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&stranger));
        QCOMPARE(lost.size(), 1);
    }

    void closesFromInsideItsOwnHandler() {
        DesktopPopover popover;
        const QPointer<ClosingWindow> window = showContent(popover);
        QVERIFY(window);
        window->onPress = [&] {
            popover.close();
            QVERIFY(!popover.isShown());
            QVERIFY(window); // its own code still runs
        };
        QTest::mousePress(window, Qt::LeftButton);
        QTRY_VERIFY(!window);
        popover.close();
    }

    void closedByTheWindowManagerIsClosed() {
        DesktopPopover popover;
        const QPointer<QWindow> window = showContent(popover);
        QVERIFY(window);
        window->close();
        QVERIFY(!popover.isShown());
        QTRY_VERIFY(!window);
    }

    void takesItsContentAlong() {
        QPointer<QWindow> first;
        QPointer<QWindow> second;
        {
            DesktopPopover popover;
            first = showContent(popover);
            second = showContent(popover); // the first one is destroyed, but not at once
            QVERIFY(popover.isShown());
            QTRY_VERIFY(!first);
            QVERIFY(popover.isShown() && second);
            auto third = makeContent();
            first = third.get();
            popover.show(std::move(third), panel);
        }
        QVERIFY(!first && !second);
    }

    void cornersAreSquareWithoutACompositor() {
        DesktopPopover popover;
        QVERIFY(!popover.isTranslucent());
        QWindow* const window = showContent(popover);
        QVERIFY(window);
        QVERIFY(window->requestedFormat().alphaBufferSize() <= 0);
    }
};

/// Only a real display server reports presses in other applications, so the test starts one.
int main(int argc, char* argv[]) {
    Companion screen;
    qputenv("DISPLAY", screen.startScreen());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // Qt would have one started for this display
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    tst_Popover test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_popover.moc"
