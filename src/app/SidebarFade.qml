import QtQuick
import Brivane.Components

// An edge at which the sidebar's rows fade out, so that the cut reads as "there is more".
Rectangle {
    id: root

    property bool atTop: false

    height: 20
    gradient: Gradient {
        GradientStop { position: 0; color: ColorPalette.faded(ColorPalette.sidebarBackground, root.atTop ? 1 : 0) }
        GradientStop { position: 1; color: ColorPalette.faded(ColorPalette.sidebarBackground, root.atTop ? 0 : 1) }
    }
}
