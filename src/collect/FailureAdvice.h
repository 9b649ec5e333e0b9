#pragma once

#include <QString>

namespace tarnwick {

/// What a person can do about a failed probe, in one or two sentences. `reason` is the record's `errorMessage`, which
/// is as a rule what the ssh client printed. Empty where the reason says all that is known.
[[nodiscard]] QString failureAdvice(const QString& reason);

} // namespace tarnwick
