#pragma once

/// Locks on the bytes of a named pipe, held by its open file: between processes, and between two that one process has
/// open. The kernel frees them when the file is closed. Any thread.
namespace tarnwick::PipeLock {

enum class Outcome { done, heldByOther, impossible };

[[nodiscard]] Outcome take(int pipe, int byte);
void release(int pipe, int byte);

} // namespace tarnwick::PipeLock
