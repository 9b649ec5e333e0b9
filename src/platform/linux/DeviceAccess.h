#pragma once

#include "BackgroundReading.h"
#include "DevicePower.h"
#include "KeptFile.h"

#include <chrono>
#include <functional>
#include <memory>
#include <span>

namespace tarnwick {

/// How the devices of one computer are read; a test puts its own in place. Copies share the devices' rest.
struct DeviceAccess {
    /// Monotonic time.
    std::function<std::chrono::nanoseconds()> clock = [] {
        return std::chrono::steady_clock::now().time_since_epoch();
    };
    /// Asks a sensor or a thermal zone.
    std::function<KeptFile::Content(const KeptFile& input, std::span<char> buffer)> readInput =
        [](const KeptFile& input, std::span<char> buffer) {
            return input.read(buffer);
        };
    /// The longest time that one question waits for readings.
    std::chrono::milliseconds patience = ReadingPace().patience;
    /// For how long a value that is due to be read again will do.
    std::chrono::nanoseconds grace = ReadingPace().grace;
    std::shared_ptr<DevicePowers> powers = std::make_shared<DevicePowers>();
};

} // namespace tarnwick
