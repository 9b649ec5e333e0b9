#pragma once

#include <QObject>
#include <QPoint>
#include <QWindow>

#include <memory>

namespace tarnwick {

/// A frameless window hung from a point of the screen, kept inside that screen and out of task bars. It closes by
/// itself on a click outside and on loss of focus. Main thread only.
class Popover : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows `content` (its size is the popover's) hanging from `anchor`, in device-independent screen pixels; a null
    /// anchor means the top right of the primary screen. Takes the content, and destroys it when the popover closes.
    virtual void show(std::unique_ptr<QWindow> content, QPoint anchor) = 0;
    /// Closes it when it is shown.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;

Q_SIGNALS:
    /// A mouse button went down outside, or the program lost the keyboard: the owner decides what that means.
    void pressedOutside();
    void lostFocus();
    /// It is closed, by whatever path; the content is gone.
    void didClose();
};

} // namespace tarnwick
