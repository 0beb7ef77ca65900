#include "scanner/privileged/NodeIndex.h"

#include <QHashFunctions>

namespace brivane {

NodeIndex::NodeIndex(std::size_t expected)
    : m_slots(expected + expected / 2 + 64)
{
}

std::size_t NodeIndex::hash(const FileNode* parent, std::string_view name)
{
    // Seeded anew in each process: names cannot be chosen to collide.
    static const std::size_t seed = QHashSeed::globalSeed();
    return qHashBits(name.data(), name.size(), seed ^ reinterpret_cast<std::uintptr_t>(parent));
}

void NodeIndex::put(FileNode* node)
{
    std::size_t at = hash(node->parent(), node->nameBytes()) % m_slots.size();
    while (m_slots[at])
        at = at + 1 == m_slots.size() ? 0 : at + 1;
    m_slots[at] = node;
}

void NodeIndex::insert(FileNode* node)
{
    if (++m_count > m_slots.size() / 4 * 3) {
        std::vector<FileNode*> before(m_slots.size() * 2);
        before.swap(m_slots);
        for (FileNode* old : before) {
            if (old)
                put(old);
        }
    }
    put(node);
}

FileNode* NodeIndex::find(const FileNode* parent, std::string_view name) const
{
    std::size_t at = hash(parent, name) % m_slots.size();
    while (FileNode* node = m_slots[at]) {
        if (node->parent() == parent && node->nameBytes() == name)
            return node;
        at = at + 1 == m_slots.size() ? 0 : at + 1;
    }
    return nullptr;
}

} // namespace brivane
