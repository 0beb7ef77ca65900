#pragma once

#include "platform/FileIdentity.h"
#include "platform/Result.h"

#include <optional>

namespace brivane {

/// Moves what stands at `path` to the Trash of its volume and gives the path where it now lies;
/// empty when the Trash does not tell. Never removes anything: where there is no Trash, that is the
/// error. With `expected`, another object at the path is ESTALE.
///
/// ESTALE as well when the path led the Trash's service to another object at the last moment, when
/// a parent was swapped for a link for instance. That one then lies in the Trash, where the error's
/// path says, and can be put back from there. Any thread; blocks.
[[nodiscard]] Result<QString> moveToTrash(const QString& path,
                                          const std::optional<FileIdentity>& expected = {});

} // namespace brivane
