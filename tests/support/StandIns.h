#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tarnwick {

/// A folder of executables that take the place of a host's own: for the front of its search path.
class StandIns {
public:
    [[nodiscard]] QString folder() const { return folder_.path(); }
    /// This folder, then the system's.
    [[nodiscard]] QString searchPath() const;

    /// An executable with these contents; false when it cannot be written.
    [[nodiscard]] bool add(const QString& name, const QByteArray& script);
    /// An executable that prints a recorded output, whatever it is asked.
    [[nodiscard]] bool addRecording(const QString& name, const QByteArray& output);
    /// A `docker` whose containers are `rows`, one a line: id, names, image, status, state and ports, separated by
    /// tabs. It fills the template of `ps --format` with them; `restart` notes the words after it, and starts the
    /// container; it fails for one that has no row.
    [[nodiscard]] bool addDocker(const QByteArray& rows);
    /// A `df` of one disk of that size in GiB, so many percent full.
    [[nodiscard]] bool addDisk(int gibibytes, int percent);
    /// A `top` of a processor that is idle for this share of its time: percent, as "94.0".
    [[nodiscard]] bool addProcessor(const QByteArray& idle);
    /// One entry for each `docker restart`, oldest first.
    [[nodiscard]] QStringList restarts() const;

private:
    /// The stand-in of that name, with what it reads in a file beside it.
    [[nodiscard]] bool install(const QString& name, const QString& file, const QByteArray& content);

    QTemporaryDir folder_;
};

} // namespace tarnwick
