#include "SystemParts.h"

#include "MacForeground.h"
#include "MacPopover.h"
#include "MacStatusItem.h"
#include "TerminalStatusItem.h"
#include "macos/MacKernelReadings.h"
#include "macos/MacTemperatureSensors.h"

#include <QCoreApplication>
#include <QPointer>

namespace tarnwick {

SystemParts makeSystemParts(bool hasDisplay) {
    SystemParts parts;
    parts.kernel = std::make_unique<MacKernelReadings>();
    parts.sensors = std::make_unique<MacTemperatureSensors>();
    if (hasDisplay) {
        new MacForeground(QCoreApplication::instance());
        auto item = std::make_unique<MacStatusItem>();
        parts.popover =
            std::make_unique<MacPopover>([item = QPointer(item.get())] { return item ? item->place() : QPoint(); });
        parts.statusItem = std::move(item);
    } else {
        parts.statusItem = std::make_unique<TerminalStatusItem>();
    }
    return parts;
}

} // namespace tarnwick
