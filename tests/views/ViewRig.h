#pragma once

#include "../computer/SampleComputer.h"
#include "../store/StoreRig.h"
#include "PopoverView.h"
#include "UIState.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

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

/// The visible items below `root` of which a property is this text, from top to bottom; not those inside of another.
[[nodiscard]] inline QList<QQuickItem*> visibleItems(const QQuickItem* root, const char* property,
                                                     const QString& text) {
    QList<QQuickItem*> found;
    for (QQuickItem* child : root->childItems())
        if (child->isVisible() && child->property(property).toString() == text)
            found += child;
        else if (child->isVisible())
            found += visibleItems(child, property, text);
    std::ranges::stable_sort(found, {}, [](const QQuickItem* item) { return item->mapToScene({}).y(); });
    return found;
}

/// In the window's coordinates.
[[nodiscard]] inline QPoint middle(const QQuickItem* item) {
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

/// Clicks the middle of a control, after scrolling it into view.
inline void press(QQuickWindow& window, const QString& name) {
    QQuickItem* control = findItem(window.contentItem(), name);
    QVERIFY2(control, qPrintable(name));
    control->forceActiveFocus(Qt::TabFocusReason);
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle(control));
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

    /// Shows the view of that name and gives it the keyboard.
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
