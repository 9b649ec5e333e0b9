// Writes a contact sheet of all symbols, labelled, on a light and a dark background: symbol-sheet FILE.png
#include "SymbolImage.h"

#include <QGuiApplication>
#include <QPainter>

#include <array>

using namespace Qt::StringLiterals;
using namespace tarnwick;

namespace {

struct Ground {
    QColor window;
    QColor ink;
    QColor label;
};

constexpr std::array sizes{16, 24, 48};
constexpr int columns = 3;
constexpr int rowHeight = 60;
constexpr int columnWidth = 310;
constexpr int headerHeight = 96;

void drawRow(QPainter& painter, QPoint corner, const QString& name, const Ground& ground) {
    int x = corner.x();
    for (const int size : sizes) {
        painter.drawImage(x, corner.y() + (rowHeight - size) / 2, SymbolImage::render(name, size, ground.ink));
        x += size + 12;
    }
    painter.setPen(ground.label);
    painter.drawText(QRect(x, corner.y(), columnWidth - (x - corner.x()), rowHeight), Qt::AlignVCenter, name);
}

void drawGround(QPainter& painter, const QRect& area, const Ground& ground) {
    painter.fillRect(area, ground.window);
    int x = area.x() + 16;
    for (const int size : {16, 24, 32, 64}) {
        painter.drawImage(x, area.y() + (headerHeight - size) / 2, SymbolImage::applicationIcon(size));
        x += size + 16;
    }
    const QStringList names = SymbolImage::names();
    const qsizetype rows = (names.size() + columns - 1) / columns;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QPoint cell(static_cast<int>(i / rows) * columnWidth, static_cast<int>(i % rows) * rowHeight);
        drawRow(painter, area.topLeft() + QPoint(16, headerHeight) + cell, names.at(i), ground);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        qCritical("usage: symbol-sheet FILE.png");
        return 2;
    }
    const auto rows = static_cast<int>((SymbolImage::names().size() + columns - 1) / columns);
    const QSize half(columns * columnWidth + 16, headerHeight + rows * rowHeight + 16);
    QImage sheet(half.width() * 2, half.height(), QImage::Format_RGB32);
    QPainter painter(&sheet);
    painter.setFont(QFont(u"Inter"_s, 9));
    drawGround(painter, QRect(QPoint(0, 0), half), {QColor(0xF6F6F7), QColor(0x1F1F1F), QColor(0x6B6B6C)});
    drawGround(painter, QRect(QPoint(half.width(), 0), half), {QColor(0x26272A), QColor(0xEDEDED), QColor(0xA8A8AA)});
    painter.end();
    // With few colours and the best compression, for the documentation.
    return sheet.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither)
                   .save(QString::fromLocal8Bit(argv[1]), "png", 0)
               ? 0
               : 1;
}
