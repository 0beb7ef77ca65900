#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <memory>
#include <vector>

namespace brivane {

struct ResolvedAlias;

/// Where the paths of the catalogue lie on this machine.
///
/// The program names places the way a Mac does: "~/Library/Caches", "/usr/bin/osascript". No such
/// path is used as it stands; path() tells where the place is here. A Locations is a value, cheap
/// to copy, and its functions may be called from any thread.
class Locations {
public:
    /// A Mac: "~" is `home`, absolute paths stand as they are.
    static Locations asWritten(const QString& home);

    /// A machine in one folder: "/x" is folder/Macintosh HD/x, and "~" is Users/robin in it. Paths
    /// that lie in the folder already stay as they are.
    static Locations insideFolder(const QString& folder);

    /// A Linux desktop: the aliases of LocationAliases.h, read against the environment of this
    /// moment (HOME and the XDG variables) and the user folders that the desktop has named by now,
    /// for which it reads one small file; what has no alias stays as it is.
    static Locations onLinux();

    /// Where `cataloguePath` lies here. Aliases match whole components, the longest one wins. Does
    /// not touch the disk; a result need not exist.
    [[nodiscard]] QString path(QStringView cataloguePath) const;

    /// `path`, which is one of this system's, as it may be shown: named as this machine names it,
    /// so that no sandbox's folder is seen, and made harmless by PathText::forDisplay(). What an
    /// alias leads to keeps the name that the user knows it by here. For the eye only: path() does
    /// not lead back from it, and what is copied or opened is the path itself.
    [[nodiscard]] QString shown(QStringView path) const;

    /// The home directory of the user, without a slash at its end.
    [[nodiscard]] QString home() const;

    /// The same directory by the name that it has without links on the way. Found out when this was
    /// made, which looks at the disk for nothing else; parts that were missing then stay as they
    /// are in home().
    [[nodiscard]] QString realHome() const;

    /// Whether this is a Linux desktop, where applications are no bundles.
    [[nodiscard]] bool isLinuxDesktop() const;

    /// A directory of the user's own for temporary files, mode 0700, made when it is missing. A
    /// directory at that place which is a link or belongs to someone else is not used: one with a
    /// new name takes its place for the rest of the process. Empty when none can be made.
    [[nodiscard]] QString temporaryDirectory() const;

    /// The aliases of this machine; none but on a Linux desktop.
    [[nodiscard]] const std::vector<ResolvedAlias>& aliases() const;

    struct Addition {
        QString name;
        QString value;
    };
    /// What this desktop has beyond the places of a Mac, for a table of the program: its own rows,
    /// in order, with what makes a row there; a path is one of this system's. One component of it
    /// may be "*", which stands for any one name, and so does "*" in the row's name. Which tables
    /// there are stands in linux/DesktopAdditions.cpp; any other, and each but on a Linux desktop,
    /// has none. A row says nothing of whether its place exists.
    [[nodiscard]] QList<Addition> additions(QStringView table) const;

private:
    struct Arrangement;
    explicit Locations(std::shared_ptr<const Arrangement> arrangement);

    std::shared_ptr<const Arrangement> m_arrangement;
};

} // namespace brivane
