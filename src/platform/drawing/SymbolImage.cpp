#include "SymbolImage.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

QImage transparentSquare(int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QImage SymbolImage::render(const QString& symbolName, int pixels, const QColor& tint) {
    QImage image = transparentSquare(pixels);
    const QString path = u":/symbols/%1.svg"_s.arg(symbolName);
    if (!QFileInfo::exists(path))
        return image;
    QSvgRenderer drawing(path);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), tint);
    return image;
}

QImage SymbolImage::applicationIcon(int pixels) {
    QSvgRenderer drawing(u":/tarnwick.svg"_s);
    if (!drawing.isValid())
        return {};
    QImage image = transparentSquare(pixels);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

QStringList SymbolImage::names() {
    QStringList names = QDir(u":/symbols"_s).entryList({u"*.svg"_s}, QDir::Files);
    for (QString& name : names)
        name.chop(4);
    names.sort();
    return names;
}

} // namespace tarnwick
