#pragma once

#include <QObject>

namespace tarnwick {

/// A program without a Dock icon and a menu, whose windows come to the front nevertheless when they are shown. As long
/// as it exists; make it once the application object exists.
class MacForeground : public QObject {
    Q_OBJECT

public:
    explicit MacForeground(QObject* parent);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarnwick
