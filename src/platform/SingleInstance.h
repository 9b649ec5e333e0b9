#pragma once

#include "Role.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

class QSocketNotifier;

namespace tarnwick {

/// One leader per folder on this computer. It holds a lock, which the kernel frees however it ends; a follower then
/// takes the lead. One with a display takes it at once from one without, and of two with a display the later one is
/// surplus. They talk through a named pipe that no other user can open. Main thread only.
///
/// Where nothing can be locked (no folder, a read-only home, a file system without named pipes) every process leads,
/// because the program must run there, too. So does one with a display after three seconds without an answer.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Makes the folder, for its owner alone, when it is missing.
    SingleInstance(const QString& folder, bool hasDisplay, QObject* parent = nullptr);
    ~SingleInstance() override;

    [[nodiscard]] Role role() const { return role_; }
    /// Whether another process shows the windows already, so that this one has nothing to do but requestActivation().
    [[nodiscard]] bool isSurplus() const { return isSurplus_; }
    /// Asks the leader to come forward. False when nothing could be sent.
    bool requestActivation();

Q_SIGNALS:
    /// Another process asks this one, the leader, to come forward. Requests that arrive together are one.
    void activationRequested();
    /// When this process becomes a follower, another takes the lead as soon as all slots have returned: they save.
    void roleChanged();

private:
    void tryToLead();
    void lead();
    void hearRequest();
    void setRole(Role role);

    const bool hasDisplay_;
    int pipe_ = -1;
    Role role_ = Role::leader;
    bool isSurplus_ = false;
    QTimer attempts_; ///< to take the lead
    QDeadlineTimer answerBy_{std::chrono::seconds(3)};
    QSocketNotifier* notifier_ = nullptr; ///< of the pipe, while this process holds the lead
};

} // namespace tarnwick
