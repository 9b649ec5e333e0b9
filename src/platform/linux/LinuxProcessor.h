#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

namespace tarnwick {

/// What Linux knows of the processor. `root` is the folder that holds proc and sys, ending in "/". Any thread.
namespace LinuxProcessor {

struct Cores {
    std::int32_t performance = 0; ///< all of them on a machine with one kind of core
    std::int32_t efficiency = 0;
};

/// Physical cores by kind; where the kernel does not publish cores, each of its processors counts as one.
[[nodiscard]] Cores physicalCores(const QString& root);
/// "AMD Ryzen 7 5800X 8-Core Processor", "Broadcom BCM2711", "Apple M1 Pro"; the architecture where there is no better
/// name.
[[nodiscard]] QByteArray name(const QString& root);

} // namespace LinuxProcessor

} // namespace tarnwick
