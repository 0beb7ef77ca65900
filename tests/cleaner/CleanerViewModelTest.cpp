#include "cleaner/CleanerViewModel.h"

#include "CleanerGround.h"
#include "cleaner/RunningAffectedApps.h"
#include "removal/CleanupHistory.h"

#include <QAbstractItemModelTester>

#include <random>

namespace brivane::testing {

namespace {

TEST(RunningAffectedApps, NamesThoseWhoseFilesAreSelectedAndNoOthers)
{
    const std::vector<RunningApplication> running = {
        {u"com.google.Chrome"_s, u"Chrome"_s, true},
        {u"com.docker.docker"_s, u"Docker"_s, false},
        {u"com.example.agent"_s, u"Agent"_s, false},
        {u"com.brivane.app"_s, u"Brivane"_s, true},
        {u"files"_s, u"Files"_s, true},
        {u"editor"_s, u"Editor"_s, true},
    };
    const QList<Locations::Addition> additions{{u"Editor"_s, u"/config/Editor OSS"_s}};
    const auto named = [&](const QString& path) {
        return runningAffectedApps({u"/other"_s, path}, running, additions).join(u',');
    };
    EXPECT_EQ(named(u"/h/Library/Caches/Google/Chrome"_s), u"Chrome");
    EXPECT_EQ(named(u"/h/Library/Containers/com.docker.docker/Data"_s), u"Docker");
    EXPECT_EQ(named(u"/h/com.example.agent/com.brivane.app"_s), u"");
    EXPECT_EQ(named(u"/h/Profiles/a"_s), u"") << "a word in a word";
    EXPECT_EQ(named(u"/h/profiles/Files"_s), u"Files");
    EXPECT_EQ(named(u"/h/config/editor oss/x"_s), u"Editor");
    EXPECT_TRUE(runningAffectedApps({}, running).isEmpty());
}

TEST(DiskSpaceChange, IsToldFromWhatIsFreeNow)
{
    const DiskSpaceChange change = DiskSpaceChange::of(1000, 291, 25);
    EXPECT_EQ(DiskSpaceChange::percent(change.before), u"73%");
    EXPECT_EQ(DiskSpaceChange::percent(change.after), u"70%") << "cut off, not rounded";
    EXPECT_EQ(change.dropText(), u"↓ 2.5%");
    EXPECT_EQ(DiskSpaceChange::of(1000, 20, 50).before, 1.0);
    EXPECT_EQ(DiskSpaceChange::of(0, 0, 50).dropText(), u"↓ 10.0%") << "nothing known";
}

TEST(CleanerItemListModel, KeepsItsRowsWhateverIsFilteredAndRemoved)
{
    std::mt19937 random(20);
    auto category = std::make_shared<CleanerCategory>(Type::downloads);
    std::vector<CleanerItem> items(400);
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].name = QString::number(random() % 1000);
        items[i].path = u"/d/"_s + items[i].name + (random() % 3 == 0 ? u".LOG"_s : u".b.dmg"_s);
        items[i].size = 1000 - i;
    }
    category->setItems(std::move(items), false);
    CleanerItemListModel model(Locations::asWritten(u"/h"_s));
    model.setCategory(category);
    const QAbstractItemModelTester tester(&model);
    const QString words[] = {{}, u"1"_s, u"12"_s, u"999"_s};
    const QString extensions[] = {{}, u"log"_s, u"dmg"_s, u"b"_s};
    QString word;
    QString extension;
    for (int round = 0; round < 200; ++round) {
        if (random() % 3 == 0) {
            const std::size_t at = random() % category->items().size();
            const std::size_t end = std::min(at + random() % 3, category->items().size() - 1);
            category->removeItems({category->items()[at].id, category->items()[end].id});
        } else {
            word = words[random() % 4];
            extension = extensions[random() % 4];
            model.setFilter(word, extension);
        }
        QStringList expected;
        for (const CleanerItem& item : category->items()) {
            if (item.name.contains(word) &&
                (extension.isEmpty() || item.path.toLower().endsWith(u'.' + extension)))
                expected += item.name;
        }
        QStringList listed;
        for (int row = 0; row < model.rowCount(); ++row)
            listed += model.index(row).data(CleanerItemListModel::NameRole).toString();
        ASSERT_EQ(listed, expected) << round;
    }
}

TEST_F(CleanerTest, SaysWhatBecameOfARemovalAndKeepsTheCategory)
{
    file(u"~/Library/Caches/com.example.a/x"_s, 5'000'000);
    file(u"~/Library/Preferences/com.example.gone.plist"_s, 20'000, 400);
    file(u"~/Downloads/Old.zip"_s, 9'000'000, 400);
    const CleanupHistory history(host().defaults, host().clock);
    CleanerViewModel model(host(), service, settings, history);
    scan();
    model.selectCategory(u"downloads"_s);
    model.detail()->setSearchText(u"old"_s);
    scan();
    EXPECT_EQ(model.detail()->rows()->rowCount(), 1) << "a new scan clears neither";
    model.selectCategory(u"applicationLeftovers"_s);
    EXPECT_TRUE(model.detail()->searchText().isEmpty());
    model.detail()->toggleAll();
    model.setShowCleanConfirmation(true);
    EXPECT_EQ(model.confirmTitle(), u"Clean 2 Items");
    model.toggleCategory(u"downloads"_s); // as when a scan goes on behind the question
    EXPECT_EQ(model.confirmTitle(), u"Clean 2 Items") << "that was asked";
    model.moveToQuarantine();
    ASSERT_TRUE(waitUntil([&] { return model.showResult() && model.result()->hasDiskSpace(); }));
    EXPECT_EQ(model.result()->failures()->rowCount(), 1);
    ASSERT_EQ(model.result()->breakdown().size(), 2) << "what was selected, not what went";
    EXPECT_TRUE(FileIdentity::of(path(u"~/Downloads/Old.zip")));
    EXPECT_EQ(model.result()->breakdown()[0].toMap()[u"name"_s].toString(), u"applicationCaches");
    EXPECT_FALSE(model.result()->quarantineText().isEmpty());
    model.dismissResult();
    model.toggleCategory(u"downloads"_s);
    model.setShowCleanConfirmation(true);
    model.deletePermanently();
    ASSERT_TRUE(waitUntil([&] { return model.showResult(); }));
    EXPECT_TRUE(model.result()->quarantineText().isEmpty());
    ASSERT_EQ(history.loadAll().size(), 2) << "also of what removed nothing";
    EXPECT_EQ(history.loadAll()[0].filesRemoved, 0);
    EXPECT_EQ(history.loadAll()[1].categories.keys(),
              QStringList{path(u"~/Library/Preferences/com.example.gone.plist")});
}

} // namespace

} // namespace brivane::testing
