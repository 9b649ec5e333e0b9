#include "ColorScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
const auto portal = u"org.freedesktop.portal.Desktop"_s;
const auto portalPath = u"/org/freedesktop/portal/desktop"_s;
const auto settings = u"org.freedesktop.portal.Settings"_s;
const auto appearance = u"org.freedesktop.appearance"_s;
const auto colorScheme = u"color-scheme"_s;

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}
} // namespace

ColorScheme::ColorScheme(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), dark_(tarnwick::isDark(QGuiApplication::palette())) {
    qGuiApp->installEventFilter(this);
    qRegisterMetaType<QDBusVariant>(); // connect() finds a slot's types by name, and may be the first to need this one
    QDBusConnection connection = bus;
    connection.connect(portal, portalPath, settings, u"SettingChanged"_s, this,
                       SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read = QDBusMessage::createMethodCall(portal, portalPath, settings, u"Read"_s);
    read << appearance << colorScheme;
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isError())
            return;
        // Read() wraps the setting's own variant in a second one.
        const QVariant value = reply.value().variant();
        setPreference((value.canConvert<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value).toUInt());
    });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance && key == colorScheme)
        setPreference(value.variant().toUInt());
}

bool ColorScheme::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void ColorScheme::setPreference(uint preference) {
    preference_ = preference;
    apply();
    update();
}

void ColorScheme::apply() {
    const bool isStated = preference_ == 1 || preference_ == 2;
    const bool dark = preference_ == 1;
    if (isStated && dark == tarnwick::isDark(QGuiApplication::palette()))
        return;
    QGuiApplication::setPalette({}); // as the desktop gives it
    if (isStated && dark != tarnwick::isDark(QGuiApplication::palette()))
        QGuiApplication::setPalette(dark ? QPalette(0x3a3b3f, 0x26272a) : QPalette(0xffffff, 0xf6f6f7));
}

void ColorScheme::update() {
    const bool dark = preference_ == 1 || (preference_ != 2 && tarnwick::isDark(QGuiApplication::palette()));
    if (dark == dark_)
        return;
    dark_ = dark;
    Q_EMIT changed();
}

} // namespace tarnwick
