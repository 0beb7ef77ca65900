#pragma once

#include "QuarantineGround.h"
#include "support/FileTestSupport.h"

#include <map>
#include <vector>

namespace brivane::testing {

/// Where the user's things are.
enum class Things { AtHome, BehindALink, OnAnotherVolume };

/// A ground with a file, a folder and a link of the user's, and what they hold, so that they can be
/// found again wherever they are. On another volume there is no Trash.
class WatchedGround : public QuarantineGround {
public:
    explicit WatchedGround(Things things);

    [[nodiscard]] QStringList paths() const;
    /// In how many places the thing is whole that was at `path`: there, in the store with an entry
    /// in its list, or in the Trash.
    [[nodiscard]] int places(const QString& path) const;
    [[nodiscard]] bool isAtItsPlace(const QString& path) const;
    /// Or beside it, under its name with this behind it.
    [[nodiscard]] bool isWholeAtItsPlace(const QString& path, const QString& suffix = {}) const;
    /// What copying has left beside the things.
    [[nodiscard]] QStringList rests() const;
    /// What is in the store and not in its list, or the other way round.
    [[nodiscard]] QStringList mismatches() const;

private:
    QString m_folder;
    std::map<QString, Snapshot> m_before;
};

/// One thing that is done with the store, and what there is before. Both start the service.
struct Deed {
    const char* name;
    Things things;
    void (*prepare)(WatchedGround& ground);
    void (*run)(WatchedGround& ground);
    /// How the last result should begin, going by what is on the disk.
    QString (*result)(const WatchedGround& ground);
    bool removes; ///< for good
};
extern const std::vector<Deed> deeds;

} // namespace brivane::testing
