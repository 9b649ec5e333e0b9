#pragma once

namespace tarnwick {

/// Gives back what windows leave behind when they are gone: the fonts that they loaded, and memory that is free. What
/// is still shown loads its fonts again. In the main thread; some milliseconds.
void returnWindowMemory();

} // namespace tarnwick
