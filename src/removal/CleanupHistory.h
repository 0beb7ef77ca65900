#pragma once

#include "removal/CleanupRecord.h"

#include <QList>
#include <QStringView>

#include <memory>
#include <optional>

namespace brivane {

class Clock;
class Composition;
class UserDefaults;

/// Remembers the last ten clean-ups, in the user defaults and nowhere else, so that all instances
/// on the same defaults agree. Any thread, one writer at a time.
class CleanupHistory {
public:
    static constexpr QStringView key = u"lastCleanupRecords";

    CleanupHistory(UserDefaults& defaults, const Clock& clock);
    static std::unique_ptr<CleanupHistory> make(Composition& composition);

    /// Puts `record` in front of the others, and drops what is over ten. Does not wait for the
    /// disk.
    void save(const CleanupRecord& record) const;
    /// Newest first. Empty when there are none, or they cannot be understood; those stay stored
    /// until the next save.
    [[nodiscard]] QList<CleanupRecord> loadAll() const;
    /// Whole days of the calendar that have passed since the newest; none when there is none.
    [[nodiscard]] std::optional<qint64> daysSinceLastCleanup() const;

private:
    UserDefaults& m_defaults;
    const Clock& m_clock;
};

} // namespace brivane
