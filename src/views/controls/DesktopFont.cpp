#include "DesktopFont.h"

#include <QEvent>
#include <QFont>
#include <QGuiApplication>

namespace tarnwick {

DesktopFont::DesktopFont(QObject* parent) : QObject(parent), family_(QGuiApplication::font().family()) {
    qGuiApp->installEventFilter(this);
}

bool DesktopFont::eventFilter(QObject* watched, QEvent* event) {
    // The second comes to each window when Qt has read the desktop's settings again, without the first.
    if (event->type() == QEvent::ApplicationFontChange || event->type() == QEvent::ThemeChange) {
        family_ = QGuiApplication::font().family();
        Q_EMIT familyChanged();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarnwick
