#pragma once

#include <cstddef>
#include <functional>

namespace brivane {

/// Calls `work` once for each number below `count`, on all cores, the calling thread among them,
/// and returns when all calls have. In no order; `work` does not throw. On a machine that has no
/// thread to give, the caller does it alone.
void forEachInParallel(std::size_t count, const std::function<void(std::size_t)>& work);

} // namespace brivane
