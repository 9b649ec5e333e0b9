#pragma once

namespace tarnwick {

/// Gives objects of QML types an empty accessible interface while no assistive technology is running. When one starts,
/// they get their real interface, including the objects that exist already. May be called more than once.
///
/// Qt asks for the interface of every object with an accessible property, even when nobody listens, and keeps the name
/// of the object's class for good. Each QML engine gives its types new names, so that every opened popover would leave
/// some behind. They are small, but they keep pages from going back to the system: 1 MB after 100 popovers.
void installAccessibilityStandIns();

} // namespace tarnwick
