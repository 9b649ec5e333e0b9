#include "DesktopSetting.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
const auto portal = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;
const auto settings = u"org.freedesktop.portal.Settings"_s;
} // namespace

DesktopSetting::DesktopSetting(const SessionBus& bus, QString group, QString key, QObject* parent)
    : QObject(parent), bus_(bus), group_(std::move(group)), key_(std::move(key)) {
    qRegisterMetaType<QDBusVariant>(); // connect() finds a slot's types by name, and may be the first to need this one
    connect(&bus, &SessionBus::connected, this, &DesktopSetting::read);
    read();
}

void DesktopSetting::read() {
    QDBusConnection connection = bus_.connection();
    if (!connection.isConnected())
        return;
    connection.connect(portal, portalPath, settings, u"SettingChanged"_s, this,
                       SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read = QDBusMessage::createMethodCall(portal, portalPath, settings, u"Read"_s);
    read << group_ << key_;
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isError())
            return;
        // Read() wraps the setting's own variant in a second one.
        const QVariant value = reply.value().variant();
        setValue(value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value);
    });
}

void DesktopSetting::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == group_ && key == key_)
        setValue(value.variant());
}

void DesktopSetting::setValue(const QVariant& value) {
    value_ = value;
    Q_EMIT changed();
}

} // namespace tarnwick
