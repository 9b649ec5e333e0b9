#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace tarnwick {

/// What Linux knows of the machine itself. `root` is the folder that holds proc and sys, ending in "/". Any thread.
namespace LinuxMachine {

struct Cores {
    std::int32_t performance = 0; ///< all of them on a machine with one kind of core
    std::int32_t efficiency = 0;
};

/// Physical cores by kind; absent when the kernel tells nothing of cores.
[[nodiscard]] std::optional<Cores> physicalCores(const QString& root);
/// "AMD Ryzen 7 5800X 8-Core Processor", "BCM2711"; the architecture where there is no better name.
[[nodiscard]] QByteArray processorName(const QString& root);
/// The firmware's product name, else the device tree's model, else the architecture.
[[nodiscard]] QByteArray modelIdentifier(const QString& root);
/// The name on the lid: as a rule the model identifier, but the version for the makers that put it there. Absent for
/// the machines whose identifiers have a family of their own.
[[nodiscard]] std::optional<QString> makersModelName(const QString& root);

} // namespace LinuxMachine

} // namespace tarnwick
