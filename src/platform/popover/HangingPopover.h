#pragma once

#include "Popover.h"

#include <QSize>
#include <QWindow>

class QScreen;

namespace tarnwick {

/// The popover on every system: how it is placed and resized, when it has lost the focus, what becomes of its content.
/// What only one system knows is in the functions that it overrides.
class HangingPopover : public Popover {
    Q_OBJECT

public:
    explicit HangingPopover(QObject* parent = nullptr);

    void show(std::unique_ptr<QWindow> content, QPoint anchor) override;
    void close() override;
    [[nodiscard]] bool isShown() const override { return content_ != nullptr; }

protected:
    /// Shows the window, gives it the keyboard, and begins to report presses outside. It is a tool window without a
    /// frame, in its place.
    virtual void present(QWindow& content) = 0;
    /// Ends what present() began; the window is hidden already. A system's class closes the popover in its destructor,
    /// so that this is called.
    virtual void dismiss() = 0;
    /// The part of a screen that windows may cover, in device-independent pixels.
    [[nodiscard]] virtual QRect availableGeometry(const QScreen& screen) const;

    /// Where it hangs when it is not known where the status item is.
    [[nodiscard]] virtual QScreen* panelScreen() const;

    static void makeTranslucent(QWindow& window);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void place();
    void focusChanged(const QWindow* focus);
    [[nodiscard]] bool belongsToContent(const QWindow& window) const;

    std::unique_ptr<QWindow> content_;
    QSize size_;
    QPoint anchor_;
    bool hadFocus_ = false;
};

} // namespace tarnwick
