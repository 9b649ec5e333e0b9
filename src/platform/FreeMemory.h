#pragma once

namespace tarnwick {

/// Lets all threads share two heaps instead of having one each: what short-lived threads leave behind stays in one
/// place, and is used again. First thing in main().
void shareHeaps();

/// Gives memory that this process has freed back to the system; the allocator keeps it otherwise. Takes some
/// milliseconds after a large burst. Any thread; what other threads keep for themselves stays theirs.
void returnFreeMemory();

} // namespace tarnwick
