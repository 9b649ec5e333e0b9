#pragma once

namespace tarnwick {

/// Gives memory that this process has freed back to the system; the allocator keeps it otherwise. Takes some
/// milliseconds after a large burst. Any thread.
void returnFreeMemory();

} // namespace tarnwick
