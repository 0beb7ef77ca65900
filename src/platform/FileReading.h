#pragma once

#include "platform/Result.h"

#include <QByteArray>

namespace brivane {

/// The whole content of the regular file at `path`, or of the one that a link there leads to; what
/// is no regular file is EINVAL. One of more than `limit` bytes is EFBIG, whether it says so or
/// shows it while it is read; memory is taken for no more than `limit`. Any thread; blocks.
Result<QByteArray> readWholeFile(const QString& path, qsizetype limit = qsizetype(64) << 20);

} // namespace brivane
