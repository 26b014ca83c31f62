pragma Singleton

import QtQuick
import Vorn.System

/// Every colour, font, size and duration of the window. Colours follow the system's appearance; fixed ones are the same
/// in light and dark mode. Sizes are points, mostly on a grid of four; durations are milliseconds.
QtObject {
    id: root

    readonly property bool isDark: Appearance.isDark

    readonly property color background: isDark ? "#0E0F10" : "#FFFFFF"
    readonly property color ink: isDark ? "#F4F4F5" : "#0D1214"
    readonly property color mutedTitle: isDark ? "#5E5E63" : "#B5B5B5"
    readonly property color secondary: isDark ? "#A1A1A6" : "#5F6366"
    readonly property color tertiary: isDark ? "#6E6E73" : "#9A9DA0"
    readonly property color panel: isDark ? "#1C1C1E" : "#F4F4F4"
    readonly property color card: isDark ? "#2A2A2D" : "#FFFFFF"
    readonly property color border: isDark ? "#2F2F33" : "#E3E3E3"
    readonly property color pill: isDark ? "#1F1F22" : "#F2F2F2"
    readonly property color disabledFill: isDark ? "#1E1F21" : "#F3F4F4"
    readonly property color disabledText: isDark ? "#5C5C61" : "#A9ADB0"
    readonly property color primaryFill: isDark ? "#F4F4F5" : "#0D1214"
    readonly property color primaryText: isDark ? "#0D1214" : "#FFFFFF"
    readonly property color incomingBubble: isDark ? "#3A3A3C" : "#E9E9EB"

    readonly property color outgoingBubble: "#1F8BFF"
    readonly property color success: "#2BB673"
    readonly property color warning: "#E8A33D"
    readonly property color accentStart: "#C3A3F7"
    readonly property color accentEnd: "#F27BA0"

    readonly property color bad: "#E5484D"
    readonly property color outgoingInk: "#FFFFFF"
    /// A line on a card, where `border` would not be visible in dark mode.
    readonly property color divider: isDark ? incomingBubble : border
    readonly property color focusRing: outgoingBubble
    readonly property color shadow: isDark ? "#59000000" : "#0F0D1214" // 35 % and 6 %
    /// Dims what is disabled behind a modal panel.
    readonly property color scrim: isDark ? "#73000000" : "#33000000" // 45 % and 20 %
    /// The colours of a drawn window's buttons: close, minimise, zoom.
    readonly property var windowLights: ["#FF5F57", "#FEBC2E", "#28C840"]
    readonly property color switchOn: outgoingBubble
    readonly property color switchOff: isDark ? "#4A4A4E" : "#DADADD"
    /// A QR code's plate is light in both appearances: phones read dark on light.
    readonly property color plate: "#FFFFFF"
    readonly property color plateInk: "#0D1214"

    readonly property ThemeFonts fonts: ThemeFonts {}

    readonly property int gap: 8
    readonly property int wideGap: 16
    readonly property int section: 24
    readonly property int controlHeight: 40
    readonly property int controlRadius: 12
    readonly property int cardRadius: 18
    readonly property int panelRadius: 24
    readonly property int panelPadding: 26
    readonly property int panelWidth: 440
    readonly property int formWidth: 480 // grows with the window, up to `widestForm`
    readonly property int widestForm: 560
    readonly property int idealContent: 1098 // the content width of the window as it first opens
    readonly property int widestContent: 1280
    readonly property int highestContent: 840
    /// Between the window's edges and its content. The top margin holds the mark and the account menu.
    readonly property int leftMargin: 40
    readonly property int rightMargin: 42
    readonly property int topMargin: 96
    readonly property int bottomMargin: 44

    readonly property int fade: 220 // kept with reduced motion: a fade is not motion
    readonly property int crossFade: motion(fade)
    readonly property int progressEase: motion(200)
    readonly property int quick: motion(120)
    readonly property int pulse: 1800 // one full cycle, there and back

    /// `milliseconds`, or 0 if the user has reduced motion.
    function motion(milliseconds: int): int {
        return Appearance.reducesMotion ? 0 : milliseconds;
    }
}
