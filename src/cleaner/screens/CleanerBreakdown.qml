import QtQuick
import QtQuick.Layouts
import Brivane.Components

// What was selected of each category.
ColumnLayout {
    id: root

    required property var rows // of { name, sizeText }

    spacing: Metrics.spacingTiny

    AppText {
        Layout.topMargin: Metrics.spacingTiny
        text: qsTr("BREAKDOWN")
        textStyle: AppText.Style.Overline
    }
    Repeater {
        model: root.rows

        RowLayout {
            id: line

            required property var modelData

            objectName: "breakdownRow"
            Layout.fillWidth: true
            Accessible.role: Accessible.StaticText
            Accessible.name: line.modelData.name + ": " + line.modelData.sizeText

            AppText {
                Layout.fillWidth: true
                text: line.modelData.name
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            AppText {
                text: line.modelData.sizeText
                textStyle: AppText.Style.BodyStrong
                Accessible.ignored: true
            }
        }
    }
}
