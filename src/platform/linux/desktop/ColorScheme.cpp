#include "ColorScheme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {
bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}
} // namespace

ColorScheme::ColorScheme(const SessionBus& bus, QObject* parent)
    : QObject(parent)
    , preference_(bus, u"org.freedesktop.appearance"_s, u"color-scheme"_s)
    , dark_(tarnwick::isDark(QGuiApplication::palette())) {
    qGuiApp->installEventFilter(this);
    connect(&preference_, &DesktopSetting::changed, this, [this] {
        apply();
        update();
    });
}

std::optional<bool> ColorScheme::prefersDark() const {
    switch (preference_.value().toUInt()) {
    case 1:
        return true;
    case 2:
        return false;
    default:
        return {};
    }
}

bool ColorScheme::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void ColorScheme::apply() {
    const auto isRight = [dark = prefersDark()] {
        return dark == tarnwick::isDark(QGuiApplication::palette());
    };
    if (isRight())
        return;
    QGuiApplication::setPalette({}); // as the desktop gives it
    if (prefersDark() && !isRight())
        QGuiApplication::setPalette(*prefersDark() ? QPalette(0x3a3b3f, 0x26272a) : QPalette(0xffffff, 0xf6f6f7));
}

void ColorScheme::update() {
    const bool dark = prefersDark().value_or(tarnwick::isDark(QGuiApplication::palette()));
    if (dark == dark_)
        return;
    dark_ = dark;
    Q_EMIT changed();
}

} // namespace tarnwick
