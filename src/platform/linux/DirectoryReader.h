#pragma once

#include "platform/linux/WalkQueue.h"

namespace brivane::walking {

/// Reads one directory at a time: lists it, asks for the attributes of each entry, and publishes
/// the entries in batches. Scratch memory is kept from call to call, so each thread has a reader.
class DirectoryReader {
public:
    explicit DirectoryReader(WalkQueue& queue);

    /// Reads `directory`, which the caller has taken for reading, to its end or until the walk
    /// stops, and publishes it.
    void read(Directory* directory);

private:
    [[nodiscard]] bool isElsewhere(const Directory* directory, int descriptor) const;
    void append(Directory* directory, int descriptor, const char* name, std::uint8_t type);
    [[nodiscard]] bool isPlainDirectory(std::uint8_t type, std::string_view name) const;
    [[nodiscard]] bool isPlainOther(std::uint8_t type, std::string_view name) const;
    void enterLater(Directory* directory, Record& record);
    [[nodiscard]] bool isUntouchable(const Directory* directory, std::string_view name) const;
    Batch takeBatch();

    WalkQueue& m_queue;
    std::vector<char> m_listing;
    std::vector<std::byte> m_records;
    std::vector<Directory*> m_children;
    std::size_t m_used = 0;
    std::uint32_t m_count = 0;
};

/// Fills `record` with what lstat says of `name` in `descriptor` (AT_FDCWD for a path), or of the
/// descriptor itself when the name is empty: kind, error, attributes and whether a mount begins
/// there.
void readAttributes(int descriptor, const char* name, Record& record);

} // namespace brivane::walking
