#pragma once

#include "DiskState.h"
#include "core/Log.h"
#include "platform/FileLock.h"
#include "platform/FileWriting.h"
#include "tests/support/AppWindow.h"

namespace brivane::testing {

/// A quarantine that has been opened before: opening it changes nothing any more.
inline void prepareQuarantine(const SandboxMachine& machine)
{
    const QString store = machine.directory(u"~/.Brivane_Quarantine");
    EXPECT_TRUE(reserveSpace(store + QStringLiteral("/.reserve"), 512 << 10));
    EXPECT_TRUE(FileLock::take(store + QStringLiteral("/.lock")));
}

/// A person before the program's window, with a mouse, a keyboard and eyes. In the end, nothing may
/// have happened to the disk, and no text tells where the make-believe machine lies.
///
/// Each look of the walk at the clock takes as long as there is between two reports, so that every
/// entry is reported, and a walk that is held at one shows what lies before it.
class Journey : public ::testing::Test {
protected:
    Journey();
    void SetUp() override;
    void TearDown() override;

    AppWindow& app() { return *m_app; }
    AppMachine& disk() { return m_disk; }
    ScanViewModel& scan() { return m_app->scan(); }
    /// Lets `change` do something to the disk that is not the program's doing.
    void changeDisk(const std::function<void()>& change);

    /// The next scan stops before its first report.
    void holdNextScan() { app().clock().holdAfter(2); } // the screen looks first, then the walk
    /// Waits until the walk is held, with what it has told so far on screen.
    [[nodiscard]] bool isHeld();
    /// Lets a walk that is held go on by so many entries. The first report comes with the first.
    [[nodiscard]] bool walksOn(long entries);
    /// The entry at which a walk of the startup disk has seen every file, and leaves folders only.
    /// Folders are two entries each.
    [[nodiscard]] long lastButOneEntry() const;

    /// What is on screen under the object name `kind`, from the top, and which names it shows.
    QList<QQuickItem*> items(const QString& kind);
    QStringList names(const QString& kind);
    QQuickItem& item(const QString& kind, const QString& name);
    /// The rows of the folder list.
    QStringList rows() { return names(QStringLiteral("folderTreeRow")); }
    QQuickItem& row(const QString& name) { return item(QStringLiteral("folderTreeRow"), name); }
    /// A volume to choose.
    QQuickItem& card(const QString& name) { return item(QStringLiteral("volumeCard"), name); }
    /// What the window says at the moment.
    bool reads(const QString& text) { return findText(app().window(), text) != nullptr; }

    /// More presses of the Tab key than any screen has stops.
    static constexpr int manyStops = 40;
    /// The name of what has the keyboard.
    QString focus();
    /// Presses the Tab key until `stop` has the keyboard. False when it never gets there.
    [[nodiscard]] bool tabTo(const QString& stop);
    /// What has the keyboard, provided that it can be told from looking at it. Leaves it by Tab and
    /// comes back.
    QString focusSeen();
    /// Goes once around by Tab and once by Backtab, and expects these stops, maybe among others.
    /// Each has to look different while it has the keyboard.
    void expectTabStops(const QStringList& names);

    /// What was logged so far, with the category in front.
    QStringList log() const;

private:
    /// What the window shows or tells a screen reader that names the folder of the machine.
    QStringList textsOfTheSandbox();

    /// What has the keyboard, and the window meanwhile.
    struct Stop {
        const QQuickItem* item;
        QImage picture;
    };
    Stop stop();
    static QString nameIfSeen(const Stop& stop, const Stop& next);
    QStringList round(Qt::Key key);

    LogCapture m_log;
    AppMachine m_disk;
    DiskState m_before;
    std::optional<AppWindow> m_app;
};

} // namespace brivane::testing
