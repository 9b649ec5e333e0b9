#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace tarnwick {

/// What is going on with the containers of one server, each named by its id.
struct ContainerMarks {
    std::optional<QString> busyId = {};    ///< of any server: the one whose action runs
    std::optional<QString> askedId = {};   ///< the one whose row asks whether to stop it
    QHash<QString, QString> failures = {}; ///< why the latest action failed

    friend bool operator==(const ContainerMarks&, const ContainerMarks&) = default;
};

} // namespace tarnwick
