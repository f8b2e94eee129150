pragma Singleton

import QtQuick

/// Every colour, size, font and duration of the interface, by meaning. No name begins with "on", which
/// QML would take for a signal handler.
QtObject {
    id: root

    /// Set by the window from the chosen appearance or the desktop's.
    property bool dark: false
    property string uiFamily: "sans-serif"
    property string codeFamily: "monospace"
    /// Whether the desktop asks for stillness: then nothing takes time.
    property bool reducesMotion: false

    // Surfaces, inks and marks. No name may begin with "on": QML takes such a one for a handler.
    readonly property color window: dark ? "#191714" : "#F1EDE4"
    readonly property color surface: dark ? "#201E1A" : "#FAF8F3"
    readonly property color card: dark ? "#282521" : "#FFFEFB"
    readonly property color sunken: dark ? "#151310" : "#ECE7DC"
    readonly property color line: dark ? "#36322C" : "#E3DCCF"
    readonly property color lineStrong: dark ? "#4B463E" : "#CDC4B3"
    readonly property color controlBorder: dark ? "#82796B" : "#8D8474"
    readonly property color inkHeading: dark ? "#F5F0E7" : "#1E1B17"
    readonly property color ink: dark ? "#DED7CB" : "#2A2723"
    readonly property color inkSecondary: dark ? "#B8AFA0" : "#5C564C"
    readonly property color inkTertiary: dark ? "#A69D90" : "#6A6358"
    readonly property color inkDisabled: dark ? "#6B645A" : "#A59C8D"
    readonly property color accent: dark ? "#86B3DF" : "#2C5A88"
    readonly property color accentHover: dark ? "#A9CBEB" : "#1C3E61"
    readonly property color accentFill: dark ? "#3B6B9B" : "#2C5A88"
    readonly property color accentFillHover: dark ? "#4475A6" : "#244C75"
    readonly property color accentFillPressed: dark ? "#315B85" : "#1C3E61"
    readonly property color inkOnAccent: dark ? "#FBFCFD" : "#FFFEFB"
    readonly property color accentSoft: dark ? "#263340" : "#E2E9F0"
    readonly property color accentLine: dark ? "#425A72" : "#B4C6D8"
    readonly property color rowHover: dark ? "#2F2C27" : "#F4F0E8"
    readonly property color rowPressed: dark ? "#37332D" : "#E9E3D8"
    readonly property color rowSelected: dark ? "#26303A" : "#E9EEF3"
    readonly property color diffContext: dark ? "#282521" : "#FFFEFB"
    readonly property color diffContextGutter: dark ? "#24211D" : "#F6F3EC"
    readonly property color diffSelected: dark ? "#2B2824" : "#FFFFFF"
    readonly property color diffSelectedGutter: dark ? "#272E36" : "#EEF2F6"
    readonly property color diffAdded: dark ? "#222E1E" : "#E9F2E2"
    readonly property color diffAddedGutter: dark ? "#2A3B25" : "#D9E8CE"
    readonly property color diffAddedInk: dark ? "#A6D093" : "#35602A"
    readonly property color diffDeleted: dark ? "#38241F" : "#FBE9E4"
    readonly property color diffDeletedGutter: dark ? "#482D27" : "#F5DCD4"
    readonly property color diffDeletedInk: dark ? "#EFAC9C" : "#96331F"
    readonly property color diffFiller: dark ? "#211F1B" : "#F5F2EB"
    readonly property color diffFillerGutter: dark ? "#1D1B18" : "#F0ECE3"
    readonly property color badgeModified: dark ? "#41351B" : "#F4E7C6"
    readonly property color badgeModifiedInk: dark ? "#E8C67E" : "#70500F"
    readonly property color badgeAdded: dark ? "#2A3B25" : "#D9E8CE"
    readonly property color badgeAddedInk: dark ? "#A6D093" : "#2F5925"
    readonly property color badgeDeleted: dark ? "#4A2C26" : "#F5DBD3"
    readonly property color badgeDeletedInk: dark ? "#F2B0A1" : "#8F301D"
    readonly property color error: dark ? "#F1A593" : "#9B3019"
    readonly property color errorSoft: dark ? "#38231E" : "#FCEDE8"
    readonly property color errorLine: dark ? "#6B4037" : "#E8C1B6"
    readonly property color danger: dark ? "#A8452F" : "#9B3019"
    readonly property color dangerHover: Qt.darker(danger, 1.12)
    readonly property color inkOnDanger: dark ? "#FFFBFA" : "#FFFEFB"
    readonly property color note: dark ? "#332B1B" : "#F7EFDB"
    readonly property color noteLine: dark ? "#5A4C2D" : "#E4D3A8"
    readonly property color noteInk: dark ? "#E3CC98" : "#604710"
    readonly property color success: dark ? "#A6D093" : "#35602A"
    readonly property color focusRing: dark ? "#86B3DF" : "#3A74AE"
    readonly property color selection: dark ? "#36506A" : "#C9DAEA"
    readonly property color scrollHandle: dark ? "#5A544B" : "#B9B0A0"
    readonly property color scrollHandleHover: dark ? "#7B7366" : "#938A7A"
    readonly property color tooltip: dark ? "#EDE6DA" : "#2A2723"
    readonly property color inkOnTooltip: dark ? "#201E1A" : "#FAF8F3"
    readonly property color windowClose: dark ? "#C24A33" : "#B23A22"
    readonly property color inkOnWindowClose: dark ? "#FFFEFB" : "#FFFEFB"

    // Veils
    readonly property color scrim: dark ? "#8C0C0B09" : "#661E1B17"
    readonly property color shadow: dark ? "#40000000" : "#141E1B17"

    // Distances
    readonly property int spaceXxs: 2
    readonly property int spaceXs: 4
    readonly property int spaceS: 8
    readonly property int spaceM: 12
    readonly property int spaceL: 16
    readonly property int spaceXl: 20
    readonly property int spaceXxl: 24
    readonly property int spaceSection: 32
    readonly property int spacePage: 48
    readonly property int spaceHero: 64

    // Sizes
    readonly property int titleBarSize: 40
    /// Narrow enough to leave the scroll bars at the window's edge to the pointer.
    readonly property int resizeEdgeSize: 4
    readonly property int toolbarSize: 48
    readonly property int paneHeaderSize: 28
    readonly property int cardHeadSize: 32
    readonly property int codeRowSize: 20
    readonly property int gutterMinSize: 44
    readonly property int signColumnSize: 18
    readonly property int controlSize: 32
    readonly property int controlCompactSize: 28
    readonly property int controlLargeSize: 36
    readonly property int chipSize: 28
    readonly property int badgeSize: 20
    readonly property int badgeSmallSize: 18
    readonly property int tagMaxSize: 140
    readonly property int menuRowSize: 30
    readonly property int menuNoteRowSize: 46
    readonly property int fileRowSize: 56
    readonly property int recentRowSize: 56
    readonly property int sidebarSize: 380
    readonly property int sidebarMinSize: 320
    readonly property int sidebarMaxSize: 560
    readonly property int panelSize: 208
    readonly property int panelMinSize: 160
    readonly property int sheetWidthSize: 520
    readonly property int alertWidthSize: 420
    readonly property int iconSize: 16
    readonly property int iconSmallSize: 14
    readonly property int listColumnMaxSize: 880
    readonly property int proseMeasureMaxSize: 652
    readonly property int windowMinWidthSize: 900
    readonly property int windowMinHeightSize: 600

    // Parts of components
    readonly property int dotSize: 5
    readonly property int alertRiseSize: 60
    readonly property int alertIconSize: 40
    readonly property int commandBoxMaxSize: 200
    readonly property int iconLargeSize: 20
    readonly property int iconHeroSize: 24
    readonly property int emblemSize: 56
    readonly property int emptyRiseSize: 30
    readonly property int menuWidthSize: 232
    readonly property int fieldPaddingSize: 10
    readonly property int buttonPaddingSize: 14
    readonly property int buttonLargePaddingSize: 18
    readonly property int bulletSize: 6
    readonly property int composerMaxSize: 120
    readonly property int choiceIndentSize: 36
    readonly property int followSize: 40
    readonly property int stepButtonSize: 32
    readonly property int windowButtonSize: 36
    readonly property int menuButtonSize: 32
    readonly property int countsRoomSize: 120
    readonly property int dropCardSize: 62
    readonly property int boxIconInsetSize: 13
    readonly property int boxTextInsetSize: 38
    readonly property int emptyTextWidthSize: 360
    readonly property int countColumnSize: 56
    readonly property int statusColumnSize: 184
    readonly property int rowGapSize: 14
    readonly property int rowSecondLineSize: 28
    readonly property int rowBarTopSize: 34
    readonly property int rowIconTopSize: 31
    readonly property int rowCountTopSize: 18
    readonly property int rowNameTopSize: 9
    readonly property int rowTextInsetSize: 55
    readonly property int rowBarStepSize: 190
    readonly property int skeletonWideSize: 340
    readonly property int skeletonNarrowSize: 250
    readonly property int formLabelSize: 64
    readonly property int formSpacingSize: 14
    readonly property int eyeMarginSize: 5
    readonly property int segmentInsetSize: 3
    readonly property int windowWidthSize: 1280
    readonly property int windowHeightSize: 824
    readonly property int subWindowSize: 640
    readonly property int subWindowMinHeightSize: 320
    readonly property int updateWindowHeightSize: 400
    readonly property int keysColumnSize: 260
    readonly property int dividerHitSize: 8
    readonly property int headingGapSize: 10
    readonly property int optionPaddingSize: 14
    readonly property int circleSize: 32
    readonly property int footPaddingSize: 14
    readonly property int waitingSize: 50
    readonly property int serverRowSize: 44
    readonly property int sheetTopSize: 96
    readonly property int explanationFootSize: 18
    readonly property int proseRiseSize: 1
    readonly property int cardEndSize: 6
    readonly property int gutterDigitSize: 7
    readonly property int codeIndentSize: 3
    readonly property int cutMarkRoomSize: 14
    readonly property real cutMarkMarginSize: 7.5
    readonly property real cutMarkWidthSize: 2.5
    readonly property real cutMarkHeightSize: 2.75
    readonly property int pickerTopMinSize: 32
    readonly property int pickerTopMaxSize: 240
    readonly property int pickerTopStartSize: 540
    readonly property int pickerWideSize: 1280
    readonly property int pickerBlockSize: 400
    readonly property int pickerBlockMinSize: 328
    readonly property int pickerGapSize: 40
    readonly property int recentColumnSize: 560
    readonly property int scrollBarSize: 10
    readonly property int scrollBarLengthSize: 100
    readonly property int branchLabelSize: 22
    readonly property int branchTextInsetSize: 24
    readonly property int branchPaddingSize: 32
    readonly property int beforeTextInsetSize: 25
    readonly property int afterTextInsetSize: 13
    readonly property int sidebarDefaultMinSize: 340
    readonly property int sidebarDefaultMaxSize: 480
    /// A window that is narrower has the explanation below the panes.
    readonly property int narrowSize: 1080
    readonly property real sidebarRatio: 0.297
    readonly property real explanationRatio: 0.55
    readonly property real bubbleRatio: 0.84
    readonly property real pickerTopRatio: 0.55
    readonly property real pickerGapRatio: 0.05
    readonly property real pickerHalfRatio: 0.46
    readonly property real scrollHandleMinRatio: 0.05

    // Corners
    readonly property real dotRadius: 2.5
    readonly property int scrollHandleRadius: 3
    readonly property int badgeRadius: 4
    readonly property int controlRadius: 6
    readonly property int cardRadius: 8
    readonly property int bubbleRadius: 10
    readonly property int sheetRadius: 12
    readonly property int pillRadius: 999

    // Lines
    readonly property int hairlineWidth: 1
    readonly property int selectedWidth: 2
    readonly property int focusRingWidth: 2
    readonly property int focusOffsetWidth: 2

    // Type
    readonly property font displayFont: Qt.font({ family: uiFamily, pixelSize: 26, weight: Font.DemiBold })
    readonly property int displayLine: 36
    readonly property font titleFont: Qt.font({ family: uiFamily, pixelSize: 20, weight: Font.DemiBold })
    readonly property int titleLine: 28
    readonly property font headingFont: Qt.font({ family: uiFamily, pixelSize: 15, weight: Font.DemiBold })
    readonly property int headingLine: 22
    readonly property font proseFont: Qt.font({ family: uiFamily, pixelSize: 14, weight: Font.Normal })
    readonly property int proseLine: 22
    readonly property font bodyFont: Qt.font({ family: uiFamily, pixelSize: 13, weight: Font.Normal })
    readonly property int bodyLine: 20
    readonly property font bodyBoldFont: Qt.font({ family: uiFamily, pixelSize: 13, weight: Font.DemiBold })
    readonly property int bodyBoldLine: 20
    readonly property font bodyUnderlinedFont: Qt.font({ family: uiFamily, pixelSize: 13, weight: Font.Normal, underline: true })
    readonly property font smallFont: Qt.font({ family: uiFamily, pixelSize: 12, weight: Font.Normal })
    readonly property font smallUnderlinedFont: Qt.font({ family: uiFamily, pixelSize: 12, weight: Font.Normal, underline: true })
    readonly property int smallLine: 18
    readonly property font captionFont: Qt.font({ family: uiFamily, pixelSize: 11, weight: Font.DemiBold })
    readonly property int captionLine: 16
    readonly property font codeFont: Qt.font({ family: codeFamily, pixelSize: 12, weight: Font.Normal })
    readonly property int codeLine: 20
    readonly property font codeNumberFont: Qt.font({ family: codeFamily, pixelSize: 11, weight: Font.Normal })
    readonly property int codeNumberLine: 20

    // Durations in milliseconds
    readonly property int instantDuration: 0
    readonly property int fastDuration: reducesMotion ? 0 : 90
    readonly property int standardDuration: reducesMotion ? 0 : 160
    readonly property int scrollDuration: reducesMotion ? 0 : 220
    readonly property int sheetInDuration: reducesMotion ? 0 : 200
    readonly property int pulseDuration: 1400
    readonly property int dotsDuration: 1200
    /// How strong what pulses is while it stands still.
    readonly property real stillOpacity: 0.7
    /// Of what lies over the content while something is dragged over it.
    readonly property real veilOpacity: 0.86
    /// Work that ends sooner leaves no trace on screen.
    readonly property int patienceDuration: 150
    readonly property int dragScrollDuration: 30
    readonly property int flickSpeed: 800 // Pixels a second.
    readonly property int toolTipDelayDuration: 600
}
