#include "cleaner/CleaningPlan.h"

#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "platform/StandardizedPath.h"
#include "removal/SafetyChecker.h"

#include <cerrno>
#include <set>
#include <tuple>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// Whether `path` lies below one of these.
bool liesInOneOf(const QSet<QString>& folders, const QString& path)
{
    for (qsizetype slash = path.lastIndexOf(u'/'); slash > 0;
         slash = path.lastIndexOf(u'/', slash - 1)) {
        if (folders.contains(path.first(slash)))
            return true;
    }
    return false;
}

/// What says that a path may not go. A link on the way to it gives it two names, both of which
/// count.
class Gate {
public:
    Gate(const SafetyChecker& safety, const QStringList& excluded, const QString& home)
        : m_safety(safety)
        , m_home(home)
        , m_realHome(withoutLinks(home))
    {
        for (const QString& exclusion : excluded)
            m_excluded << exclusion << withoutLinks(exclusion);
        m_excluded.removeDuplicates();
    }

    /// Why an entry may not go; null when it may.
    [[nodiscard]] QString rejection(const CleaningPlan::Entry& entry)
    {
        const QString& path = entry.path;
        const qsizetype slash = path.lastIndexOf(u'/');
        if (slash > 0)
            enter(path.first(slash));
        QString reason = rejectionByName(path);
        const QString real = m_realFolder + path.sliced(std::max<qsizetype>(slash, 0));
        if (reason.isNull() && slash > 0 && real != path)
            reason = rejectionByName(real);
        // What is judged has to be what was found, and is demanded later.
        if (reason.isNull() && entry.identity.folder && entry.identity.folder != m_folderId)
            reason = FileError{ESTALE, path, FileOperation::Remove}.reason();
        return reason;
    }

private:
    [[nodiscard]] QString rejectionByName(const QString& path) const;
    /// Finds out about the folder of the next path, which often is that of the one before.
    void enter(const QString& folder)
    {
        if (folder == m_folder)
            return;
        m_folder = folder;
        m_realFolder = withoutLinks(folder);
        if (m_realFolder == u"/"_s)
            m_realFolder.clear();
        const auto id = FileIdentity::folderOf(m_realFolder + u"/any"_s);
        m_folderId = id ? std::optional(*id) : std::nullopt;
    }

    const SafetyChecker& m_safety;
    const QString& m_home;
    const QString m_realHome;
    QStringList m_excluded;
    QString m_folder;
    QString m_realFolder; ///< empty for "/"
    std::optional<ObjectId> m_folderId;
};

QString Gate::rejectionByName(const QString& path) const
{
    if (liesIn(m_home, path) || liesIn(m_realHome, path))
        return u"It holds your home folder"_s;
    if (!m_safety.isCleanerSafe(path)) {
        const QString text = m_safety.check(path).text;
        return text.isEmpty() ? u"It is protected"_s : text;
    }
    if (m_excluded.isEmpty())
        return {};
    const QString plain = standardizedPath(path, m_home);
    for (const QString& exclusion : m_excluded) {
        if (liesIn(plain, exclusion))
            return u"It is excluded in the settings"_s;
        if (liesIn(exclusion, plain))
            return u"It holds “%1”, which is excluded in the settings"_s.arg(
                PathText::forDisplay(PathText::lastComponent(exclusion)));
    }
    return {};
}

/// An object by where it is, however the way there is spelled.
using Place = std::tuple<quint64, quint64, QString>;

Place placeOf(const CleaningPlan::Entry& entry)
{
    const ObjectId folder = entry.identity.folder.value_or(ObjectId{});
    return {folder.device, folder.inode,
            entry.identity.folder ? PathText::lastComponent(entry.path) : entry.path};
}

} // namespace

qint64 CleaningPlan::count() const
{
    qint64 sum = 0;
    for (const Part& part : parts)
        sum += static_cast<qint64>(part.entries.size());
    return sum;
}

quint64 CleaningPlan::size() const
{
    quint64 sum = 0;
    for (const Part& part : parts)
        sum += part.size();
    return sum;
}

quint64 CleaningPlan::Part::size() const
{
    quint64 sum = 0;
    for (const Entry& entry : entries)
        sum += entry.size;
    return sum;
}

CleaningPlan makeCleaningPlan(CleaningPlan selected, const SafetyChecker& safety,
                              const QStringList& excluded, const QString& home)
{
    Gate gate(safety, excluded, home);
    QSet<QString> paths;
    for (CleaningPlan::Part& part : selected.parts) {
        std::erase_if(part.entries, [&](const CleaningPlan::Entry& entry) {
            const QString reason = gate.rejection(entry);
            if (reason.isNull())
                paths.insert(entry.path);
            else
                part.rejected.push_back({entry.path, reason});
            return !reason.isNull();
        });
    }
    std::set<Place> taken;
    for (CleaningPlan::Part& part : selected.parts) {
        std::erase_if(part.entries, [&](const CleaningPlan::Entry& entry) {
            const bool goesAlong =
                liesInOneOf(paths, entry.path) || !taken.insert(placeOf(entry)).second;
            if (goesAlong)
                part.alongside += entry.path;
            return goesAlong;
        });
    }
    return selected;
}

bool isIn(const QSet<QString>& removed, const QString& path)
{
    return removed.contains(path) || liesInOneOf(removed, path);
}

QSet<QUuid> itemsIn(const std::vector<std::pair<QUuid, QString>>& items,
                    const QSet<QString>& removed)
{
    QSet<QUuid> gone;
    for (const auto& [id, path] : items) {
        if (isIn(removed, path))
            gone.insert(id);
    }
    return gone;
}

} // namespace brivane
