#pragma once

#include "HangingPopover.h"

#include <QAbstractNativeEventFilter>

#include <memory>
#include <vector>

namespace tarnwick {

/// The popover on X11 and Wayland desktops. On X11 it sees presses in any application, which still get them; where the
/// X server is inside a Wayland session and does not hear of them all, clear windows catch the others. On Wayland
/// without X the loss of focus is the only sign of a press outside, and the compositor decides on the position.
class DesktopPopover : public HangingPopover, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    using HangingPopover::HangingPopover;
    ~DesktopPopover() override;

    [[nodiscard]] bool isTranslucent() const override;

private:
    void present(QWindow& content) override;
    void dismiss() override;
    [[nodiscard]] QRect availableGeometry(const QScreen& screen) const override;
    [[nodiscard]] QScreen* panelScreen() const override;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
    [[nodiscard]] static std::unique_ptr<QWindow> makeCatcher(int type, const QRect& place);
    void makeCatchers();

    std::vector<std::unique_ptr<QWindow>> catchers_; ///< catch presses that are not heard of otherwise
};

} // namespace tarnwick
