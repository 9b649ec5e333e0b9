pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The small preset buttons beside a list of pins.
Row {
    id: root

    required property list<pinPresetButton> presets
    required property PinListModel pins

    spacing: 6

    Repeater {
        model: root.presets
        delegate: PushButton {
            required property pinPresetButton modelData

            objectName: text
            horizontalPadding: 8
            text: modelData.caption
            onClicked: root.pins.choose(modelData.preset)
        }
    }
}
