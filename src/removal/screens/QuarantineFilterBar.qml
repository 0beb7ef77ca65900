import QtQuick
import QtQuick.Layouts
import Brivane.Components
import Brivane.Removal

// Narrows the list down, and puts it in order.
RowLayout {
    id: root

    required property QuarantineViewModel viewModel

    signal filterLeft()
    signal filterEdited(text: string)
    signal orderChosen(order: int)

    function focusFilter(): void {
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }

    spacing: Metrics.spacingMedium

    FilterField {
        id: field

        objectName: "quarantineFilter"
        Layout.fillWidth: true
        Layout.maximumWidth: 320
        placeholderText: qsTr("Filter...")
        text: root.viewModel.searchText
        onTextChanged: root.filterEdited(text)
        onDismissed: root.filterLeft()
    }
    Item {
        Layout.fillWidth: true
    }
    SegmentedPills {
        objectName: "quarantineSort"
        name: qsTr("Order")
        options: root.viewModel.sortOrders
        selection: root.viewModel.sortOrder
        accent: ColorPalette.faded("white", 0.08)
        chosenTextColor: ColorPalette.primaryText
        onActivated: value => root.orderChosen(value)
    }
}
