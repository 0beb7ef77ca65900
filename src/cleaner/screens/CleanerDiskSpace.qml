import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Cleaner

// How full the disk was and is.
ColumnLayout {
    id: root

    required property CleanResultViewModel result

    spacing: Metrics.spacingSmall

    component Bar: RowLayout {
        id: bar

        property string name
        property string percent
        property double fraction
        property color tint

        spacing: Metrics.spacingMedium
        Accessible.role: Accessible.StaticText
        Accessible.name: qsTr("%1: %2").arg(name).arg(percent)

        AppText {
            Layout.preferredWidth: 48
            text: bar.name
            textStyle: AppText.Style.Callout
            Accessible.ignored: true
        }
        UsageBar {
            Layout.fillWidth: true
            thickness: 8
            fraction: bar.fraction
            color: bar.tint
            Accessible.ignored: true
        }
        AppText {
            Layout.preferredWidth: 36
            horizontalAlignment: Text.AlignRight
            text: bar.percent
            textStyle: AppText.Style.BodyStrong
            Accessible.ignored: true
        }
    }

    RowLayout {
        Layout.fillWidth: true

        AppText {
            Layout.fillWidth: true
            text: qsTr("DISK SPACE")
            textStyle: AppText.Style.Overline
        }
        AppText {
            objectName: "diskDrop"
            text: root.result?.dropText ?? ""
            textStyle: AppText.Style.BodyStrong
            color: ColorPalette.green
        }
    }
    Bar {
        objectName: "diskBefore"
        Layout.fillWidth: true
        name: qsTr("Before")
        percent: root.result?.beforeText ?? ""
        fraction: root.result?.beforeFraction ?? 0
        tint: ColorPalette.orange
    }
    Bar {
        objectName: "diskAfter"
        Layout.fillWidth: true
        name: qsTr("After")
        percent: root.result?.afterText ?? ""
        fraction: root.result?.afterFraction ?? 0
        tint: ColorPalette.green
    }
}
