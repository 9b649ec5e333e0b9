#include "AppSettings.h"

namespace tarnwick {

void AppSettings::togglePinned(MenuBarItem item) {
    if (pinnedMenuBarItems.erase(item) == 0)
        pinnedMenuBarItems.insert(item);
}

} // namespace tarnwick
