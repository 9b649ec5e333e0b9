#pragma once

#include "ViewRig.h"

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
        return visibleItems(view->contentItem(), "objectName", name);
    }
    [[nodiscard]] QQuickItem* item(const QString& name) const { return items(name).value(0); }

    void click(const QQuickItem* item) const { QTest::mouseClick(view.get(), Qt::LeftButton, {}, middle(item)); }
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
    std::unique_ptr<QSignalSpy> dismissals_;
};

} // namespace tarnwick
