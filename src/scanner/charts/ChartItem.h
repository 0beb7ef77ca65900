#pragma once

#include "scanner/SizedNode.h"

namespace brivane {

/// What a chart draws as one piece: a child of the directory on show or, in the treemap, where
/// these are too many, the group of all the small ones. The node is valid as long as someone holds
/// its tree.
struct ChartItem {
    FileNode* node = nullptr;     ///< null for the group
    std::uint64_t size = 0;       ///< bytes
    std::size_t groupedCount = 0; ///< how many children the group stands for
    int colorIndex = 0;
    bool isIncomplete = false; ///< the size is a lower bound

    [[nodiscard]] bool isGrouped() const { return node == nullptr; }
    [[nodiscard]] bool isDirectory() const { return isGrouped() || node->isDirectory(); }
    /// The block may become the directory on show; the group never does.
    [[nodiscard]] bool canDrillDown() const { return !isGrouped() && node->isDirectory(); }
    /// The node's; null for the group, so that its block is found again in the next picture.
    [[nodiscard]] QUuid id() const;
    /// As it is on the disk, so not fit to be shown yet.
    [[nodiscard]] QString name() const;
    /// The group's is none of a file: it starts with "__".
    [[nodiscard]] QString path() const;
};

/// What the treemap shows of a directory: at most 40 items. `children` are as withSize() gives
/// them. Costs a look at each child where there are more than 40.
std::vector<ChartItem> displayItems(std::span<const SizedNode> children);

} // namespace brivane
