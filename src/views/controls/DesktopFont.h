#pragma once

#include <QObject>
#include <QtQmlIntegration>

namespace tarnwick {

/// The application's font, which the desktop may change while a window is open.
class DesktopFont : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Its family.
    Q_PROPERTY(QString family MEMBER family_ NOTIFY familyChanged)

public:
    explicit DesktopFont(QObject* parent = nullptr);

Q_SIGNALS:
    void familyChanged();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    QString family_;
};

} // namespace tarnwick
