#include "Journey.h"
#include "sandbox/Permissions.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace brivane::testing {

class AdminJourney : public Journey {
protected:
    static constexpr qint64 vaultSize = 200'000'000;

    void SetUp() override
    {
        obeyPermissions();
        SandboxMachine& machine = disk().machine;
        m_sealed = machine.directory(u"~/Library/Sealed");
        machine.setMode(u"~/Library/Sealed", 0);
        machine.command(u"/usr/bin/swiftc");
        machine.command(u"/usr/bin/osascript");
        Journey::SetUp();
        app().press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(app().showsText(u"Completed"_s));
    }

    SandboxCommand prompt() { return disk().machine.command(u"/usr/bin/osascript"); }

    /// What the helper would print for the only file of the folder.
    QByteArray listing() const
    {
        const QJsonObject vault{{u"path"_s, m_sealed + u"/vault.db"_s},
                                {u"name"_s, u"vault.db"_s},
                                {u"size"_s, vaultSize},
                                {u"isDir"_s, false},
                                {u"parentPath"_s, m_sealed}};
        return QJsonDocument(vault).toJson(QJsonDocument::Compact) + '\n';
    }

    std::uint64_t hidden() { return scan().scanResult()->hiddenSpaceBytes; }

private:
    QString m_sealed;
};

TEST_F(AdminJourney, RefusedItChangesNothingAndGrantedItFillsTheGaps)
{
    ASSERT_TRUE(reads(u"1 unreadable"_s));
    const std::uint64_t hiddenBefore = hidden();
    prompt().answer({.error = "execution error: User canceled. (-128)\n", .status = 1});
    ASSERT_TRUE(app().click(u"sidebarAdminScan"_s));
    EXPECT_TRUE(app().item(u"adminBadge"_s));
    EXPECT_FALSE(app().item(u"busyDot"_s)) << "the sidebar takes it for a plain scan";
    EXPECT_EQ(rows().first(), u"Users"_s) << "the tree went away meanwhile";
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    EXPECT_EQ(prompt().calls().size(), 1);
    EXPECT_TRUE(reads(u"1 unreadable"_s));
    EXPECT_EQ(hidden(), hiddenBefore);

    prompt().forgetAnswers();
    prompt().answer({.output = listing()});
    ASSERT_TRUE(app().click(u"sidebarAdminScan"_s));
    ASSERT_TRUE(app().click(u"pauseButton"_s));
    EXPECT_TRUE(reads(u"Paused"_s));
    ASSERT_TRUE(app().showsText(u"Completed"_s)) << "the pause held it up";
    EXPECT_EQ(prompt().calls().size(), 2);
    EXPECT_FALSE(app().item(u"issuesButton"_s));
    EXPECT_FALSE(app().item(u"adminBadge"_s));
    EXPECT_EQ(hiddenBefore - hidden(), std::uint64_t(vaultSize));
    EXPECT_TRUE(reads(scan().stats()->hiddenSpaceText()));
    for (const QString& folder : {u"Users"_s, u"robin"_s, u"Library"_s, u"Sealed"_s})
        app().click(row(folder));
    EXPECT_EQ(rows(), QStringList(u"vault.db"_s));
}

} // namespace brivane::testing
