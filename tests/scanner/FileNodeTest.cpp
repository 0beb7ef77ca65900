#include "scanner/FileNodes.h"

#include <set>
#include <thread>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;

TEST(FileNode, PathsAndIdsComeFromThePlaceInTheTree)
{
    const auto tree = FileTree::create("/");
    FileNode* usr = addFolder(tree->root(), "usr");
    FileNode* odd = addFile(usr, "a\n\xFF", 3);
    EXPECT_EQ(tree->root()->name(), u"/");
    EXPECT_EQ(usr->pathBytes(), "/usr");
    EXPECT_EQ(odd->pathBytes(), "/usr/a\n\xFF");

    const auto other = FileTree::create("/home/me/");
    EXPECT_EQ(other->root()->name(), u"me");
    EXPECT_EQ(addFile(other->root(), "x", 0)->pathBytes(), "/home/me/x");

    std::set<QUuid> ids;
    for (const auto& one : {tree, other}) {
        ids.insert(one->root()->id());
        for (int i = 0; i < 1000; ++i)
            ids.insert(addFile(one->root(), "n", 0)->id());
    }
    EXPECT_EQ(ids.size(), 2002U);
    EXPECT_EQ(usr->id(), usr->id());
}

TEST(FileNode, SortingReachesEveryLevelAndStopsAtWhatCountsAsSorted)
{
    const auto tree = FileTree::create("/root");
    FileNode* folder = addFolder(tree->root(), "folder");
    FileNode* small = addFile(folder, "small", 1);
    FileNode* big = addFile(folder, "big", 2);
    tree->root()->recalculateSize();
    tree->root()->sortBySize();
    EXPECT_EQ(folder->children(), std::vector({big, small}));
    // A tree that counts as sorted is left alone until it has been summed up again.
    FileNode* late = addFile(tree->root(), "late", 1'000'000);
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->children(), std::vector({folder, late}));
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

TEST(FileNode, TheTreeLivesAsLongAsAnyOfItsNodesIsHeld)
{
    std::weak_ptr<FileTree> watched;
    FileNodePtr held;
    {
        const auto tree = FileTree::create("/kept");
        watched = tree;
        held = addFile(tree->root(), "child", 1)->shared();
    }
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(held->pathBytes(), "/kept/child");
    held.reset();
    EXPECT_TRUE(watched.expired());
}
