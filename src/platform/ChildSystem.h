#pragma once

#include <sys/resource.h>

/// What ChildSetup leaves to each system.
namespace tarnwick::ChildSystem {

/// The most open files that a process may ask for under this hard limit.
[[nodiscard]] rlim_t mostOpenFiles(rlim_t hardLimit);

/// The part of enter() that no standard has: what this process has open, other than the three standard streams, is
/// closed when the child becomes its program, and where the system can, the child ends when this process is killed.
/// It calls only async-signal-safe functions.
void enter();

} // namespace tarnwick::ChildSystem
