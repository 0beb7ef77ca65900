#pragma once

#include "platform/Result.h"

namespace brivane {

/// Gives a file that cannot be understood a name of its own beside its place, so that another can
/// be written there and nothing in it is lost. Its new path is the result. Any thread; blocks.
Result<QString> putAside(const QString& path);

} // namespace brivane
