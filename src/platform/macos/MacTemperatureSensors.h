#pragma once

#include "CoreFoundationOwner.h"
#include "TemperatureSensors.h"

#include <cstdint>
#include <functional>

namespace tarnwick {

/// The functions of the HID event system. No header declares them, and a later system may lack them.
struct HidEventSystem {
    using Event = CFTypeRef;
    using Service = CFTypeRef;
    using Client = CFTypeRef;

    Client (*createClient)(CFAllocatorRef) = nullptr;
    void (*setMatching)(Client, CFDictionaryRef) = nullptr;
    CFTypeRef (*copyServices)(Client) = nullptr;
    CFTypeRef (*copyProperty)(Service, CFStringRef key) = nullptr;
    Event (*copyEvent)(Service, std::int64_t type, std::int32_t options, std::int64_t timestamp) = nullptr;
    double (*floatValue)(Event, std::int32_t field) = nullptr;
};

/// The sensors of the HID event system, read at each question through a client of its own. A sensor of another group is
/// asked for its name alone.
class MacTemperatureSensors : public TemperatureSensors {
public:
    /// The address of a function of this name, or null.
    using Lookup = std::function<void*(const char* name)>;
    [[nodiscard]] static void* inLoadedLibraries(const char* name);

    explicit MacTemperatureSensors(const Lookup& lookup = inLoadedLibraries);

    /// Absent where one of the functions is missing, too.
    [[nodiscard]] std::optional<QList<TemperatureReading>> read(SensorGroup group) override;

private:
    std::optional<HidEventSystem> system_;
};

} // namespace tarnwick
