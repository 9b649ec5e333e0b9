#pragma once

#include <QString>

namespace tarnwick {

/// This computer's `/bin/sh`.
namespace LocalShell {

/// Shell text to stand before a script that asks `sysctl -n vm.loadavg` for the load averages: where the system's
/// `sysctl` does not know that name, a function of the same name answers in its form, "{ 0.42 0.40 0.38 }". Empty
/// where it does.
[[nodiscard]] QString preamble();

} // namespace LocalShell

} // namespace tarnwick
