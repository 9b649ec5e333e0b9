#pragma once

namespace tarnwick {

/// The display that the session's environment names.
namespace DisplayServer {

/// Whether a window can be opened there: a display is named and it answers. A name alone is not enough: a session kept
/// alive over ssh remembers a display that is gone, and Qt ends the process when it cannot reach the display. Call
/// before the application object is made; waits as long as the display takes to answer.
[[nodiscard]] bool isReachable();

} // namespace DisplayServer

} // namespace tarnwick
