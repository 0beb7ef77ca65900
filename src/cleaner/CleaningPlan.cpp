#include "cleaner/CleaningPlan.h"

#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "platform/StandardizedPath.h"
#include "removal/SafetyChecker.h"

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

/// `path` by the folder in which it lies indeed; what stands there may be a link itself.
QString realPlaceOf(const QString& path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString folder = slash > 0 ? withoutLinks(path.first(slash)) : QString();
    return (folder == u"/"_s ? QString() : folder) + path.sliced(std::max<qsizetype>(slash, 0));
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

    /// Why `path` may not go; null when it may.
    [[nodiscard]] QString rejection(const QString& path) const
    {
        const QString reason = rejectionByName(path);
        const QString real = realPlaceOf(path);
        return reason.isNull() && real != path ? rejectionByName(real) : reason;
    }

private:
    [[nodiscard]] QString rejectionByName(const QString& path) const;

    const SafetyChecker& m_safety;
    const QString& m_home;
    const QString m_realHome;
    QStringList m_excluded;
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
            return LateExclusions::reason();
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

CleaningPlan makeCleaningPlan(CleaningPlan selected, const SafetyChecker& safety,
                              const QStringList& excluded, const QString& home)
{
    const Gate gate(safety, excluded, home);
    QSet<QString> paths;
    for (CleaningPlan::Part& part : selected.parts) {
        std::erase_if(part.entries, [&](const CleaningPlan::Entry& entry) {
            const QString reason = gate.rejection(entry.path);
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
            return liesInOneOf(paths, entry.path) || !taken.insert(placeOf(entry)).second;
        });
    }
    return selected;
}

QSet<QUuid> itemsIn(const std::vector<std::pair<QUuid, QString>>& items,
                    const QSet<QString>& removed)
{
    QSet<QUuid> gone;
    for (const auto& [id, path] : items) {
        if (removed.contains(path) || liesInOneOf(removed, path))
            gone.insert(id);
    }
    return gone;
}

} // namespace brivane
