#include "platform/Locations.h"

#include "platform/DesktopAdditions.h"
#include "platform/LiesIn.h"
#include "platform/LocationAliases.h"
#include "platform/PathText.h"
#include "platform/PrivateDirectory.h"
#include "platform/StandardizedPath.h"

#include <QMutex>
#include <QStringBuilder>

#include <filesystem>
#include <map>
#include <utility>
#include <vector>

#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane {

/// What a Locations knows. Constant after its making, but for the directory that
/// temporaryDirectory() settles on at its first call.
struct Locations::Arrangement {
    explicit Arrangement(QString homeFolder)
        : home(std::move(homeFolder))
        , realHome(withoutLinks(home))
    {
    }

    QString home;
    QString realHome;
    bool isLinuxDesktop = false;
    QString folder;     ///< not empty: everything lies in this folder
    QString realFolder; ///< the same, without links on the way
    std::vector<ResolvedAlias> aliases;
    std::map<QString, QList<Addition>> additions;
    QStringList temporaryCandidates; ///< in order of preference

    mutable QMutex temporaryMutex;
    mutable QString temporary; ///< guarded by temporaryMutex
};

namespace {

/// What "/" of a sandbox is called: its startup disk's name, so that screens show it as such.
const QString sandboxRoot = u"/Macintosh HD"_s;

QString withoutEndSlash(QString path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

QString environmentPath(const char* name)
{
    const QByteArray value = qgetenv(name);
    if (!value.startsWith('/'))
        return {};
    // Doubled slashes, "." and ".." have no place in a path that others are compared with.
    const std::filesystem::path plain(value.toStdString());
    return withoutEndSlash(PathText::fromBytes(plain.lexically_normal().native()));
}

QString homeOfUser()
{
    if (const QString home = environmentPath("HOME"); !home.isEmpty())
        return home;
    const passwd* user = ::getpwuid(::getuid());
    return user != nullptr ? withoutEndSlash(PathText::fromBytes(user->pw_dir)) : u"/"_s;
}

QString perUser(const QString& directory)
{
    return directory + u"/brivane-"_s + QString::number(::geteuid());
}

} // namespace

Locations::Locations(std::shared_ptr<const Arrangement> arrangement)
    : m_arrangement(std::move(arrangement))
{
}

Locations Locations::asWritten(const QString& home)
{
    auto arrangement = std::make_shared<Arrangement>(withoutEndSlash(home));
    if (const QString temporary = environmentPath("TMPDIR"); !temporary.isEmpty())
        arrangement->temporaryCandidates += perUser(temporary);
    arrangement->temporaryCandidates += perUser(u"/tmp"_s);
    return Locations(std::move(arrangement));
}

Locations Locations::insideFolder(const QString& folder)
{
    const QString plain = withoutEndSlash(folder);
    auto arrangement = std::make_shared<Arrangement>(plain % sandboxRoot % u"/Users/robin"_s);
    arrangement->folder = plain;
    arrangement->realFolder = withoutLinks(plain);
    arrangement->temporaryCandidates += arrangement->folder + u"/temporary"_s;
    return Locations(std::move(arrangement));
}

Locations Locations::onLinux()
{
    auto arrangement = std::make_shared<Arrangement>(homeOfUser());
    const auto base = [&](const char* name, const QString& standard) {
        const QString value = environmentPath(name);
        return value.isEmpty() ? arrangement->home + standard : value;
    };
    const QString config = base("XDG_CONFIG_HOME", u"/.config"_s);
    QString cache = base("XDG_CACHE_HOME", u"/.cache"_s);
    // What lies in a cache is junk, and the home is none.
    if (liesIn(arrangement->home, cache) || liesIn(arrangement->realHome, cache))
        cache = arrangement->home + u"/.cache"_s;
    const AliasBases bases = {
        .home = arrangement->home,
        .cache = cache,
        .config = config,
        .data = base("XDG_DATA_HOME", u"/.local/share"_s),
        .state = base("XDG_STATE_HOME", u"/.local/state"_s),
        .user = readUserFolders(config, arrangement->home, arrangement->realHome),
    };
    arrangement->aliases = resolvedAliases(bases);
    arrangement->additions = desktopAdditions(bases);
    arrangement->isLinuxDesktop = true;
    if (const QString runtime = environmentPath("XDG_RUNTIME_DIR"); !runtime.isEmpty())
        arrangement->temporaryCandidates += runtime + u"/brivane"_s;
    arrangement->temporaryCandidates += perUser(u"/tmp"_s);
    return Locations(std::move(arrangement));
}

QString Locations::path(QStringView cataloguePath) const
{
    const Arrangement& here = *m_arrangement;
    const ResolvedAlias* best = nullptr;
    for (const ResolvedAlias& alias : here.aliases) {
        if (liesIn(cataloguePath, alias.cataloguePath) &&
            (best == nullptr || alias.cataloguePath.size() > best->cataloguePath.size()))
            best = &alias;
    }
    if (best != nullptr)
        return best->target % cataloguePath.sliced(best->cataloguePath.size());
    if (liesIn(cataloguePath, u"~"))
        return here.home % cataloguePath.sliced(1);
    if (here.folder.isEmpty() || !cataloguePath.startsWith(u'/') ||
        liesIn(cataloguePath, here.folder))
        return cataloguePath.toString();
    return withoutEndSlash(here.folder % sandboxRoot % cataloguePath);
}

QString Locations::shown(QStringView path) const
{
    const Arrangement& here = *m_arrangement;
    if (here.folder.isEmpty())
        return PathText::forDisplay(path);
    for (const QString& folder : {here.folder, here.realFolder}) {
        // What lies beside the machine's disk loses the folder as well.
        for (const QString& root : {QString(folder % sandboxRoot), folder}) {
            const qsizetype length = root == u'/' ? 0 : root.size();
            if (liesIn(path, root))
                return path.size() > length ? PathText::forDisplay(path.sliced(length)) : u"/"_s;
        }
    }
    return PathText::forDisplay(path);
}

QString Locations::home() const
{
    return m_arrangement->home;
}

QString Locations::realHome() const
{
    return m_arrangement->realHome;
}

const std::vector<ResolvedAlias>& Locations::aliases() const
{
    return m_arrangement->aliases;
}

bool Locations::isLinuxDesktop() const
{
    return m_arrangement->isLinuxDesktop;
}

QList<Locations::Addition> Locations::additions(QStringView table) const
{
    const auto found = m_arrangement->additions.find(table.toString());
    return found != m_arrangement->additions.end() ? found->second : QList<Addition>();
}

QString Locations::temporaryDirectory() const
{
    const Arrangement& here = *m_arrangement;
    const QMutexLocker lock(&here.temporaryMutex);
    // Settled on once, yet looked at on every call: cleaners of temporary files may have taken it.
    if (!here.temporary.isEmpty() && makePrivateDirectory(here.temporary))
        return here.temporary;
    here.temporary.clear();
    for (const QString& candidate : here.temporaryCandidates) {
        if (makePrivateDirectory(candidate)) {
            here.temporary = candidate;
            return candidate;
        }
    }
    for (const QString& candidate : here.temporaryCandidates) {
        here.temporary = makeUniquePrivateDirectory(candidate);
        if (!here.temporary.isEmpty())
            break;
    }
    return here.temporary;
}

} // namespace brivane
