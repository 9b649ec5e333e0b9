#pragma once

#include "KernelReadings.h"
#include "Popover.h"
#include "StatusItem.h"
#include "TemperatureSensors.h"

#include <QWindow>

#include <memory>

namespace tarnwick {

/// What the program is made of that differs by operating system. Each system's folder implements makeSystemParts().
struct SystemParts {
    std::unique_ptr<KernelReadings> kernel;
    std::unique_ptr<TemperatureSensors> sensors;
    std::unique_ptr<StatusItem> statusItem;
    std::unique_ptr<Popover> popover; ///< null where there is no display
};

/// With a display there must be a QGuiApplication, else a QCoreApplication. Call once.
[[nodiscard]] SystemParts makeSystemParts(bool hasDisplay);

} // namespace tarnwick
