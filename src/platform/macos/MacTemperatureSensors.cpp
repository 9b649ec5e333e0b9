#include "MacTemperatureSensors.h"

#include "SensorRole.h"

#include <array>

#include <dlfcn.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int vendorPage = 0xFF00;
constexpr int temperatureUsage = 5;
constexpr std::int64_t temperatureEvent = 15;
constexpr std::int32_t temperatureLevel = temperatureEvent << 16; // the first field of such an event

template <typename Function>
bool find(Function*& function, const char* name, const MacTemperatureSensors::Lookup& lookup) {
    function = reinterpret_cast<Function*>(lookup(name));
    return function;
}

std::optional<HidEventSystem> findSystem(const MacTemperatureSensors::Lookup& lookup) {
    HidEventSystem system;
    const bool isComplete = find(system.createClient, "IOHIDEventSystemClientCreate", lookup) &&
                            find(system.setMatching, "IOHIDEventSystemClientSetMatching", lookup) &&
                            find(system.copyServices, "IOHIDEventSystemClientCopyServices", lookup) &&
                            find(system.copyProperty, "IOHIDServiceClientCopyProperty", lookup) &&
                            find(system.copyEvent, "IOHIDServiceClientCopyEvent", lookup) &&
                            find(system.floatValue, "IOHIDEventGetFloatValue", lookup);
    return isComplete ? std::optional(system) : std::nullopt;
}

/// What the services of temperature sensors have in common.
CoreFoundationOwner<CFDictionaryRef> temperatureSensors() {
    const auto number = [](const int& value) {
        return CoreFoundationOwner<CFNumberRef>(::CFNumberCreate(kCFAllocatorDefault, kCFNumberIntType, &value));
    };
    const auto page = number(vendorPage);
    const auto usage = number(temperatureUsage);
    std::array<const void*, 2> keys{CFSTR("PrimaryUsagePage"), CFSTR("PrimaryUsage")};
    std::array<const void*, 2> values{page.get(), usage.get()};
    return CoreFoundationOwner<CFDictionaryRef>(
        ::CFDictionaryCreate(kCFAllocatorDefault, keys.data(), values.data(), CFIndex(keys.size()),
                             &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

/// The text with its characters as they are, though they may be no valid text; absent when the object is no string.
std::optional<QString> textOf(CFTypeRef object) {
    const auto string = coreFoundationCast<CFStringRef>(object, ::CFStringGetTypeID());
    if (!string)
        return std::nullopt;
    const CFIndex length = ::CFStringGetLength(string);
    QString text(length, Qt::Uninitialized);
    ::CFStringGetCharacters(string, CFRange{0, length}, reinterpret_cast<UniChar*>(text.data()));
    return text;
}

std::optional<double> temperatureOf(HidEventSystem::Service service, const HidEventSystem& system) {
    const CoreFoundationOwner<CFTypeRef> event(system.copyEvent(service, temperatureEvent, 0, 0));
    return event ? std::optional(system.floatValue(event.get(), temperatureLevel)) : std::nullopt;
}

} // namespace

void* MacTemperatureSensors::inLoadedLibraries(const char* name) {
    return ::dlsym(RTLD_DEFAULT, name);
}

MacTemperatureSensors::MacTemperatureSensors(const Lookup& lookup) : system_(findSystem(lookup)) {}

std::optional<QList<TemperatureReading>> MacTemperatureSensors::read(SensorGroup group) {
    const CoreFoundationOwner<CFTypeRef> client(system_ ? system_->createClient(kCFAllocatorDefault) : nullptr);
    if (!client)
        return std::nullopt;
    system_->setMatching(client.get(), temperatureSensors().get());
    const CoreFoundationOwner<CFTypeRef> copied(system_->copyServices(client.get()));
    const auto services = coreFoundationCast<CFArrayRef>(copied.get(), ::CFArrayGetTypeID());
    if (!services)
        return std::nullopt;
    QList<TemperatureReading> readings;
    for (CFIndex i = 0; i < ::CFArrayGetCount(services); ++i) {
        const HidEventSystem::Service service = ::CFArrayGetValueAtIndex(services, i);
        const CoreFoundationOwner<CFTypeRef> name(system_->copyProperty(service, CFSTR("Product")));
        const std::optional<QString> product = textOf(name.get());
        if (sensorGroup(product.value_or(QString())) == group)
            readings.append({.product = product, .celsius = temperatureOf(service, *system_), .position = i});
    }
    return readings;
}

} // namespace tarnwick
