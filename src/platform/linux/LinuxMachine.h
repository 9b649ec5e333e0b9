#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick {

/// What Linux knows about the machine itself. `root` is the folder that holds proc and sys, ending in "/". Any thread.
namespace LinuxMachine {

/// The firmware's product name, else the device tree's model, else the kind of container, else the architecture.
[[nodiscard]] QByteArray modelIdentifier(const QString& root);
/// The name on the lid: as a rule the model identifier, but the version for the makers that put it there, and the
/// family for those whose identifiers are numbers.
[[nodiscard]] QString makersModelName(const QString& root);

} // namespace LinuxMachine

} // namespace tarnwick
