#include "DesktopStatusItem.h"

namespace tarnwick {

DesktopStatusItem::DesktopStatusItem(const SessionBus& bus, std::chrono::milliseconds patience, QObject* parent)
    : StatusItem(parent), colors_(bus), font_(bus), notifier_(bus, colors_) {
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, &DesktopStatusItem::showStrip);
    connect(&notifier_, &StatusNotifierItem::hostChanged, this, &DesktopStatusItem::hostChanged);
    connect(&notifier_, &StatusItem::clicked, this, &StatusItem::clicked);
}

void DesktopStatusItem::setContent(const StatusItemContent& content) {
    if (content == content_)
        return;
    content_ = content;
    notifier_.setContent(content);
    if (strip_)
        strip_->setContent(content);
}

void DesktopStatusItem::hostChanged(bool present) {
    if (!present) {
        patience_.start();
        return;
    }
    patience_.stop();
    strip_.reset();
}

void DesktopStatusItem::showStrip() {
    if (!FloatingStatusItem::isPossible())
        return; // a second launch opens the popover
    strip_ = std::make_unique<FloatingStatusItem>(colors_);
    connect(strip_.get(), &StatusItem::clicked, this, &StatusItem::clicked);
    strip_->setContent(content_);
}

} // namespace tarnwick
