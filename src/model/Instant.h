#pragma once

#include <QDateTime>
#include <QHashFunctions>

namespace tarnwick {

/// A moment, as the stored files write it: seconds since 2001-01-01T00:00:00Z, as a double. Kept in that form so that
/// a decoded and encoded file is equal to the last digit.
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

[[nodiscard]] size_t qHash(const Instant& instant, size_t seed = 0) noexcept;

} // namespace tarnwick
