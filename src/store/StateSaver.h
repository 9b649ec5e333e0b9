#pragma once

#include "StateFiles.h"

#include <QFileSystemWatcher>
#include <QFutureWatcher>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace tarnwick {

/// Works on the state's files in a thread of its own, so that a slow disk delays nothing else. One piece of work runs
/// at a time; what is asked for meanwhile follows it as one more, with the state as it is by then. Main thread only.
class StateSaver : public QObject {
    Q_OBJECT

public:
    /// The files' user.
    struct Client {
        std::function<StoredState()> state;
        std::function<Instant()> clock;
        /// Others have changed the files: what was `asked`, as given by `state` a while ago, was merged into `found`.
        std::function<void(const StoredState& asked, const StoredState& found)> adopt;
    };

    StateSaver(const QString& folder, Client client);
    /// Waits as finish() does, unless that has given up before.
    ~StateSaver() override;

    /// What is stored. Waits for the disk; call first.
    [[nodiscard]] StoredState load();
    /// Saves soon.
    void save() { ask(Work::save); }
    /// Soon takes in what others have written. Happens by itself when the folder changes, where the system tells.
    void look() { ask(Work::look); }
    /// Waits until nothing is left to do, but no longer than `patience`: the program must be able to end whatever the
    /// disk does. False when it gave up; then a save may still be going on.
    bool finish();

    static constexpr std::chrono::milliseconds patience{1500};

private:
    enum class Work { none, look, save }; ///< each includes those before
    struct Job;

    void ask(Work work);
    void start();
    void end();

    Client client_;
    std::shared_ptr<StateFiles> files_; ///< shared with the thread, which may outlive this object
    QFileSystemWatcher folder_;
    Work asked_ = Work::none;
    bool gaveUp_ = false;
    std::shared_ptr<Job> job_; ///< that runs; null when none does
    std::thread thread_;       ///< runs it
    std::unique_ptr<QFutureWatcher<void>> watcher_;
};

} // namespace tarnwick
