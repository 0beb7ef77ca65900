#include "scanner/FileNodes.h"

#include <thread>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;

TEST(FileNode, SortingReachesEveryLevelAndStopsAtWhatCountsAsSorted)
{
    const auto tree = FileTree::create("/root");
    FileNode* folder = addFolder(tree->root(), "folder");
    FileNode* small = addFile(folder, "small", 1);
    FileNode* big = addFile(folder, "big", 2);
    tree->root()->recalculateSize();
    tree->root()->sortBySize();
    EXPECT_EQ(folder->children(), std::vector({big, small}));
    FileNode* late = addFile(tree->root(), "late", 1'000'000);
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->children(), std::vector({folder, late})) << "not summed up again";
    tree->root()->recalculateSize();
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->children(), std::vector({late, folder}));
}

TEST(FileNode, ADeepTreeNeedsNoStack)
{
    const auto tree = FileTree::create("/deep");
    FileNode* at = tree->root();
    for (int level = 0; level < 200'000; ++level)
        at = addFolder(at, "d");
    addFile(at, "bottom", 7);
    tree->root()->recalculateSize();
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->size(), 7U);
    EXPECT_EQ(tree->root()->fileCount(), 1);
}

TEST(FileNode, AReaderNeverSeesAListInMidChange)
{
    const auto tree = FileTree::create("/busy");
    std::atomic<bool> isDone{false};
    std::thread reader([&] {
        std::size_t seen = 0;
        while (!isDone) {
            const std::vector<FileNode*> children = tree->root()->children();
            ASSERT_GE(children.size(), seen);
            seen = children.size();
            for (const FileNode* child : children)
                ASSERT_EQ(child->nameBytes(), "child");
        }
    });
    for (std::uint64_t i = 0; i < 20'000; ++i)
        addFile(tree->root(), "child", i);
    tree->root()->sortBySize();
    isDone = true;
    reader.join();
    EXPECT_EQ(tree->root()->children().front()->size(), 19'999U);
}
