#pragma once

#include "../computer/SampleComputer.h"
#include "../store/StoreRig.h"
#include "PopoverView.h"
#include "UIState.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

namespace tarnwick {

/// The first item with that object name among `root` and its descendants; null when there is none.
[[nodiscard]] inline QQuickItem* findItem(QQuickItem* root, const QString& name) {
    if (root->objectName() == name)
        return root;
    for (QQuickItem* child : root->childItems())
        if (QQuickItem* found = findItem(child, name))
            return found;
    return nullptr;
}

/// Clicks the middle of a control, after scrolling it into view.
inline void press(QQuickWindow& window, const QString& name) {
    QQuickItem* control = findItem(window.contentItem(), name);
    QVERIFY2(control, qPrintable(name));
    control->forceActiveFocus(Qt::TabFocusReason);
    QTest::mouseClick(&window, Qt::LeftButton, {},
                      control->mapToScene({control->width() / 2, control->height() / 2}).toPoint());
}

/// From here on, a warning from QML fails the test function.
inline void failOnQmlWarnings() {
    QTest::failOnWarning(QRegularExpression(QStringLiteral("qrc:")));
}

/// One view of the module in a window, on a store in a folder of its own.
class ViewRig : public StoreRig {
public:
    UIState ui;
    SampleComputer sample;
    std::unique_ptr<QQuickView> view;

    ViewRig() {
        static const bool configured = (configureQuick(), true);
        Q_UNUSED(configured)
        failOnQmlWarnings();
        startWith({});
    }

    void show(const QString& name, const QVariantMap& properties) {
        view = std::make_unique<QQuickView>();
        view->engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
        view->setInitialProperties(properties);
        view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/%1.qml").arg(name)));
        QVERIFY(view->rootObject());
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }

    /// As `settings.json` has them.
    [[nodiscard]] AppSettings savedSettings() const {
        return std::get<AppSettings>(decodeSettings(read(QStringLiteral("settings.json"))));
    }
    [[nodiscard]] MenuBarItemSet savedPins() const { return savedSettings().pinnedMenuBarItems; }
};

} // namespace tarnwick
