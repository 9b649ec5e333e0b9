#pragma once

namespace tarnwick {

/// Makes all threads share two heaps instead of having one each, so that later threads reuse what short-lived threads
/// freed. Call first in main().
void shareHeaps();

/// Returns the memory that this process has freed to the system; the allocator would keep it. Takes some milliseconds
/// after a large burst. Any thread; freed blocks in the caches of other threads stay there.
void returnFreeMemory();

} // namespace tarnwick
