#pragma once

#include "platform/linux/SoftwarePlaces.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace brivane {

/// An application as its desktop entry describes it. Strangers write these: texts are what stands
/// in the file, bounded in length by its size only.
struct DesktopEntry {
    QString id;            ///< "org.gnome.Maps", without ".desktop"
    QString name;          ///< as it is without a language
    QString localizedName; ///< in the user's language, where there is one
    QString program;       ///< what is started, a path or a name; empty when a wrapper hides it
    int arguments = 0;     ///< of the program, without those that stand for files
    QString windowClass;
    QString flatpak; ///< the identifier of the Flatpak that it starts
    QString snap;    ///< the name of the Snap
    bool isShown = true;
    bool isTerminal = false;
};

/// The entry in `content`; none when that is no description of an application. Input may be
/// hostile. Pure, any thread.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content,
                                                            const QStringList& languages);

/// Whether `program`, a name without its folder, runs what its first argument names.
[[nodiscard]] bool isInterpreter(QStringView program);

/// All desktop entries of this machine, each identifier once: what the user has goes before what
/// the system has.
struct DesktopEntries {
    /// Any thread; blocks. Files that are not entries are passed over.
    [[nodiscard]] static DesktopEntries read(const SoftwarePlaces& places);

    std::vector<DesktopEntry> entries;
    /// Of every file that looks like an entry, also one that could not be understood.
    QStringList ids;
    bool isComplete = true; ///< no folder failed, no bound was met
};

} // namespace brivane
