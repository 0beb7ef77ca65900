import QtQuick
import Brivane.App
import Brivane.Scanner

// The scanner as a module of the window.
ScannerContentView {
    required property ShellViewModel shell

    viewModel: shell.scanViewModel
}
