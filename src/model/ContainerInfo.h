#pragma once

#include <QMetaType>
#include <QString>

namespace tarnwick {

/// One row of `docker ps -a`, as the probe listed it.
struct ContainerInfo {
    QString id;     ///< the container ID as Docker prints it
    QString name;   ///< display name
    QString image;  ///< image reference
    QString status; ///< Docker's human-readable status phrase
    QString state;  ///< Docker's one-word state
    QString ports;  ///< Docker's port summary; empty when none

    ContainerInfo() = default;
    /// Stores the fields unchanged, except that `name` loses every leading and trailing "/": Docker may print names
    /// with a leading slash. A stored record is not read through this constructor: its name stays as written.
    ContainerInfo(QString id, const QString& name, QString image, QString status, QString state, QString ports);

    /// `state` is "running", in any letter case.
    [[nodiscard]] bool isRunning() const;

    /// Whether there is something to stop: `state` is "running", "paused" or "restarting", in any letter case.
    [[nodiscard]] bool canBeStopped() const;

    friend bool operator==(const ContainerInfo&, const ContainerInfo&) = default;
};

[[nodiscard]] size_t qHash(const ContainerInfo& container, size_t seed = 0) noexcept;

} // namespace tarnwick
