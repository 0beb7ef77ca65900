#pragma once

#include "removal/PathSpellings.h"

#include <QString>
#include <QStringView>

#include <memory>

namespace brivane {

class Composition;

/// Says how dangerous it is to delete a path: the one authority on it.
///
/// A constant value: it touches no file and may be used from any thread. What is rated is the text
/// of the path against the tables in tables/ and the home directory, so a path that does not exist
/// is rated like one that does. Letter case counts. The constructor does not look at the disk
/// either: what the home directory is really called, Locations found out when it was made.
///
/// No spelling of a path gets another answer than its plain one:
/// - A path is first brought into the form of the tables, see PathSpellings::tableForm(). What has
///   none ("", ".", relative, in the home of "~somebody") is `blocked` and never safe for the
///   cleaner: nobody can say what it would hit.
/// - "/var", "/tmp" and "/etc" are rated as what they are, folders of "/private". Of any other path
///   in "/private" only the disk could tell whether it is a second name of the path without it: it
///   is taken for one, since no rule is graver about the longer name.
/// - Where the home directory is reached through a link, a path in it is rated by both its names,
///   whichever was given, and the graver one counts.
/// - Where a place of the catalogue lies elsewhere on this machine, a path in it is rated by both
///   names, and the graver one counts. Of such places in each other the innermost one gives the
///   name: a cache among the preferences is a cache.
class SafetyChecker {
public:
    /// A rating. Names in its text are as PathText::forDisplay() gives them.
    struct SafetyLevel {
        /// From harmless to grave.
        enum class Case {
            safe,    ///< no rule applies
            caution, ///< may be deleted; passes the cleaner
            warning, ///< user data: may be staged by hand, the cleaner stops
            blocked, ///< never deleted
        };

        Case which = Case::safe;
        /// What may be affected, for the user; empty when safe.
        QString text = {};

        bool operator==(const SafetyLevel&) const = default;
    };

    explicit SafetyChecker(const Locations& locations);

    static std::unique_ptr<SafetyChecker> make(Composition& composition);

    /// Rates a path that the user picked by hand.
    [[nodiscard]] SafetyLevel check(const QString& path) const;
    /// Whether the cleaner may take `path`: it lies in an area that may be cleaned whatever check()
    /// says of it, or no name of it is worse than `caution`; the catalogue's name of a place that
    /// lies elsewhere here may also be one in such an area. The areas of a home directory
    /// that is reached through a link are its own by either of its names; where its real name lies
    /// in an area of the machine, that opens nothing of it.
    [[nodiscard]] bool isCleanerSafe(const QString& path) const;

private:
    // All paths here are in the form of PathSpellings::tableForm().
    [[nodiscard]] SafetyLevel rateAllNames(const QString& path) const;
    [[nodiscard]] SafetyLevel rate(QStringView path) const;
    [[nodiscard]] bool isInCleanerArea(QStringView path) const;

    PathSpellings m_spellings;
};

} // namespace brivane
