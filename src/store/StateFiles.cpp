#include "StateFiles.h"

#include "Coding.h"
#include "PrivateFolder.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLockFile>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Waits for the saves of others. A file and no lock of the kernel's: it holds between computers that share a home,
/// too. QLockFile breaks the lock of a process that is gone, and one that is older than 30 s; when even that fails, or
/// nothing can be locked, the save goes ahead without.
void acquire(QLockFile& lock) {
    const QDeadlineTimer deadline(45s);
    constexpr int tryMilliseconds = 20; // QLockFile itself would try more and more rarely
    QElapsedTimer emptyFor;
    while (!lock.tryLock(tryMilliseconds) && lock.error() == QLockFile::LockFailedError && !deadline.hasExpired()) {
        // One that says nothing of its owner is left by a process that was killed as it locked: QLockFile would keep
        // it for its 30 s, longer than a program that ends can wait.
        if (QFileInfo(lock.fileName()).size() > 0)
            emptyFor.invalidate();
        else if (!emptyFor.isValid())
            emptyFor.start();
        else if (emptyFor.hasExpired(500))
            lock.removeStaleLockFile();
    }
}

} // namespace

StateFiles::StateFiles(const QString& folder)
    : lockPath_(folder + u"/lock"_s)
    , servers_(folder + u"/servers.json"_s, &decodeServers, &encodeServers)
    , settings_(folder + u"/settings.json"_s, &decodeSettings, &encodeSettings) {
    makePrivateFolder(folder);
}

StoredState StateFiles::load() {
    return {servers_.readNews().value_or(QList<Server>()), settings_.readNews().value_or(AppSettings())};
}

bool StateFiles::takeIn(StoredState& state) {
    const bool areServersNew = servers_.takeIn(state.servers);
    return settings_.takeIn(state.settings) || areServersNew;
}

bool StateFiles::save(StoredState& state, Instant now) {
    if (!std::exchange(isTidy_, true)) {
        servers_.removeLeftovers();
        settings_.removeLeftovers();
    }
    QLockFile lock(lockPath_);
    acquire(lock);
    const bool isNew = takeIn(state);
    if (servers_.write(state.servers, now))
        settings_.write(state.settings, now);
    return isNew;
}

} // namespace tarnwick
