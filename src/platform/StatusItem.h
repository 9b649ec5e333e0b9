#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

namespace tarnwick {

/// What the status item shows.
struct StatusItemContent {
    QString symbolName;  ///< one of our symbols, see resources/symbols/
    QString title;       ///< text beside the icon as composed: a space and the label, or empty for the icon alone
    QString description; ///< accessibility description of the icon

    friend bool operator==(const StatusItemContent&, const StatusItemContent&) = default;
};

/// The program's one item in the desktop's status area. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Shows the content; does nothing when it is what is shown already.
    virtual void setContent(const StatusItemContent& content) = 0;

Q_SIGNALS:
    /// Either mouse button. `position` is where the click was on the screen, in device-independent pixels; null when
    /// the desktop does not report it.
    void clicked(QPoint position);
    /// Nobody can see the item any more: the output that it writes to was closed, or cannot be written to, and
    /// `problem` then says why. Emitted once, from the event loop.
    void outputClosed(const QString& problem);
};

} // namespace tarnwick
