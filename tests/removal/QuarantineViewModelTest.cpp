#include "removal/QuarantineViewModel.h"

#include "QuarantineGround.h"
#include "components/ColorPalette.h"
#include "removal/QuarantineFileIcons.h"
#include "support/PrintText.h"

#include <QSignalSpy>

namespace brivane::testing {

using namespace std::chrono_literals;

namespace {

class QuarantineViewModelTest : public QuarantineTest {
protected:
    /// Hands a file over, a minute after the one before.
    void add(const QString& name, qint64 bytes = 1, const QString& category = u"Caches"_s)
    {
        clock->advance(1min);
        const QString path = machine.file(u"~/"_s + name, SandboxMachine::Size{bytes});
        awaitTask(service->quarantine(QStringList{path}, category));
    }
    QuarantineViewModel& model()
    {
        if (!m_model)
            m_model.emplace(host(), *service);
        return *m_model;
    }
    QStringList listed()
    {
        QStringList names;
        for (int row = 0; row < model().rows()->rowCount(); ++row)
            names += value(row, QuarantineListModel::NameRole).toString();
        return names;
    }
    QVariant value(int row, int role)
    {
        return model().rows()->data(model().rows()->index(row, 0), role);
    }
    void tick(const QStringList& names)
    {
        for (const QuarantineItem& item : service->items()) {
            if (names.contains(item.fileName))
                model().toggle(item);
        }
    }
    /// Whether the service comes to rest with that many items.
    bool endsWith(qsizetype items)
    {
        return waitUntil(
            [&] { return !service->isProcessing() && service->items().size() == items; });
    }

private:
    std::optional<QuarantineViewModel> m_model;
};

} // namespace

struct Listing {
    QString search;
    QuarantineSortOrder order;
    QStringList names;
};

TEST_F(QuarantineViewModelTest, ListsWhatTheFilterWantsInTheChosenOrder)
{
    using enum QuarantineSortOrder;
    add(u"beta.txt"_s, 20, u"Duplicates"_s);
    add(u"Alpha.LOG"_s, 20);
    add(u"gamma"_s, 500, u"Duplicates"_s);
    add(u"delta dupe"_s, 3);
    QSignalSpy resets(model().rows(), &QAbstractItemModel::modelReset);
    for (const Listing& row : {
             Listing{{}, dateDesc, {u"delta dupe"_s, u"gamma"_s, u"Alpha.LOG"_s, u"beta.txt"_s}},
             Listing{{}, dateAsc, {u"beta.txt"_s, u"Alpha.LOG"_s, u"gamma"_s, u"delta dupe"_s}},
             // After another order, what is equally large stands as in the store.
             Listing{{}, dateDesc, {u"delta dupe"_s, u"gamma"_s, u"Alpha.LOG"_s, u"beta.txt"_s}},
             Listing{{}, sizeDesc, {u"gamma"_s, u"beta.txt"_s, u"Alpha.LOG"_s, u"delta dupe"_s}},
             Listing{u"dupl"_s, sizeDesc, {u"gamma"_s, u"beta.txt"_s}},
             Listing{u"DUP"_s, nameAsc, {u"beta.txt"_s, u"delta dupe"_s, u"gamma"_s}},
             Listing{u"alpha.log"_s, nameAsc, {u"Alpha.LOG"_s}},
             Listing{u"/"_s, nameAsc, {}},
         }) {
        model().setSearchText(row.search);
        model().setSortOrder(static_cast<int>(row.order));
        EXPECT_EQ(listed(), row.names) << qPrintable(row.search);
    }
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(QuarantineViewModelTest, RemovesTickedRowsInTheOrderOfTheStoreAlsoHiddenOnes)
{
    for (const QString& name : {u"c"_s, u"a"_s, u"b"_s, u"stays"_s})
        add(name);
    tick({u"a"_s, u"b"_s, u"c"_s});
    model().setSearchText(u"b"_s);
    EXPECT_EQ(model().selectedCount(), 3);
    fileSystem.clearCalls();
    model().deleteSelected();
    EXPECT_FALSE(model().hasSelection());
    ASSERT_TRUE(endsWith(1));
    QStringList removed;
    for (const QString& call : fileSystem.calls()) {
        if (call.startsWith("remove "_L1))
            removed += call.section(u'_', 1);
    }
    EXPECT_EQ(removed, QStringList({u"c"_s, u"a"_s, u"b"_s}));
}

TEST_F(QuarantineViewModelTest, ATickWhoseItemHasGoneLeavesTheKeysToTheCurrentRow)
{
    add(u"ticked"_s);
    add(u"current"_s);
    const QList<QuarantineItem> items = service->items();
    tick({u"ticked"_s});
    model().restore(items[0]); // by its own button
    ASSERT_TRUE(endsWith(1));
    EXPECT_TRUE(model().hasSelection());
    EXPECT_EQ(model().selectedCount(), 0);
    model().deleteChosen(items[1]);
    ASSERT_TRUE(endsWith(0));
}

TEST_F(QuarantineViewModelTest, TickingAllMeansWhatIsListed)
{
    for (const QString& name : {u"x1"_s, u"x2"_s, u"b"_s})
        add(name);
    model().setSearchText(u"x"_s);
    model().toggleAllListed();
    EXPECT_EQ(model().selectedCount(), 2);
    model().setSearchText({});
    model().toggleAllListed();
    EXPECT_EQ(model().selectedCount(), 3);
    model().toggleAllListed();
    EXPECT_FALSE(model().hasSelection());
}

TEST_F(QuarantineViewModelTest, TheLastDayStandsOutAndNoneIsLessThanNone)
{
    add(u"old"_s);
    const QDateTime start = clock->now();
    const std::tuple<int, QString, QColor> rows[] = {{5, u"2d"_s, ColorPalette::orange()},
                                                     {6, u"1d"_s, ColorPalette::red()},
                                                     {40, u"0d"_s, ColorPalette::red()}};
    for (const auto& [days, text, color] : rows) {
        clock->setNow(start.addDays(days));
        EXPECT_EQ(value(0, QuarantineListModel::DaysTextRole), text);
        EXPECT_EQ(value(0, QuarantineListModel::DaysColorRole).value<QColor>(), color) << days;
    }
}

TEST_F(QuarantineViewModelTest, ToastShowsEachNewResultForItsWholeTime)
{
    add(u"before"_s);
    const auto shown = [&] { return model().toast()->visibleMessage(); };
    EXPECT_EQ(shown(), QString()) << "what happened before the screen came up";
    const QuarantineItem gone = only();
    model().restore(gone);
    ASSERT_TRUE(waitUntil([&] { return !shown().isEmpty(); }));
    EXPECT_EQ(shown(), u"Restored: before"_s);
    ASSERT_TRUE(waitUntil([&] { return !service->isProcessing(); }));
    clock->advance(3s);
    model().restore(gone);
    ASSERT_TRUE(waitUntil([&] { return shown().startsWith("Failed to restore: "_L1); }));
    clock->advance(3s); // the time of the first is over
    QCoreApplication::processEvents();
    EXPECT_TRUE(shown().startsWith("Failed"_L1));
    clock->advance(1s);
    ASSERT_TRUE(waitUntil([&] { return shown().isEmpty(); }));
    ASSERT_TRUE(waitUntil([&] { return !service->isProcessing(); }));
    model().restore(gone);
    ASSERT_TRUE(waitUntil([&] { return !service->isProcessing(); }));
    EXPECT_EQ(shown(), QString()) << "the same text is no news";
}

TEST(QuarantineFileIcons, AreChosenByTheExtensionAlone)
{
    const QString archive = QuarantineFileIcons::symbol(u"a.zip"_s);
    EXPECT_EQ(QuarantineFileIcons::symbol(u"a.tar.GZ"_s), archive);
    for (const QString& name : {u"a.zipx"_s, u".zip"_s, u"zip"_s, u"a."_s})
        EXPECT_NE(QuarantineFileIcons::symbol(name), archive) << qPrintable(name);
}

} // namespace brivane::testing
