#pragma once

#include <cstdint>
#include <optional>

namespace brivane {

/// Bytes of memory that the process has resident now; none when the system does not tell.
[[nodiscard]] std::optional<std::uint64_t> residentMemory();

} // namespace brivane
