#pragma once

#include "Coding.h"
#include "DesktopSession.h"
#include "Files.h"
#include "ScreenReader.h"
#include "UserHome.h"

#include <QDBusConnectionInterface>
#include <QFile>
#include <QTest>

#include <memory>

namespace tarnwick {

/// The servers that the program has stored; empty while there is no whole file.
[[nodiscard]] inline QList<Server> serversOf(const QString& home) {
    const auto decoded = decodeServers(readFile(home + QStringLiteral("/.local/share/Tarnwick/servers.json")));
    const auto* servers = std::get_if<QList<Server>>(&decoded);
    return servers ? *servers : QList<Server>();
}

/// Waits until a program has ended, and checks that it ended well.
inline void expectGoodEnd(QProcess& program) {
    QVERIFY(program.state() == QProcess::NotRunning || program.waitForFinished(DesktopSession::patience));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
}

/// The built program in its own home and on its own desktop, and what it has stored there.
struct DesktopRig {
    UserHome home;
    DesktopSession desktop;
    QProcess program;
    std::unique_ptr<ScreenReader> reader;

    ~DesktopRig() { DesktopSession::end(program); }

    void start() {
        QCOMPARE(home.error(), QString());
        QCOMPARE(desktop.start(home.folder()), QString());
        const QString tray = QStringLiteral("org.kde.StatusNotifierWatcher");
        QTRY_VERIFY_WITH_TIMEOUT(QDBusConnection::sessionBus().interface()->isServiceRegistered(tray),
                                 DesktopSession::patience);
        reader = std::make_unique<ScreenReader>();
        QVERIFY2(reader->isConnected(), "No accessibility bus: install at-spi2-core");
    }
    /// Starts the program, and returns when its item is in the tray and shown.
    void launch() {
        desktop.run(program, QStringLiteral(TARNWICK_EXECUTABLE));
        QTRY_COMPARE_WITH_TIMEOUT(desktop.trayItems().size(), 1, DesktopSession::patience);
        QTRY_VERIFY_WITH_TIMEOUT(!isOfOneColor(DesktopSession::itemPlace), DesktopSession::patience);
    }
    /// As expectGoodEnd(), and its item has left the tray.
    void expectEnd() {
        expectGoodEnd(program);
        QTRY_COMPARE_WITH_TIMEOUT(desktop.trayItems(), QStringList(), DesktopSession::patience);
    }

    /// Whether a place on the screen is blank.
    [[nodiscard]] bool isOfOneColor(const QRect& place) const {
        const QImage shown = desktop.picture().copy(place).convertToFormat(QImage::Format_RGB32);
        QImage even = shown;
        even.fill(shown.pixel(0, 0));
        return shown == even;
    }

    [[nodiscard]] QString path(const QString& name) const {
        return home.folder() + QStringLiteral("/.local/share/Tarnwick/") + name;
    }
    [[nodiscard]] QList<Server> servers() const { return serversOf(home.folder()); }
    [[nodiscard]] AppSettings settings() const {
        const auto decoded = decodeSettings(readFile(path(QStringLiteral("settings.json"))));
        const auto* settings = std::get_if<AppSettings>(&decoded);
        return settings ? *settings : AppSettings();
    }
    [[nodiscard]] QStringList names() const {
        QStringList result;
        for (const Server& server : servers())
            result += server.name;
        return result;
    }
};

} // namespace tarnwick

/// Waits for a condition, with a deadline that suits a desktop.
#define DESKTOP_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, DesktopSession::patience)
#define DESKTOP_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, DesktopSession::patience)
/// Clicks on the topmost element of that name.
#define DESKTOP_PRESS(rig, name) QVERIFY2((rig).desktop.press(*(rig).reader, name), qPrintable(name))
