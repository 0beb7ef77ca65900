#pragma once

#include "cleaner/CleanerCategory.h"

#include <QSet>
#include <QStringList>

#include <vector>

namespace brivane {

class SafetyChecker;

/// What a removal is going to do, settled from what was selected when it began. Plain values; any
/// thread.
struct CleaningPlan {
    /// An item as it was selected.
    struct Entry {
        QUuid id;
        QString name;
        QString path;
        quint64 size = 0;
        FileIdentity identity;
    };
    /// Why one does not go.
    struct Rejected {
        QString path;
        QString reason; ///< for the user
    };
    /// What is selected of one category.
    struct Part {
        CleanerCategory::CategoryType type;
        std::vector<Entry> entries = {}; ///< that go
        std::vector<Rejected> rejected = {};
        QStringList alongside = {}; ///< paths that go with another one

        [[nodiscard]] quint64 size() const; ///< bytes of the entries
    };
    std::vector<Part> parts; ///< in the order of the categories

    // Of the entries that go.
    [[nodiscard]] qint64 count() const;
    [[nodiscard]] quint64 size() const; ///< bytes
};

/// Takes out of `selected`, where everything is an entry, what may not go, and what goes with
/// another one in any case, since that is the same or it lies in it. `excluded` are standardised
/// paths, `home` is for standardising others; looks at the disk for that, and for the links on the
/// way: a path is judged by the place to which it leads, too.
[[nodiscard]] CleaningPlan makeCleaningPlan(CleaningPlan selected, const SafetyChecker& safety,
                                            const QStringList& excluded, const QString& home);

/// Whether `path` is one of these, or lies in one.
[[nodiscard]] bool isIn(const QSet<QString>& removed, const QString& path);

/// Those of `items` that are gone when nothing is left at `removed`: by their paths they lie there.
[[nodiscard]] QSet<QUuid> itemsIn(const std::vector<std::pair<QUuid, QString>>& items,
                                  const QSet<QString>& removed);

} // namespace brivane
