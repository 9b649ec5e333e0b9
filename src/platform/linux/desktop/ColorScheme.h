#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

namespace tarnwick {

/// Whether the desktop is light or dark: by its stated preference (org.freedesktop.appearance), or, where it states
/// none, by the application's palette. Where Qt does not follow a stated preference, this gives the application a light
/// or dark palette, so that its windows do. Main thread only.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    explicit ColorScheme(const QDBusConnection& bus, QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const { return dark_; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void setPreference(uint preference);
    void apply();
    void update();

    uint preference_ = 0; ///< 0 none, 1 dark, 2 light
    bool dark_ = false;
};

} // namespace tarnwick
