import QtQuick
import Tarnwick

/// A checkbox that pins a metric to the status item.
CheckRow {
    id: root

    required property pinRow content
    required property PinListModel pins

    objectName: content.title
    text: content.title
    detail: content.example
    detailTint: content.isPinned ? Theme.textColor(ColorRole.Blue) : Theme.secondary
    checked: content.isPinned
    Accessible.description: content.example
    onToggled: pins.toggle(content.item)
}
