#pragma once

#include <QString>

#include <variant>

namespace tarnwick {

/// Why a JSON text could not be read, in one line that begins with the keys of the place, such as "metrics: cpuPercent:
/// ".
struct DecodingError {
    QString description;
};

template <typename T>
using Decoded = std::variant<T, DecodingError>;

} // namespace tarnwick
