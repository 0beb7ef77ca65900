#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace brivane {

/// An application as its desktop entry describes it. Strangers write these: texts are what stands
/// in the file, up to some length, and not made fit to be shown.
struct DesktopEntry {
    /// In bytes. The largest ones, of office programs in all languages, have some 40 KiB.
    static constexpr qsizetype largestFile = qsizetype(256) << 10;

    /// The entry in `content`, without its id; none when that is no description of an application.
    /// Input may be hostile. Pure, any thread.
    [[nodiscard]] static std::optional<DesktopEntry> parse(const QByteArray& content,
                                                           const QStringList& languages);

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

/// Whether `program`, a name without its folder, runs what its first argument names.
[[nodiscard]] bool isInterpreter(QStringView program);

} // namespace brivane
