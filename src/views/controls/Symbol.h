#pragma once

#include "SquareImage.h"

#include <QColor>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// One of our symbols, drawn in one colour. An unknown name draws nothing.
class Symbol : public tarnwick::SquareImage { // qualified: qmltyperegistrar looks the name up as written here
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    using SquareImage::SquareImage;

    [[nodiscard]] const QString& name() const { return name_; }
    [[nodiscard]] const QColor& color() const { return color_; }
    void setName(const QString& name);
    void setColor(const QColor& color);

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

protected:
    [[nodiscard]] QImage drawing(int pixels) const override;

private:
    QString name_;
    QColor color_ = Qt::black;
};

} // namespace tarnwick
