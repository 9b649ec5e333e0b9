#pragma once

#include <sys/resource.h>

/// What a child needs set up between fork and exec, and what this process changed of what children shall have.
namespace tarnwick::ChildSetup {

/// Raises this process's soft limit on open files to its hard limit and remembers the old one for the children.
void raiseOpenFileLimit();
/// The soft limit on open files that children shall have.
[[nodiscard]] rlim_t openFileLimit();

/// In the child: the leader of a process group of its own, that limit on open files, nothing open but the three
/// standard streams, no signal blocked. Calls nothing that is not async-signal-safe.
void enter();

} // namespace tarnwick::ChildSetup
