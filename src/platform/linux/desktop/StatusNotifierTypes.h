#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace tarnwick {

/// One size of an icon as the bus carries it: (iiay), the pixels ARGB32 in network byte order.
struct StatusNotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
    friend bool operator==(const StatusNotifierPixmap&, const StatusNotifierPixmap&) = default;
};

/// (sa(iiay)ss). Hosts show the title as plain text and read the description as markup.
struct StatusNotifierToolTip {
    QString iconName;
    QList<StatusNotifierPixmap> iconPixmap;
    QString title;
    QString description;
};

/// `image` must be Format_ARGB32.
[[nodiscard]] StatusNotifierPixmap statusNotifierPixmap(const QImage& image);

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip);

/// Makes the types known to the bus. May be called more than once.
void registerStatusNotifierTypes();

} // namespace tarnwick

Q_DECLARE_METATYPE(tarnwick::StatusNotifierPixmap)
Q_DECLARE_METATYPE(tarnwick::StatusNotifierToolTip)
