pragma ComponentBehavior: Bound

import QtQuick
import Tarnwick

/// The welcome tour.
FocusScope {
    id: root

    required property OnboardingModel tour
    property real radius: 0
    /// Off until the view is complete: its first step shows at once, and later ones fade in.
    property bool fades: false
    /// The user has finished it.
    signal completed

    implicitWidth: 540
    implicitHeight: 510
    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: title.text
    Accessible.description: root.tour.content.stepSubtitle
    Component.onCompleted: fades = true

    Connections {
        target: root.tour
        function onCompleted() {
            root.completed();
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: Theme.window
    }
    Band {
        id: header

        width: root.width
        height: 48
        radius: root.radius

        ApplicationIcon {
            id: icon

            x: 18
            anchors.verticalCenter: parent.verticalCenter
            side: 28
            color: Theme.blue
        }
        PlainText {
            id: title

            x: 56
            y: 8
            text: root.tour.words.title
            size: 14
            font.weight: Font.Bold
        }
        PlainText {
            objectName: "stepSubtitle"
            x: 56
            y: 25
            text: root.tour.content.stepSubtitle
            color: Theme.secondary
        }
        Row {
            anchors.right: parent.right
            anchors.rightMargin: 18
            anchors.verticalCenter: parent.verticalCenter
            spacing: 5

            Repeater {
                model: root.tour.steps
                delegate: Rectangle {
                    required property int index

                    width: 7
                    height: 7
                    radius: 3.5
                    color: root.tour.content.dot === index ? Theme.blue : Theme.layer(0.15)
                }
            }
        }
    }
    Divider {
        y: header.height
        width: root.width
    }

    // A step exists only while it can be seen.
    Repeater {
        model: ["TourWelcomeStep.qml", "TourServersStep.qml", "TourHardwareStep.qml", "TourPinningStep.qml",
                "TourAllSetStep.qml"]
        delegate: Loader {
            required property int index
            required property string modelData
            readonly property bool current: root.tour.content.page === index

            y: header.height + 1
            width: root.width
            height: navigation.y - 1 - y
            active: current || opacity > 0
            enabled: current
            opacity: current ? 1 : 0
            Component.onCompleted: setSource(modelData, { "tour": root.tour, "step": root.tour.steps[index] })

            Behavior on opacity {
                enabled: root.fades
                NumberAnimation {
                    duration: 200
                    easing.type: Easing.InOutQuad
                }
            }
        }
    }

    Divider {
        y: navigation.y - 1
        width: root.width
    }
    Band {
        id: navigation

        y: root.height - height
        width: root.width
        height: 46
        radius: root.radius
        isFoot: true

        PushButton {
            objectName: "back"
            x: 18
            anchors.verticalCenter: parent.verticalCenter
            visible: root.tour.content.showsBack
            isLarge: true
            text: root.tour.words.back
            onClicked: root.tour.back()
        }
        PrimaryButton {
            objectName: "next"
            anchors.right: parent.right
            anchors.rightMargin: 18
            anchors.verticalCenter: parent.verticalCenter
            visible: root.tour.content.nextCaption !== ""
            focus: true
            isLarge: true
            text: root.tour.content.nextCaption
            symbol: "chevron.right"
            symbolLast: true
            onClicked: root.tour.next()
        }
    }
}
