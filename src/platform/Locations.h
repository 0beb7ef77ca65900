#pragma once

#include <QString>
#include <QStringView>

#include <memory>

namespace brivane {

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
    /// moment (HOME and the XDG variables); what has no alias stays as it is.
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

private:
    struct Arrangement;
    explicit Locations(std::shared_ptr<const Arrangement> arrangement);

    std::shared_ptr<const Arrangement> m_arrangement;
};

} // namespace brivane
