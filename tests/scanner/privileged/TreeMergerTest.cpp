#include "scanner/privileged/TreeMerger.h"

#include <cerrno>
#include <map>
#include <random>

#include <gtest/gtest.h>

using namespace brivane;
using AdminHelperScript::ScanEntry;

namespace {

/// An entry that owns its texts.
struct Line {
    Line(const std::string& where, bool directory, std::uint64_t bytes = 0)
        : path(where)
        , name(where.substr(where.rfind('/') + 1))
        , parentPath(where.substr(0, std::max<std::size_t>(where.rfind('/'), 1)))
        , isDirectory(directory)
        , size(bytes)
    {
    }
    [[nodiscard]] ScanEntry entry() const { return {path, name, size, isDirectory, parentPath}; }

    std::string path;
    std::string name;
    std::string parentPath;
    bool isDirectory;
    std::uint64_t size;
};

/// The paths of a tree with their sizes, in its order.
using Listing = std::vector<std::pair<std::string, std::uint64_t>>;

/// The merge by a map of paths, rule for rule.
class NaiveTree {
public:
    struct Node {
        std::string path;
        bool isDirectory = true;
        std::uint64_t size = 0;
        std::vector<Node*> children{};
    };

    NaiveTree(const std::string& rootPath, const std::vector<Line>& existing)
        : m_root(make({rootPath, true}))
    {
        m_byPath[rootPath] = m_root;
        for (const Line& line : existing) {
            Node* node = make(line);
            m_byPath[line.path] = node;
            m_byPath[line.parentPath]->children.push_back(node);
        }
    }

    void take(const Line& line)
    {
        if (m_byPath.contains(line.path))
            return;
        Node* node = make(line);
        if (!m_byPath.contains(line.parentPath)) {
            const Line above(line.parentPath, true);
            Node* placeholder = make(above);
            const auto grandparent = m_byPath.find(above.parentPath);
            if (grandparent != m_byPath.end() && grandparent->second->isDirectory)
                grandparent->second->children.push_back(placeholder);
            m_byPath[line.parentPath] = placeholder;
        }
        if (Node* parent = m_byPath[line.parentPath]; parent->isDirectory)
            parent->children.push_back(node);
        if (line.isDirectory)
            m_byPath[line.path] = node;
        ++taken;
    }

    /// Sums and sorts, and gives all paths with sizes in the order of the tree.
    Listing finish() const { return finish(*m_root); }

    std::int64_t taken = 0;

private:
    Node* make(const Line& line)
    {
        const Node node{line.path, line.isDirectory, line.isDirectory ? 0 : line.size};
        return m_nodes.emplace_back(std::make_unique<Node>(node)).get();
    }

    static Listing finish(const Node& node)
    {
        Listing all = {{node.path, node.size}};
        std::vector<Listing> below;
        for (const Node* child : node.children) {
            below.push_back(finish(*child));
            all[0].second += below.back()[0].second;
        }
        std::ranges::stable_sort(below, std::greater(),
                                 [](const Listing& one) { return one[0].second; });
        for (const Listing& one : below)
            all.insert(all.end(), one.begin(), one.end());
        return all;
    }

    std::vector<std::unique_ptr<Node>> m_nodes;
    std::map<std::string, Node*> m_byPath;
    Node* m_root;
};

Listing listed(const FileNode* node)
{
    Listing all = {{node->pathBytes().toStdString(), node->size()}};
    for (const FileNode* child : node->children()) {
        const Listing below = listed(child);
        all.insert(all.end(), below.begin(), below.end());
    }
    return all;
}

std::shared_ptr<FileTree> treeOf(const std::string& rootPath, const std::vector<Line>& existing)
{
    auto tree = FileTree::create(QByteArray::fromStdString(rootPath));
    std::map<std::string, FileNode*> byPath;
    for (const Line& line : existing) {
        FileNode* node = tree->make(line.name, line.isDirectory, line.size);
        const auto parent = byPath.find(line.parentPath);
        tree->attach(node, parent == byPath.end() ? tree->root() : parent->second);
        byPath[line.path] = node;
    }
    return tree;
}

std::string randomPath(std::mt19937& random, const std::string& rootPath)
{
    std::string path = rootPath == "/" ? "" : rootPath;
    for (auto depth = 1 + random() % 5; depth > 0; --depth)
        path += std::string("/") + static_cast<char>('a' + random() % 3);
    // Now and then what lies elsewhere.
    return random() % 50 ? path : "/elsewhere" + path.substr(random() % 2);
}

} // namespace

TEST(TreeMerger, AnyListingGivesWhatAMapOfPathsGives)
{
    std::mt19937 random(4711);
    std::int64_t taken = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string rootPath = round % 2 ? "/" : "/the/root";
        std::vector<Line> existing;
        std::map<std::string, bool> known = {{rootPath, true}};
        for (auto count = random() % 12; count > 0; --count) {
            const Line line(randomPath(random, rootPath), random() % 3 > 0, random() % 4);
            const auto parent = known.find(line.parentPath);
            if (parent == known.end() || !parent->second || known.contains(line.path))
                continue;
            known[line.path] = line.isDirectory;
            existing.push_back(line);
        }
        NaiveTree naive(rootPath, existing);
        const auto tree = treeOf(rootPath, existing);
        const std::size_t visibleBefore = listed(tree->root()).size();
        TreeMerger merger(tree->waitToBuild());
        for (auto count = random() % 25; count > 0; --count) {
            const Line line(randomPath(random, rootPath), random() % 3 > 0, random() % 4);
            naive.take(line);
            merger.take(line.entry());
        }
        EXPECT_EQ(listed(tree->root()).size(), visibleBefore) << "seen before the merge";
        merger.merge();
        ASSERT_EQ(listed(tree->root()), naive.finish()) << "round " << round;
        ASSERT_EQ(merger.takenCount(), naive.taken) << "round " << round;
        taken += merger.takenCount();
    }
    EXPECT_GT(taken, 10'000);
}

TEST(TreeMerger, EntriesThatWouldPoseAsOthersAreDropped)
{
    const auto tree = FileTree::create("/root");
    TreeMerger merger(tree->waitToBuild());
    const ScanEntry entries[] = {
        {"/root/a", "b", 1, false, "/root"},
        {"/root/a", "a", 1, false, "/other"},
        {"/root/..", "..", 1, true, "/root"},
        {"/root/", "", 1, false, "/root"},
        {"/root/a/b", "a/b", 1, false, "/root"},
        {{"/root/\0", 7}, {"\0", 1}, 1, false, "/root"},
        {"a", "a", 1, false, ""},
    };
    for (const ScanEntry& entry : entries)
        merger.take(entry);
    merger.merge();
    EXPECT_EQ(merger.takenCount(), 0);
    EXPECT_EQ(tree->root()->childCount(), 0U);
}

TEST(TreeMerger, WhatIsNotMergedLeavesNoTraceAndLetsTheNextOneIn)
{
    const auto tree = treeOf("/root", {{"/root/kept", true}, {"/root/kept/file", false, 5}});
    const std::size_t memory = tree->memoryUse();
    for (int attempt = 0; attempt < 2; ++attempt) {
        TreeMerger merger(tree->waitToBuild());
        std::atomic<bool> isCancelled = true;
        EXPECT_EQ(tree->waitToBuild(&isCancelled).tree(), nullptr) << "two may build at once";
        for (int i = 0; i < 100'000; ++i)
            merger.take(Line("/root/new/" + std::to_string(i), i % 10 == 0, 1).entry());
        EXPECT_GT(tree->memoryUse(), memory);
    }
    EXPECT_EQ(tree->memoryUse(), memory);
    EXPECT_EQ(tree->nodeCount(), 3U);
    TreeMerger merger(tree->waitToBuild());
    merger.take(Line("/root/new", false, 7).entry());
    merger.merge();
    tree->attach(tree->make("later", false, 1), tree->root());
    EXPECT_EQ(tree->root()->childCount(), 3U);
    EXPECT_EQ(tree->root()->size(), 12U);
}

TEST(TreeMerger, OnlyFoldersThatWereFilledAreNoIssueAnyMore)
{
    for (const std::string root : {"/r", "/r/", "/"}) {
        const std::string base = root == "/" ? "" : "/r";
        const auto tree = treeOf(root, {{base + "/locked", true}, {base + "/still", true}});
        FileNode* const locked = tree->root()->children().at(0);
        FileNode* const still = tree->root()->children().at(1);
        const auto path = [&](const char* rest) { return QByteArray::fromStdString(base + rest); };
        tree->addIssue(tree->root(), true, {QByteArray::fromStdString(root), EACCES});
        tree->addIssue(locked, true, {path("/locked"), EACCES});
        tree->addIssue(still, true, {path("/still"), EACCES});
        tree->addIssue(locked, false, {path("/locked/entry"), EACCES});
        {
            TreeMerger merger(tree->waitToBuild());
            merger.take(Line(base + "/locked/entry", false, 3).entry());
            merger.take(Line(base + "/beside", false, 4).entry());
            merger.merge();
        }
        EXPECT_FALSE(locked->isUnreadable() || locked->isIncomplete());
        EXPECT_TRUE(still->isUnreadable() && still->isIncomplete());
        EXPECT_FALSE(tree->root()->isUnreadable());
        EXPECT_TRUE(tree->root()->isIncomplete());
        ASSERT_EQ(tree->issueCount(), 1U);
        EXPECT_EQ(tree->issues().front().path, path("/still"));
        TreeMerger merger(tree->waitToBuild());
        merger.take(Line(base + "/still/there", true).entry());
        merger.merge();
        EXPECT_FALSE(tree->root()->isIncomplete());
        EXPECT_EQ(tree->issueCount(), 0U);
        EXPECT_EQ(tree->root()->size(), 7U);
    }
}
