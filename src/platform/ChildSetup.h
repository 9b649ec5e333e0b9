#pragma once

#include <sys/resource.h>

/// What has to be set up in a child between fork and exec, and the limit that children get back.
namespace tarnwick::ChildSetup {

/// Raises this process's soft limit on open files to its hard limit and remembers the old one for the children.
void raiseOpenFileLimit();
/// The soft limit on open files that children get: the one that this process was started with.
[[nodiscard]] rlim_t openFileLimit();

/// Call in the child. It makes the child lead a process group of its own, without a terminal, and end with this process
/// at the latest; it restores that limit, closes all but the three standard streams and unblocks all signals. It calls
/// only async-signal-safe functions.
void enter();

} // namespace tarnwick::ChildSetup
