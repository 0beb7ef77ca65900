pragma Singleton

import QtQuick

// The measures that screens are built from: a grid of 4 points.
QtObject {
    readonly property int spacingTiny: 4
    readonly property int spacingSmall: 8
    readonly property int spacingMedium: 12
    readonly property int spacingLarge: 16
    readonly property int spacingHuge: 24

    readonly property int radiusSmall: 6
    readonly property int radiusMedium: 10
    readonly property int radiusLarge: 14

    readonly property int controlHeight: 28
    readonly property int controlHeightLarge: 32
    readonly property int controlHeightProminent: 44
    readonly property int contentWidth: 860

    readonly property int textLargeTitle: 26
    readonly property int textTitle: 20
    readonly property int textHeading: 15
    readonly property int textBody: 13
    readonly property int textCallout: 12
    readonly property int textCaption: 11
}
