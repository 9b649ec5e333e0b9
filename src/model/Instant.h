#pragma once

#include <QDateTime>

namespace tarnwick {

/// A moment in the form of the stored files: seconds since 2001-01-01T00:00:00Z, as a double. It is never converted, so
/// a file that is read and written again keeps every digit.
struct Instant {
    double secondsSinceReferenceDate = 0;

    /// The wall clock's current time.
    [[nodiscard]] static Instant now();
    /// To millisecond precision.
    [[nodiscard]] QDateTime toDateTime() const;

    [[nodiscard]] double secondsSince(Instant earlier) const {
        return secondsSinceReferenceDate - earlier.secondsSinceReferenceDate;
    }

    friend bool operator==(const Instant&, const Instant&) = default;
};

} // namespace tarnwick
