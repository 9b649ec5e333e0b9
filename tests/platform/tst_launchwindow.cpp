#include "LaunchWindow.h"

#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace tarnwick;

class LaunchWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void room_data() {
        QTest::addColumn<QString>("events");
        QTest::addColumn<QString>("launched");
        // L: launches while there is room, and notes how many. E: all children that were launched end. A look at the
        // processors finds them idle (I), busy (B), just idle enough (J), turned back (T), or nothing (N). Digits:
        // seconds pass.
        QTest::newRow("no more than the window") << u"LL"_s << u"64 0"_s;
        QTest::newRow("wider with each that ends soon") << u"LEL"_s << u"64 128"_s;
        QTest::newRow("not without bounds") << u"LELELELEL"_s << u"64 128 256 512 512"_s;
        QTest::newRow("who hangs gives its place up") << u"L4L1L"_s << u"64 0 64"_s;
        QTest::newRow("not while no processor is idle") << u"LIB9L9LIL"_s << u"64 0 0 48"_s;
        QTest::newRow("who ends late makes nothing wider") << u"L6EL"_s << u"64 64"_s;
        QTest::newRow("narrower while no processor is idle") << u"IBLBEL"_s << u"48 36"_s;
        QTest::newRow("not without end") << u"IBBBBBBBBBBL"_s << u"16"_s;
        QTest::newRow("again wider") << u"IBLEJLEL"_s << u"48 48 96"_s;
        QTest::newRow("the first look has nothing to compare") << u"BNBL"_s << u"64"_s;
        QTest::newRow("counters that run back say nothing") << u"ITLEL"_s << u"64 128"_s;
    }
    static void room() {
        QFETCH(const QString, events);
        LaunchWindow window;
        LaunchWindow::Time now = 1000s;
        CpuTicks ticks{.user = 0xFFFFFF00, .system = 7, .idle = 0xFFFFFFFF, .nice = 1}; // two wrap around soon
        std::vector<LaunchWindow::Time> running;
        QStringList launched;
        const auto pass = [&ticks](std::uint32_t busy, std::int32_t idle) {
            ticks.user += busy;
            ticks.idle += static_cast<std::uint32_t>(idle);
            return ticks;
        };
        for (const QChar event : events) {
            int count = 0;
            switch (event.unicode()) {
            case u'L':
                for (; window.hasRoom(now); ++count) {
                    window.launch(now);
                    running.push_back(now);
                }
                launched += QString::number(count);
                QVERIFY(window.untilRelease(now) > 0s && window.untilRelease(now) <= 5s);
                break;
            case u'E':
                for (const LaunchWindow::Time time : running)
                    window.end(time, now);
                running.clear();
                break;
            case u'I':
                window.look(pass(20, 20));
                break;
            case u'B':
                window.look(pass(99, 1));
                break;
            case u'J':
                window.look(pass(38, 2));
                break;
            case u'T':
                window.look(pass(40, -2));
                break;
            case u'N':
                window.look({});
                break;
            default:
                now += std::chrono::seconds(event.digitValue());
            }
        }
        QTEST(launched.join(u' '), "launched");
    }
};

QTEST_APPLESS_MAIN(LaunchWindowTest)
#include "tst_launchwindow.moc"
