#pragma once

#include "ViewRig.h"

#include <QSignalSpy>

#include <algorithm>

namespace tarnwick {

/// A sheet in a window of its own, with its mouse and keyboard. The user's home is the rig's folder.
class SheetRig : public ViewRig {
public:
    SheetRig() { qputenv("HOME", home.path().toLocal8Bit()); }

    /// Builds a new sheet of that name and gives it the keyboard. Its model belongs to it, as in the program.
    template <typename Model>
    void showSheet(const QString& name, const QString& property, std::unique_ptr<Model> model) {
        show(name, {{property, QVariant::fromValue(model.get())}});
        model.release()->setParent(view->rootObject());
        dismissals_ = std::make_unique<QSignalSpy>(view->rootObject(), SIGNAL(dismissed()));
    }
    [[nodiscard]] bool isDismissed() const { return dismissals_->count() == 1; }

    /// The visible items of that name, from top to bottom.
    [[nodiscard]] QList<QQuickItem*> items(const QString& name) const {
        QList<QQuickItem*> found;
        collect(view->contentItem(), name, found);
        std::sort(found.begin(), found.end(), [](const QQuickItem* one, const QQuickItem* other) {
            return one->mapToScene({0, 0}).y() < other->mapToScene({0, 0}).y();
        });
        return found;
    }
    [[nodiscard]] QQuickItem* item(const QString& name) const { return items(name).value(0); }

    void click(const QQuickItem* item) const {
        const QPointF middle = item->mapToScene({item->width() / 2, item->height() / 2});
        QTest::mouseClick(view.get(), Qt::LeftButton, {}, middle.toPoint());
    }
    void click(const QString& name) const {
        if (!item(name))
            qFatal("there is no %s", qPrintable(name));
        click(item(name));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}, int times = 1) const {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(view.get(), key, modifiers);
    }
    void type(const QString& text) const {
        for (const QChar character : text)
            QTest::keyClick(view.get(), character.toLatin1());
    }

private:
    static void collect(const QQuickItem* parent, const QString& name, QList<QQuickItem*>& found) {
        for (QQuickItem* child : parent->childItems()) {
            if (!child->isVisible())
                continue;
            if (child->objectName() == name)
                found.append(child);
            collect(child, name, found);
        }
    }

    std::unique_ptr<QSignalSpy> dismissals_;
};

} // namespace tarnwick
