#pragma once

#include "HangingPopover.h"

#include <functional>

namespace tarnwick {

/// The popover on macOS. It hangs from its item wherever it was opened from. The system tells of presses in other
/// applications; one in a window of ours, and another application that comes forward, take the focus away.
class MacPopover : public HangingPopover {
    Q_OBJECT

public:
    /// `itemPlace`: the middle of the status item; null while it is on no screen.
    explicit MacPopover(std::function<QPoint()> itemPlace, QObject* parent = nullptr);
    ~MacPopover() override;

    void show(std::unique_ptr<QWindow> content, QPoint anchor) override;
    [[nodiscard]] bool isTranslucent() const override { return true; }

private:
    void present(QWindow& content) override;
    void dismiss() override;

    struct Monitor;
    const std::function<QPoint()> itemPlace_;
    std::unique_ptr<Monitor> monitor_; ///< while it is shown
};

} // namespace tarnwick
