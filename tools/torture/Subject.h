#pragma once

#include "AppSettings.h"
#include "Server.h"

#include <QDeadlineTimer>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <chrono>

namespace tarnwick {

/// Asks again and again until it is so, or the time is up.
template <typename Condition>
[[nodiscard]] bool within(std::chrono::milliseconds limit, Condition condition) {
    for (const QDeadlineTimer deadline(limit); !condition(); QThread::msleep(20))
        if (deadline.hasExpired())
            return false;
    return true;
}
/// Waits for a random time.
void waitUpTo(std::chrono::microseconds limit);

/// The program in a home folder of its own, and what can be asked of it from outside. All waits have a limit.
class Subject {
public:
    explicit Subject(QString executable) : executable_(std::move(executable)) {}
    ~Subject();

    [[nodiscard]] QString home() const { return home_.path(); }
    [[nodiscard]] QString dataFolder() const { return home() + QStringLiteral("/.local/share/Tarnwick"); }
    /// Writes both files for the next start, with the shortest time between two refreshes. Empty on success.
    [[nodiscard]] QString store(const QList<Server>& servers) const;

    /// Starts it without a display; with one when `variables`, each NAME=VALUE, say so.
    void start(const QStringList& variables = {});
    /// Starts it once more beside the first; true when that one ends well, which asks the first to open its popover.
    [[nodiscard]] bool startAgain() const;
    [[nodiscard]] QProcess& process() { return process_; }
    /// Waits until it has printed a status line since start().
    [[nodiscard]] bool printsLine();
    /// Ends it at once.
    void killNow();
    /// Ends it with SIGTERM; false when it takes more than two seconds or ends badly.
    [[nodiscard]] bool quits();

    /// Waits until it has stored a probe that was made after this call.
    [[nodiscard]] bool answers(std::chrono::seconds limit) const;
    /// What is wrong with the stored files; empty when both decode, nothing was moved aside, and the list has as many
    /// entries as were stored.
    [[nodiscard]] QString damage() const;
    /// Waits a moment for its children to end; the command lines of those that do not, which are ended then.
    [[nodiscard]] QStringList childrenLeft() const;

private:
    [[nodiscard]] QList<int> processesOfHome() const;

    QString executable_;
    QTemporaryDir home_;
    mutable qsizetype stored_ = 0; ///< entries of the list
    QProcess process_;
};

} // namespace tarnwick
