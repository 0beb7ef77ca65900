#pragma once

#include "cleaner/CleaningPlan.h"
#include "platform/LiesIn.h"
#include "platform/StandardizedPath.h"

#include <algorithm>
#include <mutex>

namespace brivane {

/// What the user takes out of a removal that is under way: it stays, unless it was reached before.
/// Any thread.
class KeptBack {
public:
    void setSelected(const QUuid& item, bool isSelected)
    {
        const std::lock_guard lock(m_mutex);
        if (isSelected)
            m_deselected.remove(item);
        else
            m_deselected.insert(item);
    }

    /// Standardised paths.
    void setExcluded(const QStringList& paths)
    {
        const std::lock_guard lock(m_mutex);
        m_excluded = paths;
    }

    /// Looks at the disk once something was excluded.
    [[nodiscard]] bool holds(const CleaningPlan::Entry& entry, const QString& home) const
    {
        QStringList all;
        {
            const std::lock_guard lock(m_mutex);
            if (m_deselected.contains(entry.id))
                return true;
            all = m_excluded;
        }
        if (all.isEmpty())
            return false;
        const QString path = standardizedPath(entry.path, home);
        return std::ranges::any_of(all, [&](const QString& excluded) {
            return liesIn(path, excluded) || liesIn(excluded, path);
        });
    }

private:
    mutable std::mutex m_mutex;
    QSet<QUuid> m_deselected; ///< guarded by m_mutex
    QStringList m_excluded;   ///< likewise
};

} // namespace brivane
