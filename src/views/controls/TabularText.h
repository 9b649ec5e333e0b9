#pragma once

#include <QColor>
#include <QFont>
#include <QList>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// One line of plain text whose digits are all equally wide, so that nothing moves while a figure changes. It is elided
/// at the end when it is wider than the item. Works with any font: Qt gives access to a font's own tabular digits only
/// from 6.7 on.
class TabularText : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] const QFont& font() const { return font_; }
    [[nodiscard]] const QColor& color() const { return color_; }
    void setText(const QString& text);
    void setFont(const QFont& font);
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;
    void componentComplete() override;

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void colorChanged();

private:
    /// A digit, or the characters between two digits.
    struct Run {
        qsizetype start;
        qsizetype length;
        qreal x; ///< of its first glyph
        qreal end;
    };
    void arrange();
    void drawRuns(QPainter& pen) const;

    QString text_;
    QFont font_;
    QColor color_ = Qt::black;
    QList<Run> runs_;
};

} // namespace tarnwick
