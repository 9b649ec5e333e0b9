// Writes the application's icon as a bundle on macOS holds it: application-icon FILE.icns
#include "SymbolImage.h"

#include <QBuffer>
#include <QPainter>
#include <QSaveFile>
#include <QtEndian>

#include <array>
#include <cstdio>

using namespace tarnwick;

namespace {

/// A picture in the container. Those for 16 and 32 points on an ordinary screen would need another format than PNG;
/// without them the system scales these.
struct Entry {
    QByteArrayView type;
    int pixels;
};
constexpr std::array entries{
    Entry{"ic11", 32},  Entry{"ic12", 64},  Entry{"ic07", 128}, Entry{"ic13", 256},
    Entry{"ic08", 256}, Entry{"ic14", 512}, Entry{"ic09", 512}, Entry{"ic10", 1024},
};

/// Icons there leave room for a shadow: their shape has 824 of 1024 pixels. Ours has 60 of 64.
constexpr double share = 824.0 / 1024 * 64 / 60;

QByteArray picture(int pixels) {
    const int drawn = qRound(pixels * share);
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter(&image).drawImage((pixels - drawn) / 2, (pixels - drawn) / 2, SymbolImage::applicationIcon(drawn));
    QBuffer png;
    return png.open(QIODevice::WriteOnly) && image.save(&png, "png") ? png.data() : QByteArray();
}

/// A type of four letters, the length of all of it in four bytes, and the contents.
QByteArray chunk(QByteArrayView type, const QByteArray& contents) {
    const auto length = qToBigEndian(static_cast<quint32>(type.size() + qsizetype{sizeof(quint32)} + contents.size()));
    return type.toByteArray() + QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + contents;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: application-icon FILE.icns\n", stderr);
        return 2;
    }
    QByteArray pictures;
    for (const Entry& entry : entries)
        pictures += chunk(entry.type, picture(entry.pixels));
    const QByteArray icon = chunk("icns", pictures);
    QSaveFile file(QString::fromLocal8Bit(argv[1]));
    if (file.open(QIODevice::WriteOnly) && file.write(icon) == icon.size() && file.commit())
        return 0;
    std::fprintf(stderr, "application-icon: %s: %s\n", argv[1], qPrintable(file.errorString()));
    return 1;
}
