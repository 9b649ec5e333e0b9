#pragma once

#include <QObject>
#include <QPoint>

#include <memory>

class QWindow;

namespace tarnwick {

/// A frameless window hung from a point of the screen, kept inside that screen and out of task bars. It reports a press
/// outside and the loss of focus; whether that closes it is its owner's decision. Main thread only.
class Popover : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows `content` (its size is the popover's, now and when it grows or shrinks) hanging from `anchor`, in
    /// device-independent screen pixels; a null anchor means the top right of the primary screen. Destroys the content
    /// when the popover closes.
    virtual void show(std::unique_ptr<QWindow> content, QPoint anchor) = 0;
    /// Closes it when it is shown. May be called from inside the content, which is destroyed on return to the event
    /// loop.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Whether content may be translucent now, with a clear background and rounded corners. If not, clear areas would
    /// show black, so content has to fill its rectangle.
    [[nodiscard]] virtual bool isTranslucent() const { return false; }

Q_SIGNALS:
    void pressedOutside(); ///< a mouse button went down outside
    void lostFocus();      ///< the focus went to a window that does not belong to the content
};

/// Gives back what windows leave behind when they are gone: the fonts that they loaded, and freed memory. What is still
/// shown loads its fonts again. Main thread; takes some milliseconds.
void returnWindowMemory();

} // namespace tarnwick
