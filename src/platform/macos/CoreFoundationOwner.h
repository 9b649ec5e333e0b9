#pragma once

#include <memory>
#include <type_traits>

#include <CoreFoundation/CoreFoundation.h>

namespace tarnwick {

struct CoreFoundationRelease {
    void operator()(CFTypeRef object) const { ::CFRelease(object); }
};

/// Owns what a function with "Create" or "Copy" in its name returned: `CoreFoundationOwner<CFArrayRef>`. What a "Get"
/// returned belongs to somebody else.
template <typename Reference>
using CoreFoundationOwner = std::unique_ptr<std::remove_pointer_t<Reference>, CoreFoundationRelease>;

/// The object as what it is: `coreFoundationCast<CFStringRef>(object, CFStringGetTypeID())`. Null when it is something
/// else, or null.
template <typename Reference>
[[nodiscard]] Reference coreFoundationCast(CFTypeRef object, CFTypeID type) {
    return object && ::CFGetTypeID(object) == type ? static_cast<Reference>(object) : nullptr;
}

} // namespace tarnwick
