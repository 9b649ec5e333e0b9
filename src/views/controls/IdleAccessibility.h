#pragma once

namespace tarnwick {

/// While no assistive technology listens, objects of QML types get a stand-in for their accessible interface; once one
/// does, the real ones take over, also of objects that exist by then. Any number of calls.
///
/// Qt asks for the interface of every object with an accessible property all the same, and remembers the name of its
/// class for ever. Each engine names its types anew, so that every opened popover would leave some names behind: 1 MB
/// after 100 of them, since the names keep pages from going back to the system.
void spareIdleAccessibility();

} // namespace tarnwick
