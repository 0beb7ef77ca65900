#include "Journey.h"
#include "core/CleaningSessionState.h"

using namespace Qt::StringLiterals;

namespace brivane::testing {

namespace {

/// The keys that get as far as the item with the keyboard.
class Presses : public QObject {
public:
    explicit Presses(QObject* item) { item->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress)
            keys += static_cast<QKeyEvent*>(event)->keyCombination();
        return false;
    }
    QList<QKeyCombination> keys;
};

constexpr auto control = Qt::ControlModifier;
constexpr auto shift = Qt::ShiftModifier;

struct Key {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers = {};
    QString module = {}; ///< that it shows; empty: none
};

const Key moduleKeys[] = {
    {Qt::Key_1, control, u"Space Scanner"_s},
    {Qt::Key_2, control, u"Smart Clean"_s},
    {Qt::Key_3, control, u"Uninstaller"_s},
    {Qt::Key_4, control, u"Duplicates"_s},
    {Qt::Key_5, control, u"Quarantine"_s},
    {Qt::Key_Comma, control, u"Settings"_s},
    {Qt::Key_0, control | Qt::KeypadModifier, u"Dashboard"_s},
};
const Key commandKeys[] = {
    {Qt::Key_R, control},
    {Qt::Key_Up, control},
    {Qt::Key_Up, control | shift},
    {Qt::Key_S, control | shift},
};
const Key otherKeys[] = {
    {Qt::Key_1},          {Qt::Key_Comma},      {Qt::Key_R},          {Qt::Key_R, Qt::AltModifier},
    {Qt::Key_6, control}, {Qt::Key_A, control}, {Qt::Key_S, control}, {Qt::Key_R, control | shift},
    {Qt::Key_S, shift},   {Qt::Key_Up, shift},
};

} // namespace

class KeyMapJourney : public Journey {
protected:
    void SetUp() override
    {
        disk().machine.directory(u"~/.Brivane_Quarantine");
        Journey::SetUp();
    }
    void press(const Key& key)
    {
        app().press(key.key, key.modifiers);
        AppWindow::step();
        // A module that is entered for the first time may take a moment.
        EXPECT_TRUE(waitUntil([&] { return !app().app().shell()->screen().isEmpty(); }));
    }
    /// What the sidebar says is on screen.
    QString module()
    {
        for (const Key& key : moduleKeys) {
            const QQuickItem* row = app().item(u"mode-"_s + key.module);
            if (row && row->property("isCurrent").toBool())
                return key.module;
        }
        return {};
    }
    /// The window without the sidebar.
    QImage screen()
    {
        const QImage window = app().picture();
        return window.copy(window.rect().adjusted(window.width() / 4, 0, 0, 0));
    }
};

TEST_F(KeyMapJourney, EachKeyShowsItsModuleAndNoOtherKeyIsLost)
{
    changeDisk([&] {
        prepareQuarantine(disk().machine);
        app().quarantine(); // once it is open, its page leaves the keyboard where it is
    });
    for (const Key& key : moduleKeys) {
        const QImage before = screen();
        press(key);
        EXPECT_EQ(module(), key.module);
        EXPECT_NE(screen(), before) << "another name, the same screen";
        const Presses presses(app().window().activeFocusItem());
        for (const Key& other : otherKeys) {
            press(other);
            EXPECT_TRUE(presses.keys.contains(QKeyCombination(other.modifiers, other.key)))
                << other.key << " in " << qPrintable(key.module);
        }
        EXPECT_EQ(module(), key.module);
    }
    EXPECT_EQ(log(), QStringList()) << "a scan was started";
}

TEST_F(KeyMapJourney, ScanAndMoveWithTheMenusKeys)
{
    press({Qt::Key_S, control | shift});
    EXPECT_EQ(module(), u"Space Scanner"_s);
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    const auto goDown = [&](const QStringList& folders) {
        for (const QString& folder : folders)
            app().click(row(folder));
    };
    goDown({u"Users"_s, u"robin"_s, u"Movies"_s});
    press({Qt::Key_Up, control});
    EXPECT_EQ(rows(), QStringList({u"Movies"_s, u"Documents"_s}));
    press({Qt::Key_Up, control | shift});
    EXPECT_EQ(rows(), QStringList({u"Users"_s, u"Library"_s, u"Applications"_s}));

    goDown({u"Users"_s});
    press({Qt::Key_0, control});
    press({Qt::Key_Up, control});
    press({Qt::Key_1, control});
    EXPECT_EQ(rows(), QStringList(u"robin"_s)) << "moved from another module";

    holdNextScan();
    press({Qt::Key_R, control});
    EXPECT_TRUE(reads(u"Initializing scan..."_s));
    press({Qt::Key_2, control});
    EXPECT_TRUE(app().item(u"busyDot"_s));
    app().clock().release();
    ASSERT_TRUE(app().isScanned());
    EXPECT_FALSE(app().item(u"busyDot"_s));
}

TEST_F(KeyMapJourney, NothingHappensWhileTheMachineIsCleaned)
{
    press({Qt::Key_S, control | shift});
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    app().click(row(u"Users"_s));
    ASSERT_TRUE(tabTo(u"mode-Space Scanner"_s));
    const QStringList before = log();
    app().composition().get<CleaningSessionState>().setSessionActive(true);
    EXPECT_FALSE(app().item(u"sidebar"_s));
    const QQuickItem* page = app().item(u"module"_s);
    EXPECT_EQ(page->width(), app().window().width());
    EXPECT_TRUE(page->hasActiveFocus()) << "the keyboard went with the sidebar";
    const QImage picture = app().picture();
    for (const Key& key : moduleKeys)
        press(key);
    for (const Key& key : commandKeys)
        press(key);
    EXPECT_EQ(app().picture(), picture);
    EXPECT_EQ(log(), before);
    app().composition().get<CleaningSessionState>().setSessionActive(false);
    EXPECT_EQ(rows(), QStringList(u"robin"_s));
    EXPECT_EQ(module(), u"Space Scanner"_s);
}

} // namespace brivane::testing
