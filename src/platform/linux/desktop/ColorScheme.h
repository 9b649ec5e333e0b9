#pragma once

#include "DesktopSetting.h"

#include <QObject>

#include <optional>

namespace tarnwick {

/// Whether the desktop is light or dark: by its stated preference (org.freedesktop.appearance), or, where it states
/// none, by the application's palette. Where Qt does not follow a stated preference, this gives the application a light
/// or dark palette, so that its windows do. Main thread only.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    /// `bus` must outlive it.
    explicit ColorScheme(const SessionBus& bus, QObject* parent = nullptr);

    [[nodiscard]] bool isDark() const { return dark_; }

Q_SIGNALS:
    void changed();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The stated preference.
    [[nodiscard]] std::optional<bool> prefersDark() const;
    void apply();
    void update();

    DesktopSetting preference_;
    bool dark_ = false;
};

} // namespace tarnwick
