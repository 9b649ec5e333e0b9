#pragma once

#include "Popover.h"

#include <QAbstractNativeEventFilter>
#include <QSize>
#include <QWindow>

namespace tarnwick {

/// The popover on X11 and Wayland desktops. On X11 it sees presses in any application, which still get them; where the
/// X server is inside a Wayland session and does not hear of them all, a clear window behind the popover catches the
/// others. On Wayland without X the loss of focus is the only sign of a press outside, and the compositor decides on
/// the position.
class DesktopPopover : public Popover, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    explicit DesktopPopover(QObject* parent = nullptr);
    ~DesktopPopover() override;

    void show(std::unique_ptr<QWindow> content, QPoint anchor) override;
    void close() override;
    [[nodiscard]] bool isShown() const override { return content_ != nullptr; }
    [[nodiscard]] bool isTranslucent() const override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    void place();
    void focusChanged(const QWindow* focus);
    [[nodiscard]] bool belongsToContent(const QWindow& window) const;

    std::unique_ptr<QWindow> content_;
    std::unique_ptr<QWindow> backdrop_; ///< catches presses; null where they are heard of anyway
    QSize size_;
    QPoint anchor_;
    bool hadFocus_ = false;
};

} // namespace tarnwick
