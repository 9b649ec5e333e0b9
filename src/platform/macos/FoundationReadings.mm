#include "FoundationReadings.h"

#import <Foundation/Foundation.h>

namespace tarnwick {

ProcessInformation FoundationReadings::processInformation() {
    @autoreleasepool {
        NSProcessInfo* const process = [NSProcessInfo processInfo];
        const NSOperatingSystemVersion version = process.operatingSystemVersion;
        return {.majorVersion = version.majorVersion,
                .minorVersion = version.minorVersion,
                .versionText = QString::fromUtf8(process.operatingSystemVersionString.UTF8String),
                .thermalState = static_cast<qint64>(process.thermalState)};
    }
}

std::optional<QString> FoundationReadings::computerName() {
    @autoreleasepool {
        NSString* const name = [NSHost currentHost].localizedName;
        return name ? std::optional(QString::fromUtf8(name.UTF8String)) : std::nullopt;
    }
}

} // namespace tarnwick
