#include "ApplicationIcon.h"

#include "SymbolImage.h"

namespace tarnwick {

QImage ApplicationIcon::drawing(int pixels) const {
    const QImage icon = SymbolImage::applicationIcon(pixels);
    return icon.isNull() ? SymbolImage::render(QStringLiteral("waveform.path.ecg"), pixels, color_) : icon;
}

} // namespace tarnwick
