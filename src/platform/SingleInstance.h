#pragma once

#include <QObject>

class QSocketNotifier;

namespace tarnwick {

/// One process per folder on this computer: the first holds a lock for as long as it lives, and a later one can ask it
/// to come forward. The kernel frees the lock however the first one ends. Main thread only.
///
/// Where nothing can be locked (no folder, a read-only home, a file system without named pipes) every process counts as
/// the first, because the program must run there, too.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Creates the folder, readable by its owner alone, when it is missing.
    explicit SingleInstance(const QString& folder, QObject* parent = nullptr);
    ~SingleInstance() override;

    [[nodiscard]] bool isFirst() const { return first_; }
    /// Asks the first process to come forward. Call in a process that is not the first. False when nothing could be
    /// sent.
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
