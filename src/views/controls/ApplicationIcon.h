#pragma once

#include "SquareImage.h"

#include <QColor>
#include <QtQmlIntegration>

namespace tarnwick {

/// The application's icon in its own colours; where there is none, the product's symbol.
class ApplicationIcon : public tarnwick::SquareImage { // qualified: qmltyperegistrar looks the name up as written here
    Q_OBJECT
    QML_ELEMENT
    /// Of the symbol.
    Q_PROPERTY(QColor color MEMBER color_)

public:
    using SquareImage::SquareImage;

protected:
    [[nodiscard]] QImage drawing(int pixels) const override;

private:
    QColor color_ = Qt::black;
};

} // namespace tarnwick
