#include "StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace tarnwick {

StatusNotifierPixmap statusNotifierPixmap(const QImage& image) {
    StatusNotifierPixmap pixmap{image.width(), image.height(), {}};
    constexpr qsizetype bytesPerPixel = 4;
    const qsizetype rowBytes = image.width() * bytesPerPixel;
    pixmap.pixels.resize(rowBytes * image.height());
    for (int row = 0; row < image.height(); ++row)
        qToBigEndian<quint32>(image.constScanLine(row), image.width(), pixmap.pixels.data() + row * rowBytes);
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusNotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.description;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusNotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.description;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<StatusNotifierPixmap>();
    qDBusRegisterMetaType<QList<StatusNotifierPixmap>>();
    qDBusRegisterMetaType<StatusNotifierToolTip>();
}

} // namespace tarnwick
