#include "scanner/FileTree.h"

#include <map>
#include <random>
#include <set>
#include <thread>

#include <gtest/gtest.h>

using namespace brivane;

namespace {

FileNode* add(FileTree& tree, FileNode* parent, std::string_view name, bool isDirectory,
              std::uint64_t size = 0)
{
    FileNode* node = tree.make(name, isDirectory, size);
    tree.attach(node, parent);
    return node;
}

struct Sum {
    std::uint64_t bytes = 0;
    std::int64_t files = 0;
};

/// What a subtree holds, counted afresh and checked at every directory.
Sum countAndCheck(const FileNode* node)
{
    if (!node->isDirectory())
        return {node->size(), 1};
    Sum sum;
    for (const FileNode* child : node->children()) {
        EXPECT_EQ(child->parent(), node);
        const Sum below = countAndCheck(child);
        sum.bytes += below.bytes;
        sum.files += below.files;
    }
    EXPECT_EQ(node->size(), sum.bytes);
    EXPECT_EQ(node->fileCount(), sum.files);
    return sum;
}

void expectStablyDescending(const FileNode* node, const std::vector<FileNode*>& before)
{
    std::vector<FileNode*> expected = before;
    std::ranges::stable_sort(expected, std::greater(), &FileNode::size);
    EXPECT_EQ(node->children(), expected);
}

} // namespace

TEST(FileNode, PathsAndIdsComeFromThePlaceInTheTree)
{
    const auto tree = FileTree::create("/");
    FileNode* usr = add(*tree, tree->root(), "usr", true);
    FileNode* odd = add(*tree, usr, "a\n\xFF", false, 3);
    EXPECT_EQ(tree->root()->name(), u"/");
    EXPECT_EQ(usr->pathBytes(), "/usr");
    EXPECT_EQ(odd->pathBytes(), "/usr/a\n\xFF");

    const auto other = FileTree::create("/home/me/");
    EXPECT_EQ(other->root()->name(), u"me");
    EXPECT_EQ(add(*other, other->root(), "x", false)->pathBytes(), "/home/me/x");

    std::set<QUuid> ids;
    for (const auto& one : {tree, other}) {
        ids.insert(one->root()->id());
        for (int i = 0; i < 1000; ++i)
            ids.insert(add(*one, one->root(), "n", false)->id());
    }
    EXPECT_EQ(ids.size(), 2002U);
    EXPECT_EQ(usr->id(), usr->id());
}

TEST(FileNode, RecalculateAndSortReachEveryLevelAndStopWhereItIsSorted)
{
    std::mt19937 random(5);
    const auto tree = FileTree::create("/root");
    std::vector<FileNode*> directories{tree->root()};
    for (int i = 0; i < 5000; ++i) {
        FileNode* parent = directories[random() % directories.size()];
        const bool isDirectory = random() % 4 == 0;
        FileNode* node = add(*tree, parent, "n", isDirectory, isDirectory ? 0 : random() % 10);
        if (isDirectory)
            directories.push_back(node);
    }
    tree->root()->recalculateSize();
    countAndCheck(tree->root());

    std::map<FileNode*, std::vector<FileNode*>> before;
    for (FileNode* directory : directories)
        before[directory] = directory->children();
    tree->root()->sortBySize();
    for (FileNode* directory : directories)
        expectStablyDescending(directory, before[directory]);

    // A tree that counts as sorted is left alone until it has been summed up again.
    FileNode* late = add(*tree, tree->root(), "late", false, 1'000'000);
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->children().back(), late);
    tree->root()->recalculateSize();
    tree->root()->sortBySize();
    EXPECT_EQ(tree->root()->children().front(), late);
}

TEST(FileNode, ADeepTreeNeedsNoStack)
{
    const auto tree = FileTree::create("/deep");
    FileNode* at = tree->root();
    for (int level = 0; level < 200'000; ++level)
        at = add(*tree, at, "d", true);
    add(*tree, at, "bottom", false, 7);
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
        add(*tree, tree->root(), "child", false, i);
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
        held = add(*tree, tree->root(), "child", false, 1)->shared();
    }
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(held->pathBytes(), "/kept/child");
    held.reset();
    EXPECT_TRUE(watched.expired());
}
