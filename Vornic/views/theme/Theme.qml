// Sizes, colours and type, named once. The accent is the current board's colour.
pragma Singleton
import QtQuick

QtObject {
    property bool dark: false
    property color accent: "#5E5CE6"
    // Whether the user wants nothing to move by itself.
    property bool still: false

    readonly property color window: dark ? "#1C1C1F" : "#F4F4F6"
    readonly property color surface: dark ? "#28282C" : "#FFFFFF"
    readonly property color raised: dark ? "#505058" : "#FFFFFF"
    readonly property color track: dark ? "#333338" : "#DEDEE3"
    readonly property color hover: dark ? "#323237" : "#ECECF0"
    readonly property color line: dark ? "#3C3C42" : "#DCDCE1"
    // What a slider runs in: seen on every ground, 3 to 1 at least.
    readonly property color groove: edge
    // What a control or a window ends at: seen, 3 to 1 at least.
    readonly property color edge: dark ? "#84848E" : "#7C7C85"
    readonly property color text: dark ? "#F4F4F6" : "#1B1B1F"
    readonly property color secondary: dark ? "#B0B0B8" : "#5F5F68"
    readonly property color warning: dark ? "#FFB84D" : "#8F4E00"
    readonly property color focus: dark ? "#8AB4FF" : "#1A5FD0"

    // What is chosen.
    readonly property color selected: dark ? "#2B3850" : "#E6EFFC"

    // Accents come in any brightness: what stands on one is black or white, whichever reads better.
    readonly property color accentInk: ink(accent)
    // The accent as lines are drawn in it on a surface: as near to the text as it has to be seen.
    readonly property color graph: seen(accent)

    readonly property int small: 12
    readonly property int body: 14
    readonly property int title: 16
    readonly property int heading: 22

    readonly property int gap: 8
    readonly property int margin: 16
    readonly property int radius: 8
    readonly property int control: 30

    readonly property int quick: still ? 0 : 120
    // What takes longer says so, in ms.
    readonly property int slow: 500
    // What is down for longer is held, in ms.
    readonly property int hold: 300

    // Sounds of a board tell themselves apart by these, in turn, and by their letters.
    readonly property var soundColours: ["#5E8BFF", "#FF9F40", "#3CC58B", "#C77DFF", "#FF6B8B", "#2BB7C9", "#D0B000", "#9A8C7C"]

    function soundColour(index) {
        return soundColours[index % soundColours.length];
    }

    function ink(ground) {
        return luminance(ground) > 0.18 ? "#000000" : "#FFFFFF";
    }
    function seen(wanted) {
        for (let share = 0; share < 1; share += 0.1) {
            const mixed = Qt.rgba(wanted.r + (text.r - wanted.r) * share, wanted.g + (text.g - wanted.g) * share,
                                  wanted.b + (text.b - wanted.b) * share, 1);
            const a = luminance(mixed) + 0.05, b = luminance(surface) + 0.05;
            if (Math.max(a, b) / Math.min(a, b) >= 3)
                return mixed;
        }
        return text;
    }

    // Relative luminance, 0 to 1 (WCAG 2.1).
    function luminance(c) {
        const linear = v => v <= 0.04045 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4);
        return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
    }
}
