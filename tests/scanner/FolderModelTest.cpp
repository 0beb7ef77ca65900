#include "scanner/FolderModel.h"

#include "scanner/FileNodeRef.h"
#include "scanner/FileNodes.h"
#include "support/AwaitTask.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

/// A file that counts in all folders above it.
FileNode* add(FileNode* parent, const QByteArray& name, std::uint64_t size)
{
    FileNode* node = addFile(parent, name.toStdString(), size);
    FileTree::addSize(parent, size);
    return node;
}

std::vector<std::uint64_t> sizesOf(const FolderModel& model)
{
    std::vector<std::uint64_t> sizes;
    for (int row = 0; row < model.rowCount(); ++row)
        sizes.push_back(model.nodeAt(row)->size());
    return sizes;
}

} // namespace

TEST(FolderModel, FollowsAGrowingFolderWithoutAReset)
{
    const auto tree = FileTree::create("/x");
    FolderModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setDirectory(tree->root()->shared());
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    FileNode* small = add(tree->root(), "small", 1);
    add(tree->root(), "empty", 0);
    FileNode* locked = addFolder(tree->root(), "locked");
    model.refresh();
    EXPECT_EQ(sizesOf(model), std::vector<std::uint64_t>({1}));
    tree->addIssue(locked, true, {"/x/locked", EACCES});
    model.refresh();
    EXPECT_EQ(sizesOf(model), std::vector<std::uint64_t>({1, 0})) << "its size is not known";

    model.follow(FileNodeRef(small->shared()));
    const QPersistentModelIndex kept = model.index(0);
    add(tree->root(), "big", 100);
    add(tree->root(), "middle", 50);
    model.refresh();
    EXPECT_EQ(sizesOf(model), std::vector<std::uint64_t>({100, 50, 1, 0}));
    EXPECT_EQ(kept.row(), 2); // what was picked is followed
    EXPECT_EQ(model.rowOf(FileNodeRef(small->shared())), 2);

    FileTree::addSize(small, 200);
    model.refresh();
    EXPECT_EQ(sizesOf(model), std::vector<std::uint64_t>({201, 100, 50, 0}));
    EXPECT_EQ(kept.row(), 0);
    EXPECT_EQ(resets.count(), 0);

    model.setDirectory({});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(FolderModel, ALargeFolderIsSortedElsewhereAndALatePictureNeverShowsInAnotherFolder)
{
    const auto tree = FileTree::create("/x");
    FileNode* large = addFolder(tree->root(), "large");
    for (std::uint64_t i = 1; i <= 50'000; ++i)
        add(large, QByteArray::number(static_cast<qulonglong>(i)), i);
    FileNode* other = addFolder(tree->root(), "other");
    add(other, "only", 7);

    FolderModel model;
    model.setDirectory(large->shared());
    EXPECT_EQ(model.rowCount(), 0); // not on this thread
    ASSERT_TRUE(waitUntil([&] { return model.rowCount() == 50'000; }));
    EXPECT_EQ(model.nodeAt(0)->size(), 50'000U);

    for (const std::uint64_t late : {50'001U, 50'002U}) {
        add(large, "late", late);
        model.refresh(); // the second time while the first picture is made
    }
    EXPECT_TRUE(waitUntil([&] { return model.rowCount() == 50'002; })) << "a change was missed";

    model.setDirectory({});
    model.setDirectory(large->shared());
    model.setDirectory(other->shared());
    int mostRows = 0;
    QObject::connect(&model, &FolderModel::countChanged,
                     [&] { mostRows = std::max(mostRows, model.rowCount()); });
    // That comes after the picture of the large one, for which no pool is waited here.
    ASSERT_TRUE(waitUntil([&] { return model.rowCount() == 1; }));
    EXPECT_EQ(mostRows, 1) << "the large folder's picture was shown";
    EXPECT_EQ(model.nodeAt(0)->nameBytes(), "only");
}
