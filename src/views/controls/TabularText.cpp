#include "TabularText.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// The views use a dozen fonts, again and again.
qreal widestDigit(const QFont& font, const QFontMetricsF& metrics) {
    static QHash<QFont, qreal> known;
    qreal& widest = known[font];
    if (widest > 0)
        return widest;
    for (const QChar digit : u"0123456789"_s)
        widest = std::max(widest, metrics.horizontalAdvance(digit));
    return widest;
}

} // namespace

void TabularText::setText(const QString& text) {
    if (text_ == text)
        return;
    text_ = text;
    arrange();
    Q_EMIT textChanged();
}

void TabularText::setFont(const QFont& font) {
    QFont unhinted = font; // as the toolkit's texts are: hinted glyphs have widths of whole pixels
    unhinted.setHintingPreference(QFont::PreferNoHinting);
    if (font_ == unhinted)
        return;
    font_ = unhinted;
    arrange();
    Q_EMIT fontChanged();
}

void TabularText::setColor(const QColor& color) {
    if (color_ == color)
        return;
    color_ = color;
    update();
    Q_EMIT colorChanged();
}

void TabularText::componentComplete() {
    QQuickPaintedItem::componentComplete();
    arrange();
}

void TabularText::arrange() {
    if (!isComponentComplete())
        return; // its text and font are set one after the other
    const QFontMetricsF metrics(font_);
    const qreal cell = widestDigit(font_, metrics);
    runs_.clear();
    qreal x = 0;
    for (qsizetype start = 0, end = 0; start < text_.size(); start = end) {
        const bool digit = isDigit(text_[start]);
        for (end = start + 1; !digit && end < text_.size() && !isDigit(text_[end]);)
            ++end;
        const qreal advance = metrics.horizontalAdvance(text_.mid(start, end - start));
        const qreal width = digit ? cell : advance;
        runs_ += {start, end - start, x + (width - advance) / 2, x + width};
        x += width;
    }
    setImplicitSize(std::ceil(x), std::ceil(metrics.ascent()) + std::ceil(metrics.descent()));
    update();
}

void TabularText::paint(QPainter* painter) {
    const qreal ratio = painter->deviceTransform().m11(); // device pixels in one of ours
    const QSize pixels = (size() * ratio).toSize();
    if (pixels.isEmpty())
        return;
    // Glyphs drawn on a clear ground are heavier than the toolkit's. On an opaque one they are as it draws them.
    const bool isLight = color_.lightness() > 127;
    QImage ground(pixels, QImage::Format_RGB32);
    ground.setDevicePixelRatio(ratio);
    ground.fill(isLight ? Qt::black : Qt::white);
    QPainter pen(&ground);
    pen.setFont(font_);
    QColor ink = isLight ? Qt::white : Qt::black;
    ink.setAlphaF(color_.alphaF());
    pen.setPen(ink);
    drawRuns(pen);
    pen.end();
    if (!isLight)
        ground.invertPixels();
    ground.convertTo(QImage::Format_Grayscale8);
    ground.reinterpretAsFormat(QImage::Format_Alpha8);

    painter->fillRect(boundingRect(), QColor(color_.rgb()));
    painter->setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter->drawImage(QPointF(), ground);
}

void TabularText::drawRuns(QPainter& pen) const {
    const QFontMetricsF metrics(font_);
    const qreal baseline = std::floor((height() - implicitHeight()) / 2) + std::ceil(metrics.ascent());
    const bool fits = implicitWidth() <= width();
    const qreal room = fits ? width() : width() - metrics.horizontalAdvance(u'\u2026');
    for (const Run& run : runs_) {
        if (!fits && run.end > room) {
            const QString rest = text_.mid(run.start);
            pen.drawText(QPointF(run.x, baseline), metrics.elidedText(rest, Qt::ElideRight, width() - run.x));
            return;
        }
        pen.drawText(QPointF(run.x, baseline), text_.mid(run.start, run.length));
    }
}

} // namespace tarnwick
