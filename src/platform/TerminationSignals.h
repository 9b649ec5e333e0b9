#pragma once

#include <QObject>

#include <array>
#include <csignal>

class QSocketNotifier;

namespace tarnwick {

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal in this object's thread, and ignores SIGPIPE. A signal that was
/// ignored when the program started (nohup, a job in the background) stays ignored. One object at a time; its
/// destructor restores what the three signals did before, and the process may take its time again.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

    static constexpr std::array numbers{SIGTERM, SIGINT, SIGHUP};

    /// From the first of these signals, or else from this call, the process has 1.5 s to end by itself. Then it ends at
    /// once, with the status of this call, or 0: whatever hangs, also the main thread.
    static void limitEnd(int status);

Q_SIGNALS:
    /// Emitted once for all the signals that arrived since the event loop last looked.
    void terminationRequested();

private:
    void drain();

    std::array<int, 2> pipe_{-1, -1};
    QSocketNotifier* notifier_ = nullptr;
    std::array<struct sigaction, numbers.size()> before_{};
};

} // namespace tarnwick
