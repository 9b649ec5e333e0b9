#pragma once

#include <QObject>
#include <QPoint>

#include <memory>

class QWindow;

namespace tarnwick {

/// A frameless window hung from a point of the screen, kept inside that screen and out of task bars. It closes by
/// itself on a click outside and on loss of focus. Main thread only.
class Popover : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows `content` (its size is the popover's, now and when it grows or shrinks) hanging from `anchor`, in
    /// device-independent screen pixels; a null anchor means the top right of the primary screen. Takes the content,
    /// and destroys it when the popover closes.
    virtual void show(std::unique_ptr<QWindow> content, QPoint anchor) = 0;
    /// Closes it when it is shown.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Content shown now may be translucent: its owner leaves its background clear and draws rounded corners. Without
    /// it what is clear would be black, so content fills its rectangle.
    [[nodiscard]] virtual bool isTranslucent() const { return false; }

Q_SIGNALS:
    /// A mouse button went down outside, or the program lost the keyboard: the owner decides what that means.
    void pressedOutside();
    void lostFocus();
    /// It is closed, by whatever path; the content is gone. close() may be called from inside the content, which then
    /// goes, and this is said, on return to the event loop.
    void didClose();
};

} // namespace tarnwick
