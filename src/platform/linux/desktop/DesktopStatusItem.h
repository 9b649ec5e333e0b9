#pragma once

#include "ColorScheme.h"
#include "FloatingStatusItem.h"
#include "InterfaceFont.h"
#include "StatusItem.h"
#include "StatusNotifierItem.h"

#include <QTimer>

#include <chrono>
#include <memory>

namespace tarnwick {

/// The status item of a graphical desktop: in its status area where it has one, else as a floating strip. It changes
/// between the two whenever a host of status items comes or goes. Where a strip is not possible either, there is
/// nothing to click.
class DesktopStatusItem : public StatusItem {
    Q_OBJECT

public:
    /// `bus` must outlive it. `patience`: how long the desktop may be without a host before the strip appears. A panel
    /// that starts or restarts needs a moment.
    explicit DesktopStatusItem(const SessionBus& bus = SessionBus::shared(),
                               std::chrono::milliseconds patience = std::chrono::seconds(2), QObject* parent = nullptr);

    void setContent(const StatusItemContent& content) override;
    /// Whether the user sees the strip.
    [[nodiscard]] bool isFloating() const { return strip_ != nullptr; }

private:
    void hostChanged(bool present);
    void showStrip();

    ColorScheme colors_;
    InterfaceFont font_;
    StatusNotifierItem notifier_;
    std::unique_ptr<FloatingStatusItem> strip_;
    QTimer patience_;
    StatusItemContent content_;
};

} // namespace tarnwick
