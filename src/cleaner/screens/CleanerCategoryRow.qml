import QtQuick
import Brivane.Components
import Brivane.Cleaner

// One category. A click shows its items; its check box selects them.
KeyboardListRow {
    id: root

    required property string type
    required property string name
    required property string iconName
    required property color itsTint
    required property bool isScanning
    required property string detail
    required property color detailColor
    required property int itsCheckState
    required property string riskLabel
    required property string riskIcon
    required property color riskColor
    required property string riskToolTip
    required property bool isChosen
    required property CleanerViewModel viewModel

    function rowOf(type: var): int {
        return viewModel.rowOf(type);
    }

    objectName: "cleanerCategoryRow"
    entry: type
    title: name
    hasStrongTitle: true
    subtitle: detail
    subtitleColor: detailColor
    hasCheckBox: true
    isCheckBoxApart: true
    leftPadding: Metrics.spacingSmall // in line with the header: the check box has some of its own
    hasRoundCheckBox: true
    checkState: itsCheckState
    isSelected: isChosen
    selectedFill: ColorPalette.faded(ColorPalette.accent, 0.18)
    Accessible.name: title + ", " + detail
    Accessible.description: riskToolTip
    onActivated: type => viewModel.selectCategory(type)
    onTicked: type => viewModel.toggleCategory(type)

    leading: IconTile {
        size: 32
        symbolSize: 17
        icon: root.iconName
        tint: root.itsTint
    }
    mark: Row {
        spacing: Metrics.spacingSmall

        BusySpinner {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isScanning
            size: 12
            color: root.itsTint
        }
        Badge {
            objectName: "riskBadge"
            text: root.riskLabel
            icon: root.riskIcon
            tint: root.riskColor
            toolTip: root.riskToolTip
            isDecoration: true
        }
    }
}
