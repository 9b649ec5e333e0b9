#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace tarnwick {

/// Makes counters that never run backwards out of the kernel's processor times, which may. Pure; not thread-safe.
class SteadyTicks {
public:
    using Counts = std::array<quint64, 4>;

    /// The counters after the kernel's have reached `now`. When one of the kernel's drops a little, ours stays until
    /// the kernel's is above its earlier value. A large drop is a new beginning: nobody knows how much time passed
    /// since the last call, so none of the counters moves.
    [[nodiscard]] Counts advance(const Counts& now);

private:
    Counts seen_{}; ///< the kernel's; where one dropped a little, as it was before
    Counts steady_{};
};

} // namespace tarnwick
