#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace brivane {

class Locations;
struct ResolvedAlias;

/// One path has many spellings; this brings them into the one in which safety tables are written.
///
/// A constant value that works on text alone: no function looks at the disk, and all of them may be
/// called from any thread. So ".." takes away the component before it, be that a link or not. Of
/// the links on the way to a place only those to the home directory are known, from
/// Locations::realHome().
class PathSpellings {
public:
    explicit PathSpellings(const Locations& locations);

    /// `path` as the tables would have it. It is plain and absolute: the tilde of one's own home
    /// expanded, no empty component, no "." and "..", no slash at the end. "/private" is in front
    /// of "/var", "/tmp" and "/etc", and of nothing else, as if each shorter name were a second one
    /// of the same place. What lies in the home directory begins with home(). None for a path that
    /// is relative or empty, that starts in another user's home, or that holds a NUL, where the
    /// system would cut it off.
    [[nodiscard]] std::optional<QString> tableForm(const QString& path) const;

    struct OtherName {
        QString path;             ///< in the form of tableForm()
        bool isCatalogue = false; ///< the catalogue's, for a place that lies elsewhere here
    };

    /// What else the object at `path`, a result of tableForm(), may be called: by the real name of
    /// the home directory, and in the catalogue by the name of the place that it lies in on this
    /// machine. Of places in each other the innermost one names it, whatever the outer one is for;
    /// but a folder that the user put into a place of the catalogue is still in that place.
    [[nodiscard]] std::vector<OtherName> others(const QString& path) const;

    /// `path`, a result of tableForm(), without the folder that this machine has for its root.
    [[nodiscard]] std::optional<QString> belowRoot(const QString& path) const;

    /// The home directory in the form of tableForm(). Empty for "/", so that what lies in it
    /// follows it with a slash.
    [[nodiscard]] const QString& home() const { return m_home; }

private:
    // All paths here are in the form of tableForm().
    struct Alias {
        QString place;
        QString cataloguePath;
        bool isUserFolder;
    };

    void addAlias(const Locations& locations, const ResolvedAlias& alias);
    void addCatalogueNames(std::vector<OtherName>& names, const QString& path) const;

    QString m_home;
    std::optional<QString> m_realHome; ///< by its real name, where that is another
    QString m_root;                    ///< empty where "/" is "/"
    std::vector<Alias> m_aliases;
};

} // namespace brivane
