#pragma once

namespace tarnwick {

/// Whether the user's session starts this program, as it is kept on disk. Main thread only.
namespace LoginItem {

[[nodiscard]] bool isEnabled();
/// What cannot be written stays as it was: isEnabled() says what has become of it.
void setEnabled(bool enabled);

} // namespace LoginItem

} // namespace tarnwick
