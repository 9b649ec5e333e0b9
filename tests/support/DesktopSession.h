#pragma once

#include <QByteArrayList>
#include <QImage>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

namespace tarnwick {

class ScreenReader;

/// A desktop of its own: a real X server, a session bus, and a panel with a tray. While it runs, the environment of
/// this process leads there. Whatever takes longer than `patience` has failed.
class DesktopSession {
public:
    static constexpr int patience = 30'000; ///< milliseconds, on a computer that does much else
    static constexpr QSize size{1280, 1800};
    /// Where the panel shows its only item.
    static constexpr QRect itemPlace{1252, 0, 28, 28};

    DesktopSession() = default;
    ~DesktopSession();
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;

    /// For the user whose home is this folder. Empty on success, else what is missing.
    [[nodiscard]] QString start(const QString& home);
    void stop();

    /// Starts a build of the program there, under a sanitizer or not, readable for `ScreenReader`; with further
    /// variables, NAME=VALUE.
    void run(QProcess& program, const QString& executable, const QStringList& variables = {}) const;
    /// The items that the tray knows of.
    [[nodiscard]] QStringList trayItems() const;
    /// The text of the first one.
    [[nodiscard]] QString label() const;
    /// The visible windows of the program.
    [[nodiscard]] QByteArrayList windows() const;
    /// What a window shows; null when there is none. The whole screen: "root".
    [[nodiscard]] QImage picture(const QByteArray& window = "root") const;

    /// Real actions of the user's hand; false when they could not be done.
    [[nodiscard]] bool moveTo(QPoint point) const;
    [[nodiscard]] bool click(QPoint point) const;
    /// The place of the topmost element of that name, once it is there and has come to rest; invalid when it never is.
    [[nodiscard]] QRect restingPlace(const ScreenReader& reader, const QString& name) const;
    /// Clicks on it there.
    [[nodiscard]] bool press(const ScreenReader& reader, const QString& name) const;
    /// The words of an xdotool command.
    [[nodiscard]] bool xdotool(const QString& words) const;

    /// Ends a process in good order, or at last by force.
    static void end(QProcess& process);

private:
    [[nodiscard]] QString startScreen();
    [[nodiscard]] QString startPanel(const QString& home);

    QProcess screen_;
    QProcess bus_;
    QProcess panel_;
};

} // namespace tarnwick
