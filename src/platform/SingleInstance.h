#pragma once

#include <QObject>

class QSocketNotifier;

namespace tarnwick {

/// One process per folder on this computer: the first holds a lock for as long as it lives, a later one can ask it to
/// come forward. However the first one dies, the lock is free with its death. Main thread only.
///
/// Where nothing can be locked (no folder, a read-only home, a file system without named pipes) every process is the
/// first: the program must run there, too.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Makes the folder, for its owner alone, when it is missing.
    explicit SingleInstance(const QString& folder, QObject* parent = nullptr);
    ~SingleInstance() override;

    [[nodiscard]] bool isFirst() const { return first_; }
    /// Asks the first process to come forward; for a process that is not the first. False when nothing could be sent.
    bool requestActivation();

Q_SIGNALS:
    /// Another process asks this one, the first, to come forward. Requests that arrive together are one.
    void activationRequested();

private:
    void watch();

    int pipe_ = -1;
    bool first_ = true;
    QSocketNotifier* notifier_ = nullptr;
};

} // namespace tarnwick
