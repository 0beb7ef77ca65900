import QtQuick
import Brivane.Components
import Brivane.Cleaner

// The items of the chosen category, or what to do to see some.
FocusScope {
    id: root

    required property CleanerViewModel viewModel

    // The keyboard wants back to the categories.
    signal backWanted()

    function takeFocus(): void {
        (view.item as CleanerDetailView)?.takeFocus();
    }

    function focusFilter(): void {
        (view.item as CleanerDetailView)?.focusFilter();
    }

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Metrics.spacingHuge
        visible: !view.active
        spacing: Metrics.spacingMedium

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "arrow.left.circle"
            size: 40
            color: ColorPalette.subtleText
        }
        AppText {
            objectName: "selectCategoryHint"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: qsTr("Select a category to see details")
            color: ColorPalette.secondaryText
        }
    }
    Loader {
        id: view

        anchors.fill: parent
        active: root.viewModel.detail.hasCategory
        focus: true
        visible: active // else the keyboard would be on it, once its category has gone
        sourceComponent: CleanerDetailView {
            viewModel: root.viewModel
            onBackWanted: root.backWanted()
        }
    }
}
