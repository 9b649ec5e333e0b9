import QtQuick
import Tarnwick

/// The help text of a control, or the trend of a figure; exists only while it is wanted.
Loader {
    id: root

    property trendContent trend
    property string text: trend.text
    property bool wanted: false
    readonly property bool isShown: wanted && text !== ""

    width: parent?.width ?? 0
    height: parent?.height ?? 0
    onIsShownChanged: {
        if (isShown)
            setSource("HelpBubble.qml", { "tip": root });
        else
            source = "";
    }
}
