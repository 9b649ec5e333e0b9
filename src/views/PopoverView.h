#pragma once

#include "PopoverModel.h"
#include "QuickViews.h"

#include <QQuickView>

#include <memory>

namespace tarnwick {

/// The popover's content: a window 400 wide and as high as its content asks, with a QML engine of its own.
/// configureQuick() has been called before.
class PopoverView : public QQuickView {
    Q_OBJECT

public:
    /// Store and state must outlive the view. See loadView().
    PopoverView(ServerStore& store, UIState& ui, ViewCollaborators collaborators);

    ~PopoverView() override;

    /// Whether the window's corners are round and transparent; true at first. Screens without translucency need false.
    void setRounded(bool rounded);

Q_SIGNALS:
    /// The user asked to close it: Escape.
    void closeRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Tab visits items in the order of their parent's children, and a list view leaves its delegates in any order.
    void orderCards();

    PopoverModel model_;
};

} // namespace tarnwick
