#include "removal/PathSpellings.h"

#include "platform/LiesIn.h"
#include "platform/LocationAliases.h"
#include "platform/Locations.h"
#include "platform/PathText.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr QStringView privateFolder = u"/private";

bool hasSecondNameInPrivate(QStringView path)
{
    return liesIn(path, u"/var") || liesIn(path, u"/tmp") || liesIn(path, u"/etc");
}

/// Whether `path` is plain already, which nearly all are. A surrogate may be half of a byte that
/// has another spelling, and is left to a closer look.
bool isPlain(QStringView path)
{
    if (path.size() < 2 || path.front() != u'/' || path.back() == u'/')
        return false;
    const auto endsAt = [&](qsizetype i) { return i == path.size() || path[i] == u'/'; };
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i].unicode();
        if (unit != u'/') {
            if (unit == 0 || QChar::isSurrogate(unit))
                return false;
            continue;
        }
        const QChar next = path[i + 1];
        if (next == u'/' ||
            (next == u'.' && (endsAt(i + 2) || (path[i + 2] == u'.' && endsAt(i + 3)))))
            return false;
    }
    return true;
}

/// Absolute `path` without empty components, "." and "..".
QString collapsed(QStringView path)
{
    QString plain;
    plain.reserve(path.size() + 1);
    for (qsizetype at = 0; at < path.size();) {
        qsizetype end = path.indexOf(u'/', at);
        if (end < 0)
            end = path.size();
        const QStringView part = path.sliced(at, end - at);
        at = end + 1;
        if (part == u"..")
            plain.truncate(std::max<qsizetype>(plain.lastIndexOf(u'/'), 0));
        else if (!part.isEmpty() && part != u".")
            plain += u'/' % part;
    }
    return plain.isEmpty() ? u"/"_s : plain;
}

/// `plain` with "/private" where the tables have it.
QString withPrivate(const QString& plain)
{
    QStringView path = plain;
    while (path.size() > privateFolder.size() && liesIn(path, privateFolder))
        path = path.sliced(privateFolder.size());
    const qsizetype taken = plain.size() - path.size();
    if (taken == (hasSecondNameInPrivate(path) ? privateFolder.size() : 0))
        return plain;
    return hasSecondNameInPrivate(path) ? QString(privateFolder % path) : path.toString();
}

/// The folder at absolute `path`; empty for "/", so that what lies in it follows it with a slash.
QString folderForm(const QString& path)
{
    const QString plain = withPrivate(collapsed(path));
    return plain == u"/"_s ? u""_s : plain;
}

} // namespace

PathSpellings::PathSpellings(const Locations& locations)
{
    m_home = folderForm(locations.home());
    if (const QString real = folderForm(locations.realHome()); real != m_home)
        m_realHome = real;
    m_root = folderForm(locations.path(u"/"));
    for (const ResolvedAlias& alias : locations.aliases())
        addAlias(locations, alias);
}

void PathSpellings::addAlias(const Locations& locations, const ResolvedAlias& alias)
{
    const QStringView cataloguePath = alias.cataloguePath;
    const bool isInHome = cataloguePath.startsWith(u'~');
    const QString name = isInHome ? QString(m_home % cataloguePath.sliced(1))
                                  : withPrivate(cataloguePath.toString());
    const std::optional<QString> place = tableForm(locations.path(cataloguePath));
    if (place && place != name)
        m_aliases.push_back({*place, name, alias.isUserFolder});
}

std::optional<QString> PathSpellings::tableForm(const QString& path) const
{
    QString plain = path;
    if (!isPlain(path)) {
        // Bytes that are no text by themselves may be text together: one spelling for both.
        if (std::ranges::any_of(path, [](QChar unit) { return unit.isSurrogate(); }))
            plain = PathText::fromBytes(PathText::toBytes(path));
        if (plain == u"~"_s || plain.startsWith(u"~/"_s))
            plain.replace(0, 1, m_home + u'/');
        if (!plain.startsWith(u'/') || plain.contains(QChar(u'\0')))
            return {};
        plain = collapsed(plain);
    }
    plain = withPrivate(plain);
    if (m_realHome && liesIn(plain, *m_realHome) && !liesIn(plain, m_home))
        plain.replace(0, m_realHome->size(), m_home);
    return plain;
}

std::vector<PathSpellings::OtherName> PathSpellings::others(const QString& path) const
{
    std::vector<OtherName> names;
    addCatalogueNames(names, path);
    if (m_realHome && liesIn(path, m_home)) {
        const QString real = *m_realHome % QStringView(path).sliced(m_home.size());
        names.push_back({real});
        addCatalogueNames(names, real);
    }
    return names;
}

void PathSpellings::addCatalogueNames(std::vector<OtherName>& names, const QString& path) const
{
    if (const auto inner = belowRoot(path))
        names.push_back({*inner});
    qsizetype innermost = 0;
    for (const Alias& alias : m_aliases) {
        if (!alias.isUserFolder && alias.place.size() > innermost && liesIn(path, alias.place))
            innermost = alias.place.size();
    }
    for (const Alias& alias : m_aliases) {
        if ((alias.isUserFolder || alias.place.size() == innermost) && liesIn(path, alias.place))
            names.push_back(
                {alias.cataloguePath % QStringView(path).sliced(alias.place.size()), true});
    }
}

std::optional<QString> PathSpellings::belowRoot(const QString& path) const
{
    if (m_root.isEmpty() || !liesIn(path, m_root) || path.size() == m_root.size())
        return {};
    return withPrivate(path.sliced(m_root.size()));
}

} // namespace brivane
