import QtQuick
import Tarnwick

Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.hairline
}
