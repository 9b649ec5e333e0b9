#include "SystemParts.h"

#include "DesktopPopover.h"
#include "DesktopStatusItem.h"
#include "TerminalStatusItem.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

SystemParts makeSystemParts(bool hasDisplay) {
    SystemParts parts;
    const QString root = u"/"_s;
    const DeviceAccess access;
    parts.kernel = std::make_unique<LinuxKernelReadings>(root, NvidiaLibrary::installedName(), access);
    parts.sensors = std::make_unique<LinuxTemperatureSensors>(root, access);
    if (hasDisplay) {
        parts.statusItem = std::make_unique<DesktopStatusItem>();
        parts.popover = std::make_unique<DesktopPopover>();
    } else {
        parts.statusItem = std::make_unique<TerminalStatusItem>();
    }
    return parts;
}

} // namespace tarnwick
