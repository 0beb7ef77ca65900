#include "scanner/SizedNode.h"

namespace brivane {

std::vector<SizedNode> childrenBySize(const FileNode& directory)
{
    const std::vector<FileNode*> children = directory.children();
    std::vector<SizedNode> sized;
    sized.reserve(children.size());
    for (FileNode* child : children) {
        // The size is read once: it may grow while the rest is put into order.
        if (const std::uint64_t size = child->size(); size > 0)
            sized.push_back({child, size});
    }
    // The tree of a finished scan is in order already.
    if (!std::ranges::is_sorted(sized, std::greater(), &SizedNode::size))
        std::ranges::stable_sort(sized, std::greater(), &SizedNode::size);
    return sized;
}

} // namespace brivane
