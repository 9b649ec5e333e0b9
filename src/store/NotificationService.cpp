#include "NotificationService.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick::NotificationService {

namespace {

constexpr double quietSeconds = 300;

QHash<QString, Instant>& sent() {
    static QHash<QString, Instant> times;
    return times;
}

} // namespace

bool claim(const QString& key, Instant now) {
    // A time in the future means that the clock was set back since; it must not silence the key until that time comes.
    if (const auto last = sent().constFind(key);
        last != sent().constEnd() && std::abs(now.secondsSince(*last)) < quietSeconds)
        return false;
    sent().insert(key, now);
    return true;
}

DesktopNotification notification(const QString& title, const QString& message, bool withSound) {
    return {u"Tarnwick"_s, title, message, withSound ? std::optional(u"Hero"_s) : std::nullopt};
}

} // namespace tarnwick::NotificationService
