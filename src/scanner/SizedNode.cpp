#include "scanner/SizedNode.h"

namespace brivane {

std::vector<SizedNode> childrenBySize(const FileNode& directory)
{
    const std::vector<FileNode*> children = directory.children();
    std::vector<SizedNode> sized;
    sized.reserve(children.size());
    for (FileNode* child : children) {
        // The size is read once: it may grow while the rest is put into order.
        const std::uint64_t size = child->size();
        if (size > 0 || child->isUnreadable())
            sized.push_back({child, size});
    }
    // The tree of a finished scan is in order already.
    if (!std::ranges::is_sorted(sized, std::greater(), &SizedNode::size))
        std::ranges::stable_sort(sized, std::greater(), &SizedNode::size);
    return sized;
}

std::span<const SizedNode> withSize(std::span<const SizedNode> children)
{
    const auto end = std::ranges::partition_point(
        children, [](const SizedNode& child) { return child.size > 0; });
    return {children.begin(), end};
}

} // namespace brivane
