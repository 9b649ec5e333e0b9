#pragma once

#include <QByteArrayList>
#include <QImage>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

namespace tarnwick {

class ScreenReader;

/// A desktop for one test: a real X server, a session bus, and a panel with a tray. While it runs, the environment of
/// this process points to them. An operation fails when it takes longer than `patience`.
class DesktopSession {
public:
    static constexpr int patience = 30'000; ///< milliseconds; long, because the computer may be busy
    static constexpr QSize size{1280, 1800};
    /// Where the panel shows its only item.
    static constexpr QRect itemPlace{1252, 0, 28, 28};

    ~DesktopSession();

    /// `home` is the home folder of the session's user. Empty on success, else what is missing.
    [[nodiscard]] QString start(const QString& home);

    /// Starts a build of the program in the session, with accessibility on for `ScreenReader`. `variables`, each
    /// NAME=VALUE, are added to its environment.
    void run(QProcess& program, const QString& executable, const QStringList& variables = {}) const;
    /// The items registered with the tray.
    [[nodiscard]] QStringList trayItems() const;
    /// The text of the first one.
    [[nodiscard]] QString label() const;
    /// The visible windows of the program.
    [[nodiscard]] QByteArrayList windows() const;
    /// A picture of a window, or of the whole screen: "root". Null when there is no such window.
    [[nodiscard]] QImage picture(const QByteArray& window = "root") const;

    /// Mouse actions through the X server; false when they failed.
    [[nodiscard]] bool moveTo(QPoint point) const {
        return xdotool(QStringLiteral("mousemove %1 %2").arg(point.x()).arg(point.y()));
    }
    [[nodiscard]] bool click(QPoint point) const { return moveTo(point) && xdotool(QStringLiteral("click 1")); }
    /// Where the topmost element of that name is once it has stopped moving; invalid when that does not happen.
    [[nodiscard]] QRect restingPlace(const ScreenReader& reader, const QString& name) const;
    /// Clicks on that element there.
    [[nodiscard]] bool press(const ScreenReader& reader, const QString& name) const;
    /// Runs xdotool with these words as arguments.
    [[nodiscard]] bool xdotool(const QString& words) const;

    /// Asks a process to end, and kills it if it does not.
    static void end(QProcess& process);

private:
    QProcess screen_;
    QProcess bus_;
    QProcess panel_;
};

} // namespace tarnwick
