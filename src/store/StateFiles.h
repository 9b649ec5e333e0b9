#pragma once

#include "AppSettings.h"
#include "Server.h"
#include "StoredValue.h"

#include <QList>
#include <QString>

namespace tarnwick {

/// What the program keeps: all of it is in the two files.
struct StoredState {
    QList<Server> servers;
    AppSettings settings;
};

/// The two files, `servers.json` and `settings.json`, which several processes may share: what the others have written
/// is merged in before anything is written over it. Any thread, one at a time; each call may take as long as the disk.
class StateFiles {
public:
    explicit StateFiles(const QString& folder);

    /// What is stored; the defaults in place of what is missing or damaged. Call first.
    [[nodiscard]] StoredState load();
    /// Merges what others have written into `state`. False when there is nothing.
    bool takeIn(StoredState& state);
    /// As takeIn(), then writes both files, each atomically, while no other process does. When the first one fails the
    /// second is not written; nothing is reported. A file that holds what is to be written stays as it is.
    bool save(StoredState& state, Instant now);

private:
    QString lockPath_;
    StoredValue<QList<Server>> servers_;
    StoredValue<AppSettings> settings_;
    bool isTidy_ = false; ///< the leftovers of earlier processes are removed
};

} // namespace tarnwick
