#include "SystemParts.h"

#include "DesktopPopover.h"
#include "DesktopStatusItem.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"
#include "linux/TerminalStatusItem.h"

namespace tarnwick {

SystemParts makeSystemParts(bool hasDisplay) {
    SystemParts parts;
    parts.kernel = std::make_unique<LinuxKernelReadings>();
    parts.sensors = std::make_unique<LinuxTemperatureSensors>();
    if (hasDisplay) {
        parts.statusItem = std::make_unique<DesktopStatusItem>();
        parts.popover = std::make_unique<DesktopPopover>();
    } else {
        parts.statusItem = std::make_unique<TerminalStatusItem>();
    }
    return parts;
}

} // namespace tarnwick
