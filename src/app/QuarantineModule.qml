import QtQuick
import Brivane.App
import Brivane.Removal

// The quarantine as a module of the window.
QuarantineView {
    required property ShellViewModel shell

    viewModel: shell.quarantine
}
