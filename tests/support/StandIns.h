#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace tarnwick {

/// A folder of executables that replace those of a host, when it is first on the search path.
class StandIns {
public:
    [[nodiscard]] QString folder() const { return folder_.path(); }
    /// This folder, then the system's.
    [[nodiscard]] QString searchPath() const;
    /// This process's environment with that search path.
    [[nodiscard]] QProcessEnvironment environment() const;

    /// An executable with these contents; false when it cannot be written.
    [[nodiscard]] bool add(const QString& name, const QByteArray& script);
    /// An executable that prints a recorded output, whatever it is asked.
    [[nodiscard]] bool addRecording(const QString& name, const QByteArray& output);
    /// A `docker` whose containers are `rows`, one a line: id, names, image, status, state and ports, separated by
    /// tabs. `ps --format` fills its template with them. `start`, `stop` and `restart` record their arguments and
    /// change the container's state, or fail when there is no such row.
    [[nodiscard]] bool addDocker(const QByteArray& rows);
    /// A `df` that shows one disk: its size in GiB, and how many percent of it are used.
    [[nodiscard]] bool addDisk(int gibibytes, int percent);
    /// A `top` that shows this idle time of the processor, in percent: "94.0".
    [[nodiscard]] bool addProcessor(const QByteArray& idle);
    /// One entry for each of those calls of docker, oldest first: "restart abc123".
    [[nodiscard]] QStringList dockerActions() const;

private:
    /// Copies the stand-in of that name, and writes the file that it reads.
    [[nodiscard]] bool install(const QString& name, const QString& file, const QByteArray& content);

    QTemporaryDir folder_;
};

} // namespace tarnwick
