#include "Journey.h"
#include "tests/support/AccessibleTree.h"

using namespace Qt::StringLiterals;

namespace brivane::testing {

namespace {

QString nameOf(QObject* object)
{
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(object);
    return spoken ? spoken->text(QAccessible::Name) : QString();
}

/// Expects that every control says what it is, and so does what has the keyboard. With BRIVANE_TREE
/// set, all that is said is printed.
void listen(AppWindow& app, const char* state)
{
    app.picture();
    const AccessibleTree tree = accessibleTree(app.window());
    EXPECT_EQ(tree.faults, QStringList()) << state;
    EXPECT_NE(nameOf(app.window().activeFocusItem()), QString()) << state;
    if (qEnvironmentVariableIsSet("BRIVANE_TREE"))
        printf("\n%s\n%s\n", state, qPrintable(tree.lines.join(u'\n')));
}

} // namespace

/// The window's states, by keyboard alone.
class AccessibleJourney : public Journey {
protected:
    void SetUp() override
    {
        QAccessible::setActive(true);
        disk().machine.file(u"~/Documents/Notes.txt", QByteArray("Buy milk\n"));
        disk().machine.file(u"~/Library/Caches/Tool", SandboxMachine::Size{9000});
        prepareQuarantine(disk().machine);
        Journey::SetUp();
    }
    /// Opens by `key` on `stop` what shows `item`, listens, and closes it again.
    void listenOver(const QString& stop, Qt::Key key, const QString& item)
    {
        ASSERT_TRUE(tabTo(stop)) << qPrintable(stop);
        app().press(key);
        ASSERT_TRUE(app().shows(item)) << qPrintable(item);
        listen(app(), qPrintable(item));
        app().press(Qt::Key_Escape);
        ASSERT_TRUE(waitUntil([&] { return !app().item(item); }));
    }
    void quarantineNotes()
    {
        changeDisk([&] {
            const QStringList paths{disk().machine.path(u"~/Documents/Notes.txt")};
            awaitTask(app().quarantine().quarantine(paths, u"Downloads"_s));
        });
        app().press(Qt::Key_5, Qt::ControlModifier);
        ASSERT_TRUE(app().shows(u"quarantineRow"_s));
    }
};

TEST(AccessibleTree, OfTheOnboarding)
{
    QAccessible::setActive(true);
    const AppMachine machine(Access::Missing);
    AppWindow app(machine);
    ASSERT_TRUE(app.shows(u"onboardingContinue"_s));
    listen(app, "onboarding");
}

TEST_F(AccessibleJourney, EveryControlHasARoleAndANameInEveryStateOfTheWindow)
{
    ASSERT_TRUE(app().shows(u"missingModule"_s));
    listen(app(), "missing module");
    app().press(Qt::Key_1, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"volumeCard"_s));
    listen(app(), "volumes");
    listenOver(u"menuButton"_s, Qt::Key_Space, u"menu-Quit"_s);
    ASSERT_TRUE(tabTo(u"volumeCard"_s));
    holdNextScan();
    app().press(Qt::Key_Return);
    ASSERT_TRUE(isHeld());
    listen(app(), "before the first report");
    ASSERT_TRUE(walksOn(lastButOneEntry()));
    listen(app(), "scanning");
    app().clock().release();
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    listen(app(), "sunburst");
    listenOver(u"folderTreeRow"_s, Qt::Key_Menu, u"menuStage"_s);
    app().press(Qt::Key_Delete);
    listenOver(u"stagedButton"_s, Qt::Key_Space, u"popupAction"_s);
    ASSERT_TRUE(tabTo(u"chartPicker"_s));
    app().press(Qt::Key_Down);
    listen(app(), "treemap");

    app().press(Qt::Key_2, Qt::ControlModifier);
    ASSERT_TRUE(app().shows(u"emptyPageButton"_s));
    app().press(Qt::Key_Return);
    ASSERT_TRUE(app().shows(u"cleanerRescan"_s));
    app().press(Qt::Key_Right);
    listen(app(), "items");
    listenOver(u"removeSelected"_s, Qt::Key_Return, u"moveToQuarantine"_s);

    quarantineNotes();
    app().press(Qt::Key_Space);
    listen(app(), "ticked");
    listenOver(u"quarantineRow"_s, Qt::Key_Menu, u"menuDelete"_s);
    listenOver(u"purgeAll"_s, Qt::Key_Return, u"confirmAccept"_s);
    app().press(Qt::Key_F, Qt::ControlModifier);
    app().type(u"zzz"_s);
    ASSERT_TRUE(tabTo(u"quarantineList"_s));
    EXPECT_EQ(focusSeen(), u"quarantineList"_s);
    listen(app(), "nothing matches");
    app().press(Qt::Key_Escape);
    changeDisk([&] {
        app().press(Qt::Key_Delete);
        ASSERT_TRUE(app().shows(u"resultToastText"_s));
        ASSERT_TRUE(waitUntil([&] { return !app().quarantine().isProcessing(); }));
    });
    listen(app(), "empty");
}

TEST_F(AccessibleJourney, KeyboardSurvivesPopupsThatGoWithTheirScreen)
{
    app().press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    ASSERT_TRUE(tabTo(u"folderTreeRow"_s));
    app().press(Qt::Key_Menu);
    EXPECT_TRUE(app().shows(u"menuStage"_s));
    app().press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([&] { return focus() == u"emptyPageButton"_s; })) << qPrintable(focus());

    quarantineNotes();
    ASSERT_TRUE(tabTo(u"purgeAll"_s));
    app().press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return focus() == u"confirmCancel"_s; }));
    app().press(Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(waitUntil([&] { return focus() == u"emptyPageButton"_s; })) << qPrintable(focus());
}

TEST_F(AccessibleJourney, KeyThatIsHeldDownChoosesNothing)
{
    const auto hold = [&](Qt::Key key) {
        QKeyEvent held(QEvent::KeyPress, key, {}, QString(), true);
        QKeyEvent release(QEvent::KeyRelease, key, {});
        QCoreApplication::sendEvent(&app().window(), &held);
        QCoreApplication::sendEvent(&app().window(), &release);
        AppWindow::step();
    };
    ASSERT_TRUE(tabTo(u"menuButton"_s));
    app().press(Qt::Key_Return);
    hold(Qt::Key_Return);
    EXPECT_EQ(focus(), u"menu-Scan Startup Disk"_s);
    app().press(Qt::Key_Escape);
    quarantineNotes();
    ASSERT_TRUE(tabTo(u"purgeAll"_s));
    app().press(Qt::Key_Return);
    ASSERT_TRUE(tabTo(u"confirmAccept"_s));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space})
        hold(key);
    EXPECT_EQ(focus(), u"confirmAccept"_s);
    EXPECT_EQ(app().quarantine().items().size(), 1);
}

} // namespace brivane::testing
