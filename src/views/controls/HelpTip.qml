import QtQuick

/// The help text of a control; exists only while it is wanted.
Loader {
    id: root

    required property string text
    property bool wanted: false

    function follow() {
        if (wanted && text !== "")
            setSource("HelpBubble.qml", { "text": text });
        else
            source = "";
    }

    width: parent?.width ?? 0
    height: parent?.height ?? 0
    onWantedChanged: follow()
    onTextChanged: if (wanted) follow()
}
