#include "DisplayServer.h"

#include <QTest>

#include <tuple>

using namespace tarnwick;

class DisplayServerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void choosesWhereWindowsCanBePlaced() {
        constexpr bool x11 = true;
        constexpr bool wayland = true;
        const QByteArrayList all{"xcb", "wayland", "offscreen"};
        const std::tuple<DisplayServer::Session, QByteArrayList, QByteArray> rows[] = {
            {{{}, x11, wayland}, all, "xcb"},
            {{{}, !x11, wayland}, all, "wayland"},
            {{{}, x11, !wayland}, all, "xcb"},
            {{{}, x11, wayland}, {"wayland"}, "wayland"},
            {{"wayland", x11, wayland}, all, "wayland"},
            {{"wayland;xcb", x11, !wayland}, all, "xcb"},
            {{"offscreen:configfile=a", x11, !wayland}, all, "offscreen:configfile=a"},
            // no display: lines, and nothing to complain of
            {{{}, !x11, !wayland}, all, {}},
            {{"offscreen", !x11, !wayland}, all, {}},
            // lines, and the reason
            {{{}, !x11, wayland}, {"xcb"}, "!\"wayland\" cannot be used (Debian has it in the package qt6-wayland)"},
            {{{}, x11, !wayland}, {"wayland"}, "!\"xcb\" cannot be used"},
            {{"xcb", !x11, wayland}, all, "!\"xcb\" cannot be used"},
            {{"none", x11, wayland}, all, "!\"none\" cannot be used"},
        };
        for (const auto& [session, installed, expected] : rows) {
            const DisplayServer display = DisplayServer::choose(
                session, [&names = installed](const QByteArray& name) { return names.contains(name); });
            const bool isProblem = expected.startsWith('!');
            QCOMPARE(display.platform, isProblem ? QByteArray() : expected);
            QVERIFY2(isProblem ? display.problem.endsWith(QString::fromUtf8(expected.mid(1)))
                               : display.problem.isEmpty(),
                     qPrintable(display.problem));
        }
    }
};

QTEST_GUILESS_MAIN(DisplayServerTest)
#include "tst_displayserver.moc"
