#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace brivane {

class Locations;

/// One path has many spellings; this brings them into the one in which safety tables are written.
///
/// A constant value that works on text alone: no function looks at the disk, and all of them may be
/// called from any thread. So ".." takes away the component before it, be that a link or not.
class PathSpellings {
public:
    explicit PathSpellings(const Locations& locations);

    /// `path` as the plain absolute one: the tilde of one's own home expanded, no empty component,
    /// no "." and "..", no slash at the end. None for a path that is relative or empty, that starts
    /// in another user's home, or that holds a NUL, where the system would cut it off.
    [[nodiscard]] std::optional<QString> plain(const QString& path) const;

    /// `plain` with "/private" in front where it lies in "/var", "/tmp" or "/etc".
    [[nodiscard]] static QString withPrivate(const QString& plain);

    /// What else the object at `path`, a result of withPrivate(), may be called in the catalogue:
    /// without the "/private" of a place that only the disk could tell to be a second name for the
    /// shorter one, and by the names of the places that lie elsewhere on this machine. These, too,
    /// are in the form of withPrivate().
    [[nodiscard]] QStringList others(const QString& path) const;

    /// `plain` without the folder that this machine has for its root.
    [[nodiscard]] std::optional<QString> belowRoot(const QString& plain) const;

    /// The home directory, plain. Empty for "/", so that what lies in it follows it with a slash.
    [[nodiscard]] const QString& home() const { return m_home; }

private:
    struct Alias {
        QString place; ///< in the form of withPrivate()
        QString cataloguePath;
    };

    void addAlias(const Locations& locations, QStringView cataloguePath);

    QString m_home;
    QString m_root; ///< plain; empty where "/" is "/"
    std::vector<Alias> m_aliases;
};

} // namespace brivane
