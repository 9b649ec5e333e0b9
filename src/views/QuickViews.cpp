#include "QuickViews.h"

#include "controls/AccessibilityStandIns.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlError>
#include <QQuickView>

#include <cstdio>

extern void qml_register_types_Tarnwick();

using namespace Qt::StringLiterals;

namespace tarnwick {

void configureQuick() {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    installAccessibilityStandIns();
    // The linker drops a static library's type registration unless something refers to it.
    static void (*volatile const registration)() = &qml_register_types_Tarnwick;
    Q_UNUSED(registration)
}

void loadView(QQuickView& window, const QString& name, const QVariantMap& properties) {
    window.engine()->addImportPath(u"qrc:/qt/qml"_s);
    const QUrl address(u"qrc:/qt/qml/Tarnwick/"_s + name + u".qml"_s);
    // Asked before the window, which would print a line for each type that a missing one makes unavailable. The last
    // error is their cause. The window finds the types loaded.
    if (const QQmlComponent component(window.engine(), address); component.isError()) {
        std::fprintf(stderr, "tarnwick: no window can be opened: %s\n",
                     qPrintable(component.errors().constLast().toString().simplified()));
        return;
    }
    window.setInitialProperties(properties);
    window.setSource(address);
}

} // namespace tarnwick
