#pragma once

#include <cstdint>

// Two bounds that a scan is held against. Both add up the sizes of what lies below `path` on its
// device, so that the work cannot be left out, and keep nothing else.
namespace brivane::bench {

struct Sum {
    std::uint64_t entries = 0;
    std::uint64_t bytes = 0;
};

/// glibc's fts, one thread.
Sum plainFts(const char* path);

/// getdents64 and fstatat on two threads that share a list of directories, and nothing more: what
/// the system calls alone cost.
Sum bareLoop(const char* path);

} // namespace brivane::bench
