#pragma once

#include "StatusItem.h"

#include <memory>

namespace tarnwick {

/// The item in the menu bar: the system's own symbol of that name, and the title. A click of either mouse button is one
/// where the item is.
class MacStatusItem : public StatusItem {
    Q_OBJECT

public:
    explicit MacStatusItem(QObject* parent = nullptr);
    ~MacStatusItem() override;

    void setContent(const StatusItemContent& content) override;
    /// The middle of the item, in device-independent screen pixels; null while it is on no screen.
    [[nodiscard]] QPoint place() const;

private:
    struct Native;
    std::unique_ptr<Native> native_;
    StatusItemContent content_;
};

} // namespace tarnwick
