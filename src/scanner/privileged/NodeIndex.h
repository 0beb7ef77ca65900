#pragma once

#include "scanner/FileNode.h"

namespace brivane {

/// Finds nodes of a tree by their parent and name: what a map of paths would do, for twelve bytes
/// an entry. Holds pointers only; belongs to one thread.
class NodeIndex {
public:
    /// Room for this many nodes; more make it grow.
    explicit NodeIndex(std::size_t expected);

    void insert(FileNode* node);
    /// Null when there is none; of several, the one that came first.
    [[nodiscard]] FileNode* find(const FileNode* parent, std::string_view name) const;

private:
    [[nodiscard]] static std::size_t hash(const FileNode* parent, std::string_view name);
    void put(FileNode* node);

    std::vector<FileNode*> m_slots; ///< open addressing; null is free
    std::size_t m_count = 0;
};

} // namespace brivane
