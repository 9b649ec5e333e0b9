pragma Singleton

import QtQuick
import Tarnwick

/// Colours and type of every view; they follow the desktop's palette and interface font while the program runs.
QtObject {
    id: theme

    readonly property SystemPalette desktop: SystemPalette {}
    readonly property bool dark: desktop.window.hslLightness < desktop.windowText.hslLightness

    readonly property color window: dark ? "#26272A" : "#F6F6F7"
    readonly property color field: dark ? "#1C1D1F" : "#FFFFFF"
    readonly property color button: dark ? "#3A3B3F" : "#FFFFFF"
    readonly property color buttonEdge: layer(dark ? 0.1 : 0.14)
    readonly property color fieldEdge: layer(dark ? 0.2 : 0.18)
    /// The chosen segment of a picker, and the handle of a slider.
    readonly property color segment: dark ? "#5A5B60" : "#FFFFFF"
    readonly property color knob: dark ? "#F2F2F3" : "#FFFFFF"
    readonly property color knobPressed: dark ? "#D6D6D8" : "#ECECEE"
    readonly property color menu: dark ? "#323337" : "#FCFCFD"
    /// Whether windows can have round corners. Their own window says so.
    property bool roundsWindows: false
    readonly property color hairline: layer(0.1)
    readonly property color windowEdge: layer(0.16)

    readonly property color primary: layer(dark ? 0.92 : 0.88)
    readonly property color secondary: layer(dark ? 0.6 : 0.56)
    /// For small text of less weight than `secondary`, such as prompts: still 4.5 : 1.
    readonly property color faint: layer(0.55)
    readonly property color tertiary: layer(dark ? 0.36 : 0.34)

    readonly property color blue: dark ? "#3D93FF" : "#0A6CFF"
    readonly property color green: dark ? "#34C759" : "#2AA84A"
    readonly property color orange: dark ? "#FF9F2E" : "#E8830C"
    readonly property color red: dark ? "#FF5D52" : "#D92D20"
    /// Behind a metric that is pinned, and around it.
    readonly property color pinned: translucent(blue, 0.08)
    readonly property color pinnedEdge: translucent(blue, 0.4)
    readonly property color purple: dark ? "#BF6BFF" : "#8F4BD8"
    readonly property color pink: dark ? "#FF5C93" : "#E0407B"
    /// Under white text, and the same in both modes: 4.6 : 1.
    readonly property color prominent: "#0A6CFF"
    readonly property color prominentText: "#FFFFFF"

    /// The desktop's interface font; Inter where the desktop leaves the choice to the font system.
    readonly property DesktopFont desktopFont: DesktopFont {}
    readonly property string desktopFamily: desktopFont.family
    readonly property string family: desktopFamily === "" || desktopFamily === "Sans" || desktopFamily === "Sans Serif"
                                     ? "Inter" : desktopFamily

    readonly property int radiusControl: 6
    readonly property int radiusRow: 7
    readonly property int radiusCard: 10
    readonly property int radiusWindow: 12

    /// What changes now is there at once.
    property bool isStill: false
    readonly property int reorderDuration: isStill ? 0 : 200
    readonly property int listDuration: isStill ? 0 : 250
    readonly property int barDuration: isStill ? 0 : 300

    /// The primary colour, which is black or white, at an opacity.
    function layer(opacity: real): color {
        return dark ? Qt.rgba(1, 1, 1, opacity) : Qt.rgba(0, 0, 0, opacity);
    }

    function translucent(base: color, opacity: real): color {
        return Qt.rgba(base.r, base.g, base.b, opacity);
    }

    /// For symbols, dots, bars and large figures.
    function color(role: int): color {
        switch (role) {
        case ColorRole.Secondary: return secondary;
        case ColorRole.Tertiary: return tertiary;
        case ColorRole.Gray: return layer(0.4);
        case ColorRole.Blue: return blue;
        case ColorRole.Green: return green;
        case ColorRole.Orange: return orange;
        case ColorRole.Red: return red;
        case ColorRole.Purple: return purple;
        case ColorRole.Pink: return pink;
        default: return primary;
        }
    }

    /// For figures of 19 pixels, in bold: 3 : 1.
    function figureColor(role: int): color {
        switch (role) {
        case ColorRole.Gray: return secondary;
        case ColorRole.Green: return dark ? green : "#238C3C";
        case ColorRole.Orange: return dark ? orange : "#BF6A08";
        default: return color(role);
        }
    }

    /// The same for small text: 4.5 : 1 on a card and on a 10 % tint of itself.
    function textColor(role: int): color {
        switch (role) {
        case ColorRole.Gray: return secondary;
        case ColorRole.Blue: return dark ? "#5CA4FF" : "#085AD4";
        case ColorRole.Green: return dark ? "#34C759" : "#1D7433";
        case ColorRole.Orange: return dark ? "#FF9F2E" : "#975508";
        case ColorRole.Red: return dark ? "#FF776E" : "#BB271C";
        case ColorRole.Purple: return dark ? "#CA84FF" : "#7F43C0";
        case ColorRole.Pink: return dark ? "#FF71A1" : "#AF3260";
        default: return color(role);
        }
    }
}
