#pragma once

#include "removal/PathSpellings.h"

#include <QString>
#include <QStringView>

namespace brivane {

/// Says how dangerous it is to delete a path: the one authority on it.
///
/// A constant value: it touches no file and may be used from any thread. What is rated is the text
/// of the path against the tables in tables/ and the home directory, so a path that does not exist
/// is rated like one that does. Letter case counts.
///
/// No spelling of a path is rated milder than its plain one:
/// - A path is first brought into its plain form, see PathSpellings::plain(). What has none ("",
///   ".", relative, in the home of "~somebody") is `blocked` and never safe for the cleaner: nobody
///   can say what it would hit.
/// - "/var", "/tmp" and "/etc" are rated as what they are, folders of "/private". Of any other path
///   in "/private" only the disk could tell whether it is a second name of the path without it:
///   both are rated, the graver one counts. A home directory in one of the three is found there.
/// - Where a place of the catalogue lies elsewhere on this machine, a path in it is rated by both
///   names, and the graver one counts.
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

    /// The checker for the machine that the program works on, made on first use.
    static const SafetyChecker& shared();

    /// Rates a path that the user picked by hand.
    [[nodiscard]] SafetyLevel check(const QString& path) const;
    /// Whether the cleaner may take `path`: it lies in an area that may be cleaned whatever check()
    /// says of it, or check() finds nothing worse than `caution`. Areas are compared with the plain
    /// form of the path as it is, "/private" neither taken away nor put in front.
    [[nodiscard]] bool isCleanerSafe(const QString& path) const;

private:
    [[nodiscard]] SafetyLevel rateAllSpellings(const QString& plain) const;
    [[nodiscard]] SafetyLevel rate(QStringView path) const;
    [[nodiscard]] bool isInCleanerArea(QStringView path) const;

    PathSpellings m_spellings;
    QString m_home; ///< as the paths that are rated have it
};

} // namespace brivane
