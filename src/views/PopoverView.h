#pragma once

#include "PopoverModel.h"

#include <QQuickView>

#include <memory>

namespace tarnwick {

/// Settles how all views are drawn: by the software scene graph. Once, before the first view is made.
void configureQuick();

/// The popover's content: a window 400 wide and as high as its content asks, with a QML engine of its own that goes
/// when it goes.
class PopoverView : public QQuickView {
    Q_OBJECT

public:
    /// Both must outlive the view.
    PopoverView(ServerStore& store, UIState& ui, ViewCollaborators collaborators);

    ~PopoverView() override;

    /// Whether the window's corners are round and transparent; true at first. For screens without translucency: false.
    void setRounded(bool rounded);

Q_SIGNALS:
    /// The user asked to close it: Escape.
    void closeRequested();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The keyboard passes items in the order in which they stand in their parent, and a list keeps none.
    void orderCards();

    PopoverModel model_;
};

} // namespace tarnwick
