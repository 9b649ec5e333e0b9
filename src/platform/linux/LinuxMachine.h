#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace tarnwick {

/// What Linux knows about the machine itself. `root` is the folder that holds proc and sys, ending in "/". Any thread.
namespace LinuxMachine {

struct Cores {
    std::int32_t performance = 0; ///< all of them on a machine with one kind of core
    std::int32_t efficiency = 0;
};

/// Physical cores by kind; absent when the kernel does not list cores.
[[nodiscard]] std::optional<Cores> physicalCores(const QString& root);
/// "AMD Ryzen 7 5800X 8-Core Processor", "BCM2711"; the architecture where there is no better name.
[[nodiscard]] QByteArray processorName(const QString& root);
/// The firmware's product name, else the device tree's model, else the architecture.
[[nodiscard]] QByteArray modelIdentifier(const QString& root);
/// The name that is printed on the computer: for most makers the model identifier, for some the version. Absent for the
/// machines whose identifiers belong to a named family.
[[nodiscard]] std::optional<QString> makersModelName(const QString& root);

} // namespace LinuxMachine

} // namespace tarnwick
