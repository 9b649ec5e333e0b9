#include "CoreFoundationOwner.h"
#include "DisplayServer.h"

#include <CoreGraphics/CoreGraphics.h>

namespace tarnwick {

DisplayServer DisplayServer::find() {
    if (const QByteArray requested = qgetenv("QT_QPA_PLATFORM"); !requested.isEmpty())
        return {requested, {}};
    // There is no session over ssh and in a daemon, and no window can be opened.
    const CoreFoundationOwner<CFDictionaryRef> session(::CGSessionCopyCurrentDictionary());
    return {session ? "cocoa" : QByteArray(), {}};
}

} // namespace tarnwick
