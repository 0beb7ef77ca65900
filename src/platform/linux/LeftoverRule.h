#pragma once

#include <QSet>
#include <QString>
#include <QStringView>

// Which names of data belong to no program that a Linux desktop has: the one rule, as a pure
// function. Any thread.
//
// There is no list of what was installed once, so a name can only be shown to belong to nobody, and
// only one that says whose it is can be: a reverse-domain name ("org.gnome.Maps"). Everything that
// bears such a name, or may well do so, keeps its data. A leftover that is not told is a nuisance;
// data of a living program that is called one is a loss.
namespace brivane {

/// Adds what `name` stands for to `installed`: a package, an executable, the identifier of a
/// desktop entry, Flatpak, Snap or D-Bus service, with its ending or without.
void addInstalledName(QSet<QString>& installed, QStringView name);

/// Whether an entry of this name belongs to nothing in `installed`, which addInstalledName() made.
/// When nothing is known to be installed, nothing is a leftover.
[[nodiscard]] bool isLeftover(QStringView entryName, const QSet<QString>& installed);

} // namespace brivane
