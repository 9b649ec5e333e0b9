#pragma once

#include "linux/SessionBus.h"

#include <QDBusVariant>
#include <QObject>
#include <QVariant>

namespace tarnwick {

/// One setting of the desktop, as the session's portal gives it (org.freedesktop.portal.Settings). Main thread only.
class DesktopSetting : public QObject {
    Q_OBJECT

public:
    /// `bus` must outlive it.
    DesktopSetting(const SessionBus& bus, QString group, QString key, QObject* parent = nullptr);

    /// Invalid while no portal has given it; the last one while there is no bus.
    [[nodiscard]] const QVariant& value() const { return value_; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void read();
    void setValue(const QVariant& value);

    const SessionBus& bus_;
    const QString group_;
    const QString key_;
    QVariant value_;
};

} // namespace tarnwick
