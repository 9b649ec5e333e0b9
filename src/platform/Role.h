#pragma once

namespace tarnwick {

/// What a process does among those of one user on one data folder.
enum class Role {
    leader,   ///< probes, alerts and writes
    follower, ///< shows what the leader has saved
};

} // namespace tarnwick
