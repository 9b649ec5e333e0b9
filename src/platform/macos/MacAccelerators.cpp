#include "MacAccelerators.h"

#include "CoreFoundationOwner.h"

#include <optional>

#include <IOKit/IOKitLib.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

/// Owns an object of the registry; 0 is none.
class RegistryObject {
public:
    explicit RegistryObject(io_object_t object) : object_(object) {}
    ~RegistryObject() {
        if (object_ != 0)
            ::IOObjectRelease(object_);
    }
    Q_DISABLE_COPY_MOVE(RegistryObject)

    [[nodiscard]] io_object_t get() const { return object_; }

private:
    const io_object_t object_;
};

CFDictionaryRef asDictionary(CFTypeRef object) {
    return coreFoundationCast<CFDictionaryRef>(object, ::CFDictionaryGetTypeID());
}

std::optional<double> utilisation(io_registry_entry_t accelerator) {
    CFMutableDictionaryRef created = nullptr;
    if (::IORegistryEntryCreateCFProperties(accelerator, &created, kCFAllocatorDefault, 0) != KERN_SUCCESS)
        return std::nullopt;
    const CoreFoundationOwner<CFDictionaryRef> owner(created);
    const CFDictionaryRef properties = asDictionary(created);
    const CFDictionaryRef statistics =
        properties ? asDictionary(::CFDictionaryGetValue(properties, CFSTR("PerformanceStatistics"))) : nullptr;
    if (!statistics)
        return std::nullopt;
    const auto number = coreFoundationCast<CFNumberRef>(
        ::CFDictionaryGetValue(statistics, CFSTR("Device Utilization %")), ::CFNumberGetTypeID());
    if (!number)
        return std::nullopt;
    double percent = 0;
    ::CFNumberGetValue(number, kCFNumberDoubleType, &percent);
    return percent;
}

} // namespace

QList<QVariantMap> readMacAccelerators() {
    const CFMutableDictionaryRef matching = ::IOServiceMatching("IOAccelerator");
    io_iterator_t found = 0;
    // The call takes the reference to `matching` over, even when it fails.
    if (!matching || ::IOServiceGetMatchingServices(kIOMainPortDefault, matching, &found) != KERN_SUCCESS)
        return {};
    const RegistryObject iterator(found);
    QList<QVariantMap> accelerators;
    for (;;) {
        const RegistryObject entry(::IOIteratorNext(iterator.get()));
        if (entry.get() == 0)
            return accelerators;
        const std::optional<double> percent = utilisation(entry.get());
        if (!percent) {
            accelerators.append(QVariantMap());
            continue;
        }
        const QVariantMap statistics{{u"Device Utilization %"_s, *percent}};
        return accelerators << QVariantMap{{u"PerformanceStatistics"_s, statistics}};
    }
}

} // namespace tarnwick
