import QtQuick

// What a module adds to the sidebar: headings, rows and cards, and what stays in view at the bottom.
Column {
    property Component footer: null
}
