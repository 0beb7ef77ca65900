#include "scanner/charts/ChartItem.h"

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t maxBlocks = 40;

/// Sparse files may claim more bytes together than a sum can hold.
std::uint64_t saturatedSum(std::uint64_t a, std::uint64_t b)
{
    return a + b < a ? UINT64_MAX : a + b;
}

ChartItem groupOf(std::span<const SizedNode> children)
{
    ChartItem group;
    group.groupedCount = children.size();
    group.colorIndex = static_cast<int>(maxBlocks) - 1;
    for (const SizedNode& child : children) {
        group.size = saturatedSum(group.size, child.size);
        group.isIncomplete = group.isIncomplete || child.node->isIncomplete();
    }
    return group;
}

} // namespace

QUuid ChartItem::id() const
{
    return isGrouped() ? QUuid() : node->id();
}

QString ChartItem::name() const
{
    return isGrouped() ? u"Other (%1 items)"_s.arg(groupedCount) : node->name();
}

QString ChartItem::path() const
{
    return isGrouped() ? u"__other__"_s : node->path();
}

std::vector<ChartItem> displayItems(std::span<const SizedNode> children)
{
    const bool isGrouping = children.size() > maxBlocks;
    const std::size_t singles = isGrouping ? maxBlocks - 1 : children.size();
    std::vector<ChartItem> items;
    items.reserve(singles + 1);
    for (const SizedNode& child : children.first(singles)) {
        ChartItem item;
        item.node = child.node;
        item.size = child.size;
        item.colorIndex = static_cast<int>(items.size());
        item.isIncomplete = child.node->isIncomplete();
        items.push_back(item);
    }
    if (isGrouping)
        items.push_back(groupOf(children.subspan(singles)));
    return items;
}

} // namespace brivane
