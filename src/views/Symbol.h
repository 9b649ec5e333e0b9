#pragma once

#include <QColor>
#include <QImage>
#include <QQuickItem>
#include <QString>

namespace tarnwick {

/// One of our symbols, drawn in one colour at the window's device pixel ratio: as wide as it is high, in the middle of
/// the item. An unknown name draws nothing.
class Symbol : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Side of the drawing; also the implicit size.
    Q_PROPERTY(qreal side READ side WRITE setSide NOTIFY sideChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& name() const { return name_; }
    [[nodiscard]] const QColor& color() const { return color_; }
    [[nodiscard]] qreal side() const { return side_; }
    void setName(const QString& name);
    void setColor(const QColor& color);
    void setSide(qreal side);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void sideChanged();

protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;

private:
    QString name_;
    QColor color_ = Qt::black;
    qreal side_ = 14;
    QImage image_;
    bool imageChanged_ = false;
};

} // namespace tarnwick
