#pragma once

#include "MenuBarItem.h"

#include <QList>
#include <QString>
#include <QtQmlIntegration>

namespace tarnwick {

/// A button that replaces the whole set of pins.
struct PinPresetButton {
    Q_GADGET
    QML_VALUE_TYPE(pinPresetButton)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString caption MEMBER caption)
    Q_PROPERTY(tarnwick::PinPreset preset MEMBER preset)

public:
    QString symbol;
    QString caption;
    PinPreset preset = PinPreset::Standard;
};

/// The buttons of the view that uses these captions: one for each preset that has one there.
[[nodiscard]] inline QList<PinPresetButton> pinPresetButtons(QString (*caption)(PinPreset)) {
    QList<PinPresetButton> buttons;
    for (const PinPreset preset : allPinPresets)
        if (const QString text = caption(preset); !text.isEmpty())
            buttons += {symbolName(preset), text, preset};
    return buttons;
}

} // namespace tarnwick
