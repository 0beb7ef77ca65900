#pragma once

#include "platform/linux/SystemCall.h"

#include <QByteArrayView>

namespace brivane::posix {

/// Writes all of `bytes` at the file's position, however the kernel portions it.
[[nodiscard]] int writeAll(int file, QByteArrayView bytes);

/// Copies the first `size` bytes of `from` to the empty file `to`. Holes stay holes where the file
/// system knows of them. ESTALE when `from` ends before that.
[[nodiscard]] int copyContent(int from, int to, std::uint64_t size);

/// Gives `to` the owner, extended attributes, access lists, mode and times of `from`, which
/// `status` describes. An owner that this user may not set is passed over, and then the set-user
/// and set-group bits are, too; so are attributes of the system's own (security.*, trusted.*) that
/// cannot be set. Everything else that cannot be kept is an error.
[[nodiscard]] int copyAttributes(int from, int to, const FileStatus& status);

/// The same for what cannot be opened, a link or a FIFO, by name; these have no attributes or
/// access lists worth keeping.
[[nodiscard]] int copyAttributesByName(int folder, const char* name, const FileStatus& status);

} // namespace brivane::posix
