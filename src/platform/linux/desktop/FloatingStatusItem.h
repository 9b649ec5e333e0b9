#pragma once

#include "ColorScheme.h"
#include "StatusItem.h"

#include <memory>

namespace tarnwick {

/// The status item of a desktop without a status area: a small strip at the top right of the primary screen, above all
/// windows, that never takes the focus. It can be dragged elsewhere; when the screen changes, it goes back.
class FloatingStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// False on Wayland without X: a window there can neither be placed nor kept above others.
    [[nodiscard]] static bool isPossible();
    /// `colors` must outlive the item. Nothing is shown before the first content.
    explicit FloatingStatusItem(const ColorScheme& colors, QObject* parent = nullptr);
    ~FloatingStatusItem() override;

    void setContent(const StatusItemContent& content) override;

private:
    class Strip;
    std::unique_ptr<Strip> strip_;
};

} // namespace tarnwick
