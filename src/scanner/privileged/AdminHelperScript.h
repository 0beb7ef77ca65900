#pragma once

#include <QByteArray>

#include <cstdint>
#include <string>
#include <string_view>

// The program that a scan as administrator runs: its source text, and what it prints.
namespace brivane::AdminHelperScript {

/// The text of the one file that the system's compiler is given. Any thread.
[[nodiscard]] QByteArray sourceText();

/// One line of the helper's output. The texts are bytes as the file system has them, and belong to
/// whoever made the entry.
struct ScanEntry {
    std::string_view path;
    std::string_view name; ///< the last component of `path`
    std::uint64_t size = 0;
    bool isDir = false;
    std::string_view parentPath; ///< `path` without its last component
};

/// Reads lines of the helper's output. Belongs to one thread.
///
/// A line is one flat object of JSON with exactly the members of ScanEntry, in any order. Text is
/// UTF-8 except for bytes that are none: these are written as lone surrogates U+DC80 to U+DCFF, as
/// PathText does it.
class EntryDecoder {
public:
    /// The entry of `line`, or null when it is anything else. It is valid until the next call, and
    /// as long as the line.
    const ScanEntry* decode(std::string_view line);

private:
    ScanEntry m_entry;
    std::string m_path;
    std::string m_name;
    std::string m_parentPath;
};

} // namespace brivane::AdminHelperScript
