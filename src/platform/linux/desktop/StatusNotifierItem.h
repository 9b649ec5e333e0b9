#pragma once

#include "ColorScheme.h"
#include "StatusItem.h"
#include "StatusNotifierTypes.h"
#include "linux/SessionBus.h"

#include <QDBusServiceWatcher>

#include <optional>

namespace tarnwick {

class StatusMenu;

/// The status item in the desktop's own status area: an org.kde.StatusNotifierItem under this program's unique bus
/// name. It registers itself with each watcher that appears in the session, also when the bus has been away, and
/// reports whether a host shows it. It sends nothing over the bus while text and icon stay the same.
class StatusNotifierItem : public StatusItem {
    Q_OBJECT

public:
    /// `bus` and `colors` must outlive the item.
    StatusNotifierItem(const SessionBus& bus, const ColorScheme& colors, QObject* parent = nullptr);

    void setContent(const StatusItemContent& content) override;

    [[nodiscard]] QString text() const { return text_; } ///< the title without the space before it
    [[nodiscard]] QString title() const;                 ///< the text, or the description without one
    [[nodiscard]] QString description() const { return content_.description; }
    [[nodiscard]] QList<StatusNotifierPixmap> icon() const { return icon_; }
    [[nodiscard]] StatusNotifierToolTip toolTip() const;
    /// A click at a point of the screen, in the host's coordinates.
    void click(int x, int y);

Q_SIGNALS:
    /// Whether a host shows the item. Emitted once soon after construction, then at each change.
    void hostChanged(bool present);
    void textChanged();
    void iconChanged();

private Q_SLOTS:
    void askForHost();

private:
    void makeInterface();
    void joinBus();
    void registerItem();
    void refreshIcon();
    void setHost(bool present);

    const SessionBus& bus_;
    const ColorScheme& colors_;
    QDBusServiceWatcher watcher_;
    StatusMenu* menu_ = nullptr; ///< a child; null where the item has none
    StatusItemContent content_;
    QString text_;
    QList<StatusNotifierPixmap> icon_;
    std::optional<bool> host_;
};

} // namespace tarnwick
