#pragma once

#include <QString>
#include <QVariantMap>

class QQuickView;

namespace tarnwick {

/// Makes the software scene graph draw all views. Call it once, before the first view is made.
void configureQuick();

/// Shows the view of that name ("MenuBarView", "tour/OnboardingView") in a window, with these properties. When it
/// cannot be loaded, as without Qt's QML packages, the window has no root object, and one line on standard error says
/// why.
void loadView(QQuickView& window, const QString& name, const QVariantMap& properties);

} // namespace tarnwick
