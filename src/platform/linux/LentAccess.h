#pragma once

#include "platform/linux/PathPlace.h"

#include <functional>

namespace brivane::posix {

/// What the mode of a folder denies its own owner, lent for as long as something is to be done in
/// it.
///
/// Only a folder of this user's is opened up, by its descriptor, and only after something was
/// refused with EACCES. Its exact mode comes back with giveBack(); a crash before that leaves the
/// mode changed and nothing else.
class LentAccess {
public:
    /// Lets the owner read, change and search the folder; O_PATH will do. EACCES when that is not
    /// this user's to do, would change nothing, or could not be undone.
    [[nodiscard]] int lend(int folder);
    /// lend(), and opens the folder for reading. On failure it has its mode back.
    [[nodiscard]] int open(int folder, FileDescriptor& opened);
    /// Gives the folder, which is the same, its mode back. Does nothing when nothing was lent.
    void giveBack(int folder);

private:
    std::optional<mode_t> m_mode; ///< the exact one, while something is lent
};

/// Calls `move`, which gives what stands at `place` another parent and returns 0 or an errno value.
///
/// Linux wants the right to write to a folder that gets another parent. When that may be what is
/// missing, it is lent and the call made once more; `isElsewhereWritable` says that the new parent
/// is not what refuses.
[[nodiscard]] int moveLending(const PathPlace& place, const FileStatus& found,
                              const std::function<int()>& move,
                              const std::function<bool()>& isElsewhereWritable = {});

/// Whether this user may add to and take from the open folder.
[[nodiscard]] bool mayChange(int folder);

} // namespace brivane::posix
