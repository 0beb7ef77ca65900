#pragma once

#include "platform/Result.h"

#include <QByteArray>

namespace brivane {

/// The whole content of the regular file at `path`, or of the one that a link there leads to; what
/// is no regular file is EINVAL. For small files. Any thread; blocks.
Result<QByteArray> readWholeFile(const QString& path);

} // namespace brivane
