#include "removal/PathSpellings.h"

#include "platform/Locations.h"
#include "platform/PathText.h"
#include "removal/PathMatch.h"
#include "removal/tables/BlockedPaths.h"
#include "removal/tables/BlockedPrefixes.h"
#include "removal/tables/CautionPrefixes.h"
#include "removal/tables/HomeBlockedPaths.h"
#include "removal/tables/HomeWarningPaths.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;
using brivane::PathMatch::liesIn;

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

QString withoutRootSlash(QString path)
{
    return path == u"/"_s ? QString() : path;
}

} // namespace

PathSpellings::PathSpellings(const Locations& locations)
{
    m_home = withoutRootSlash(collapsed(locations.home()));
    m_root = withoutRootSlash(collapsed(locations.path(u"/")));
    for (const QStringView entry : SafetyTables::blockedPaths)
        addAlias(locations, entry);
    for (const QStringView entry : SafetyTables::blockedPrefixes)
        addAlias(locations, entry.chopped(1));
    for (const QStringView entry : SafetyTables::cautionPrefixes)
        addAlias(locations, entry.chopped(1));
    for (const QStringView entry : SafetyTables::homeBlockedPaths)
        addAlias(locations, QString(u"~/" % entry));
    for (const QStringView entry : SafetyTables::homeWarningPaths)
        addAlias(locations, QString(u"~/" % entry));
    addAlias(locations, u"~/Library/Application Support");
}

void PathSpellings::addAlias(const Locations& locations, QStringView cataloguePath)
{
    const bool isInHome = cataloguePath.startsWith(u'~');
    const QString asWritten =
        isInHome ? QString(m_home % cataloguePath.sliced(1)) : cataloguePath.toString();
    const QString place = collapsed(locations.path(cataloguePath));
    if (place != (isInHome ? asWritten : QString(m_root % asWritten)))
        m_aliases.push_back({withPrivate(place), withPrivate(asWritten)});
}

std::optional<QString> PathSpellings::plain(const QString& path) const
{
    if (isPlain(path))
        return path;
    QString spelled = path;
    // Bytes that are no text by themselves may be text together: one spelling for the same bytes.
    if (std::ranges::any_of(path, [](QChar unit) { return unit.isSurrogate(); }))
        spelled = PathText::fromBytes(PathText::toBytes(path));
    if (spelled == u"~"_s || spelled.startsWith(u"~/"_s))
        spelled.replace(0, 1, m_home + u'/');
    if (!spelled.startsWith(u'/') || spelled.contains(QChar(u'\0')))
        return {};
    return collapsed(spelled);
}

QString PathSpellings::withPrivate(const QString& plain)
{
    return hasSecondNameInPrivate(plain) ? QString(privateFolder % plain) : plain;
}

QStringList PathSpellings::others(const QString& path) const
{
    QStringList names;
    if (path.size() > privateFolder.size() && liesIn(path, privateFolder)) {
        const QStringView shorter = QStringView(path).sliced(privateFolder.size());
        if (!hasSecondNameInPrivate(shorter))
            names += shorter.toString();
    }
    if (!m_root.isEmpty()) {
        const QString root = withPrivate(m_root);
        if (liesIn(path, root) && path.size() > root.size())
            names += withPrivate(path.sliced(root.size()));
    }
    for (const Alias& alias : m_aliases) {
        if (liesIn(path, alias.place))
            names += alias.cataloguePath % QStringView(path).sliced(alias.place.size());
    }
    return names;
}

std::optional<QString> PathSpellings::belowRoot(const QString& plain) const
{
    if (m_root.isEmpty() || !liesIn(plain, m_root) || plain.size() == m_root.size())
        return {};
    return plain.sliced(m_root.size());
}

} // namespace brivane
