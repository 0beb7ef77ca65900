#pragma once

#include "platform/FileError.h"

#include <QString>
#include <QStringBuilder>
#include <QStringList>
#include <QStringView>

namespace brivane {

class Locations;

/// Where a Linux desktop keeps what it has installed, and what it runs. A value, read from the
/// environment when it is made, on the GUI thread, which alone changes that of this program.
struct SoftwarePlaces {
    /// `root` is put before every place of the system that the environment does not name; empty for
    /// this system, a folder of its own for a test.
    [[nodiscard]] static SoftwarePlaces of(const Locations& desktop, const QString& root = {});

    QString home;
    QString root;
    QStringList data;      ///< hold "applications", "dbus-1" and "metainfo", the user's own first
    QStringList programs;  ///< executables: those of PATH in its order, then the usual ones
    QStringList flatpaks;  ///< installations of Flatpak
    QStringList languages; ///< as the names of locales in files, the preferred one first

    /// "/var/lib" is root/var/lib.
    [[nodiscard]] QString system(QStringView path) const { return root % path; }
};

/// Whether a place is not there for this user, who can have nothing installed in it then. Any other
/// failure to read it leaves in doubt what it holds.
[[nodiscard]] bool isMissing(const FileError& error);

} // namespace brivane
