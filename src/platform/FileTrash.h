#pragma once

#include "platform/FileIdentity.h"
#include "platform/Result.h"

#include <optional>

namespace brivane {

/// Moves what stands at `path` to the Trash of its volume and gives the path where it now lies;
/// empty when the Trash does not tell. Never removes anything: where there is no Trash, that is the
/// error. With `expected`, another object at the path is ESTALE. Any thread; blocks.
[[nodiscard]] Result<QString> moveToTrash(const QString& path,
                                          const std::optional<FileIdentity>& expected = {});

} // namespace brivane
