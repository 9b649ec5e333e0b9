#pragma once

#include <QString>

#include <variant>

namespace tarnwick {

/// Why a JSON text could not be read: one line, after the keys that lead to the place where there are any.
struct DecodingError {
    QString description;
};

template <typename T>
using Decoded = std::variant<T, DecodingError>;

} // namespace tarnwick
