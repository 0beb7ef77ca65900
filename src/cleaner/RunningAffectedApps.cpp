#include "cleaner/RunningAffectedApps.h"

#include "cleaner/tables/ApplicationFragments.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr QLatin1StringView ownIdentifier = "com.brivane.app"_L1;
constexpr QLatin1StringView docker = "com.docker.docker"_L1; // runs without a window

/// What to look for in paths, in small letters, and what follows each place where it is found.
struct Wanted {
    QString text;
    bool isWholeComponent = false;
};

bool holds(const QString& path, const Wanted& wanted)
{
    if (!wanted.isWholeComponent)
        return path.contains(wanted.text);
    for (qsizetype at = path.indexOf(wanted.text); at >= 0;
         at = path.indexOf(wanted.text, at + 1)) {
        const qsizetype end = at + wanted.text.size();
        if (at > 0 && path[at - 1] == u'/' && (end == path.size() || path[end] == u'/'))
            return true;
    }
    return false;
}

std::vector<Wanted> wantedOf(const QString& identifier, std::span<const AppFragment> additions)
{
    std::vector<Wanted> wanted{{identifier, !identifier.contains(u'.')}};
    for (const ApplicationFragment& row : applicationFragments) {
        if (row.bundleIdentifier == identifier)
            wanted.push_back({row.fragment.toString()});
    }
    for (const AppFragment& row : additions) {
        if (row.bundleIdentifier.toLower() == identifier && !row.fragment.isEmpty())
            wanted.push_back({row.fragment.toLower()});
    }
    return wanted;
}

} // namespace

QStringList runningAffectedApps(const QStringList& paths, std::span<const RunningApp> running,
                                std::span<const AppFragment> additions)
{
    if (paths.isEmpty())
        return {};
    QStringList lowered;
    lowered.reserve(paths.size());
    for (const QString& path : paths)
        lowered += path.toLower();
    QSet<QString> names;
    for (const RunningApp& app : running) {
        const QString identifier = app.bundleIdentifier.toLower();
        if (identifier.isEmpty() || identifier == ownIdentifier || app.localizedName.isEmpty() ||
            names.contains(app.localizedName))
            continue;
        if (!app.isRegular && identifier != docker)
            continue;
        const std::vector<Wanted> wanted = wantedOf(identifier, additions);
        const auto isAffected = [&](const QString& path) {
            return std::ranges::any_of(wanted,
                                       [&](const Wanted& text) { return holds(path, text); });
        };
        if (std::ranges::any_of(lowered, isAffected))
            names.insert(app.localizedName);
    }
    QStringList sorted(names.cbegin(), names.cend());
    sorted.sort();
    return sorted;
}

} // namespace brivane
