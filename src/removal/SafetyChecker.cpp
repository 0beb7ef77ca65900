#include "removal/SafetyChecker.h"

#include "core/Composition.h"
#include "platform/Host.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "removal/PathMatch.h"
#include "removal/tables/BlockedPaths.h"
#include "removal/tables/BlockedPrefixes.h"
#include "removal/tables/CautionPrefixes.h"
#include "removal/tables/CleanerAreas.h"
#include "removal/tables/DangerousExtensions.h"
#include "removal/tables/HomeBlockedPaths.h"
#include "removal/tables/HomeWarningPaths.h"

#include <algorithm>

using namespace brivane::SafetyTables;
using brivane::PathMatch::liesBelow;

namespace brivane {

namespace {

using Level = SafetyChecker::SafetyLevel;
using Case = Level::Case;

Level level(Case which, QStringView before, QStringView subject = {}, QStringView after = {})
{
    QString text;
    text.reserve(before.size() + subject.size() + after.size());
    text += before;
    text += subject;
    text += after;
    return {which, text};
}

/// The first entry of `table`, which is searched in its order, that `matches` accepts together with
/// `path`; null when there is none.
template<typename Table, typename Matches>
QStringView firstMatch(const Table& table, QStringView path, Matches matches)
{
    const auto* const found =
        std::ranges::find_if(table, [=](QStringView entry) { return matches(path, entry); });
    return found != std::end(table) ? *found : QStringView();
}

/// liesIn() as a table is searched with it.
constexpr auto isIn = [](QStringView path, QStringView entry) { return liesIn(path, entry); };

QStringView lastComponent(QStringView path)
{
    return path.size() > 1 ? path.sliced(path.lastIndexOf(u'/') + 1) : path;
}

/// The entry of dangerousExtensions that is the extension of `name`, if one is.
QStringView dangerousExtension(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0) // a name that only starts with a dot has no extension
        return {};
    const QStringView extension = name.sliced(dot + 1);
    for (const QStringView entry : dangerousExtensions) {
        if (extension.size() == entry.size() && extension.toString().toLower() == entry)
            return entry;
    }
    return {};
}

/// What follows "Library/Application Support/" in `relative`, up to the next slash.
QStringView applicationFolder(QStringView relative)
{
    constexpr QStringView support = u"Library/Application Support/";
    if (!liesBelow(relative, support))
        return {};
    const QStringView rest = relative.sliced(support.size());
    const qsizetype slash = rest.indexOf(u'/');
    return slash < 0 ? rest : rest.first(slash);
}

Level rateInHome(QStringView relative)
{
    if (const auto entry = firstMatch(homeBlockedPaths, relative, isIn); !entry.isNull())
        return level(Case::blocked, u"'", entry,
                     u"' contains security credentials (passwords, keys, tokens). Deleting it "
                     u"will lock you out of services.");
    if (const auto entry = firstMatch(homeWarningPaths, relative, isIn); !entry.isNull())
        return level(Case::warning, u"'", entry,
                     u"' contains important user data. Deleting it may cause data loss. Make a "
                     u"backup first.");
    if (const QStringView folder = applicationFolder(relative); !folder.isEmpty())
        return level(Case::caution, u"Application data for '", PathText::forDisplay(folder),
                     u"'. Deleting may reset the app or cause data loss.");
    return {};
}

} // namespace

SafetyChecker::SafetyChecker(const Locations& locations)
    : m_spellings(locations)
{
}

std::unique_ptr<SafetyChecker> SafetyChecker::make(Composition& composition)
{
    return std::make_unique<SafetyChecker>(composition.host().locations);
}

Level SafetyChecker::check(const QString& path) const
{
    if (const std::optional<QString> form = m_spellings.tableForm(path))
        return rateAllNames(*form);
    return level(Case::blocked, u"'", PathText::forDisplay(path),
                 u"' does not say where it lies. It cannot be deleted.");
}

Level SafetyChecker::rateAllNames(const QString& path) const
{
    Level gravest = rate(path);
    for (const PathSpellings::OtherName& other : m_spellings.others(path)) {
        if (Level another = rate(other.path); another.which > gravest.which)
            gravest = std::move(another);
    }
    return gravest;
}

Level SafetyChecker::rate(QStringView path) const
{
    const QStringView name = lastComponent(path);
    if (const QStringView extension = dangerousExtension(name); !extension.isNull())
        return level(Case::blocked, u"This file (", extension,
                     u") contains encryption keys or passwords. Deleting it will cause "
                     u"irreversible data loss.");
    if (!firstMatch(blockedPaths, path, PathMatch::isSame).isNull())
        return level(Case::blocked, u"'", PathText::forDisplay(name),
                     u"' is a system-critical directory. Deleting it will break macOS.");
    const bool isApplication = path.endsWith(u".app");
    if (isApplication && PathMatch::startsWith(path, u"/System/Applications"))
        return level(Case::blocked, u"'", PathText::forDisplay(name),
                     u"' is a system application and cannot be deleted.");
    if (liesBelow(path, u"/usr/local/"))
        return level(Case::caution, u"Files in /usr/local/ are user-installed (e.g., Homebrew). "
                                    u"Deleting may break installed tools.");
    if (const auto prefix = firstMatch(blockedPrefixes, path, liesBelow); !prefix.isNull())
        return level(Case::blocked, u"Files in ", prefix,
                     u" are protected by System Integrity Protection (SIP). They cannot be "
                     u"deleted.");
    if (isApplication && liesBelow(path, u"/Applications/"))
        return level(Case::caution, u"'", PathText::forDisplay(name),
                     u"' is an installed application. Uninstall properly to remove all "
                     u"associated data.");
    // What follows the home directory's name need not be a slash: a neighbour whose name goes on
    // gets a rest that hardly matches anything.
    const QString& home = m_spellings.home();
    if (path.size() > home.size() && path.startsWith(home)) {
        if (Level found = rateInHome(path.sliced(home.size() + 1)); found.which != Case::safe)
            return found;
    }
    if (const auto prefix = firstMatch(cautionPrefixes, path, liesBelow); !prefix.isNull())
        return level(Case::caution, u"Files in ", prefix,
                     u" may affect system services or applications. Review before deleting.");
    return {};
}

bool SafetyChecker::isCleanerSafe(const QString& path) const
{
    const std::optional<QString> form = m_spellings.tableForm(path);
    if (!form)
        return false;
    if (isInCleanerArea(*form))
        return true;
    if (const auto inner = m_spellings.belowRoot(*form); inner && isInCleanerArea(*inner))
        return true;
    const auto others = m_spellings.others(*form);
    return rate(*form).which <= Case::caution &&
           std::ranges::all_of(others, [this](const PathSpellings::OtherName& other) {
               return rate(other.path).which <= Case::caution ||
                      (other.isCatalogue && isInCleanerArea(other.path));
           });
}

bool SafetyChecker::isInCleanerArea(QStringView path) const
{
    if (!firstMatch(cleanerAreas, path, liesBelow).isNull())
        return true;
    if (!path.startsWith(m_spellings.home()))
        return false;
    const QStringView inHome = path.sliced(m_spellings.home().size());
    return !firstMatch(homeCleanerAreas, inHome, liesBelow).isNull() ||
           !firstMatch(homeCleanerFolders, inHome, isIn).isNull();
}

} // namespace brivane
