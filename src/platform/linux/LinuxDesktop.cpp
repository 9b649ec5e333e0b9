#include "Desktop.h"
#include "KernelFiles.h"
#include "SessionBus.h"
#include "ShownText.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QSysInfo>
#include <QVariantMap>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick::Desktop {

namespace {

QDBusMessage notificationsCall(const QString& method) {
    return QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
                                          u"org.freedesktop.Notifications"_s, method);
}

/// The arguments of `Notify`. `bodyMarkup`: the service reads the body as markup; no service does so with the summary.
QVariantList notifyArguments(const DesktopNotification& notification, bool bodyMarkup) {
    QVariantMap hints{
        {u"urgency"_s, QVariant::fromValue(uchar(1))}, // normal: a critical one would stay until it is dismissed
        {u"desktop-entry"_s, u"tarnwick"_s},
    };
    // The sound naming scheme has other names; this is its warning.
    if (notification.soundName)
        hints.insert(u"sound-name"_s, u"dialog-warning"_s);
    else
        hints.insert(u"suppress-sound"_s, true);
    constexpr qsizetype longestBody = 1000; // a host decides how long a reason is; services show a few lines
    const QString body =
        shownText(QStringView(notification.body).first(std::min(notification.body.size(), longestBody)), u"\n");
    constexpr quint32 replacesNone = 0;
    constexpr qint32 serviceDecidesHowLong = -1;
    return {notification.title,
            replacesNone,
            u"tarnwick"_s,
            shownText(notification.subtitle),
            bodyMarkup ? body.toHtmlEscaped() : body,
            QStringList(),
            hints,
            serviceDecidesHowLong};
}

} // namespace

void post(const DesktopNotification& notification) {
    const QDBusConnection bus = SessionBus::shared().connection();
    if (!bus.isConnected())
        return;
    // Asked each time, because another service may run by now.
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(notificationsCall(u"GetCapabilities"_s)),
                                                QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, bus, notification] {
        watcher->deleteLater();
        const QDBusPendingReply<QStringList> capabilities = *watcher;
        if (capabilities.isError())
            return;
        QDBusMessage notify = notificationsCall(u"Notify"_s);
        notify.setArguments(notifyArguments(notification, capabilities.value().contains(u"body-markup"_s)));
        bus.send(notify);
    });
}

std::optional<QString> computerName() {
    // The name that the user gave the computer, as hostnamed stores it; else its host name.
    QString name = assignedValue(readSmallFile(u"/etc/machine-info"_s), "PRETTY_HOSTNAME=");
    if (name.isEmpty())
        name = QSysInfo::machineHostName();
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

} // namespace tarnwick::Desktop
