#include "Journey.h"
#include "platform/FileDescriptor.h"
#include "platform/PathText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPauseAnimation>
#include <QWheelEvent>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane::testing {

namespace {

constexpr int fileCount = 100'000;
constexpr auto clockStep = std::chrono::microseconds(200);
constexpr long walkBetweenReports = std::chrono::milliseconds(500) / clockStep; ///< entries

void fill(const QString& folder)
{
    const QByteArray path = PathText::toBytes(folder);
    if (::mkdir(path.constData(), 0755) != 0)
        throw std::runtime_error("no folder");
    const FileDescriptor directory(::open(path.constData(), O_DIRECTORY | O_CLOEXEC));
    for (int number = 0; number < fileCount; ++number) {
        const QByteArray name = "file " + QByteArray::number(number);
        const FileDescriptor file(
            ::openat(directory.get(), name.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        // Far apart for neighbours, so that those that come late belong in between.
        if (::ftruncate(file.get(), 1 + number * 7919L % 100'003) != 0)
            throw std::runtime_error("no file");
    }
}

} // namespace

/// A folder of 100,000 files of different sizes, open in the folder list while the walk that fills
/// it is held before its middle.
class LargeFolderJourney : public Journey {
protected:
    void SetUp() override
    {
        disk().clockStep = clockStep;
        // In memory, where there is some: a disk takes its time for that many.
        std::optional<QString> drive = disk().machine.secondDevice();
        if (!drive)
            drive = disk().machine.directory(u"/Volumes/Memory");
        m_many = *drive + u"/many"_s;
        fill(m_many);
        Journey::SetUp();
        app().volumes().mount(*drive, SandboxVolumes::externalDrive(u"Memory"_s));
        scan().refreshVolumes();
        app().press(Qt::Key_1, Qt::ControlModifier);
        ASSERT_TRUE(waitUntil([&] { return names(u"volumeCard"_s).contains(u"Memory"_s); }));

        holdNextScan();
        app().click(card(u"Memory"_s));
        ASSERT_TRUE(isHeld());
        ASSERT_TRUE(walksOn(41'000)); // no report is on its way just then
        app().click(row(u"many"_s));
        ASSERT_TRUE(waitUntil([&] { return rowCount() > 30'000; }));
    }

    QQuickItem& list() { return *app().item(u"folderList"_s); }
    int rowCount() { return list().property("count").toInt(); }
    /// How far the list is scrolled.
    double place() { return list().property("contentY").toDouble(); }
    QString currentRow()
    {
        const auto* row = list().property("currentItem").value<QQuickItem*>();
        return row ? row->property("name").toString() : QString();
    }

    /// Some reports come, and the list changes.
    [[nodiscard]] bool changes()
    {
        const int before = rowCount();
        const bool isChanged =
            walksOn(2 * walkBetweenReports) && waitUntil([&] { return rowCount() > before; });
        settle();
        return isChanged;
    }

    /// Turns the wheel, away from the start.
    void wheel(int notches)
    {
        const QPointF at = app().centre(list());
        for (int notch = 0; notch < notches; ++notch) {
            QWheelEvent event(at, app().window().mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            event.setTimestamp(m_wheelTime += 50); // what comes at once is taken for one
            QCoreApplication::sendEvent(&app().window(), &event);
        }
        EXPECT_TRUE(waitUntil([&] { return !list().property("moving").toBool(); }));
    }

    void press(Qt::Key key)
    {
        app().press(key);
        settle();
    }

private:
    void settle()
    {
        // The list follows its current row in the next step of all animations, of however short
        // ones.
        QPauseAnimation step(1);
        step.start();
        EXPECT_TRUE(waitUntil([&] { return step.state() == QAbstractAnimation::Stopped; }));
        app().picture();
    }

    quint64 m_wheelTime = 1'000'000;

protected:
    QString m_many; ///< the folder's path
};

TEST_F(LargeFolderJourney, DroppedFileIsBroughtIntoSightInItsFolder)
{
    const QString dropped = u"file 77"_s;
    scan().scanFolder(m_many + u'/' + dropped);
    app().clock().release();
    ASSERT_TRUE(app().showsText(u"Completed"_s));
    ASSERT_TRUE(waitUntil([&] { return rows().contains(dropped); }));
    EXPECT_TRUE(row(dropped).property("isSelected").toBool());
    EXPECT_TRUE(QRectF(list().boundingRect())
                    .contains(row(dropped).mapRectToItem(&list(), row(dropped).boundingRect())));
    EXPECT_GT(place(), 100'000);
}

TEST_F(LargeFolderJourney, PlaceAndCurrentRowSurviveReports)
{
    wheel(20);
    const double scrolled = place();
    EXPECT_GT(scrolled, 0);
    ASSERT_TRUE(changes());
    EXPECT_EQ(place(), scrolled);

    for (int count = 0; count < 5; ++count)
        press(Qt::Key_PageDown);
    const QString current = currentRow();
    const double paged = place();
    EXPECT_GT(paged, scrolled);
    ASSERT_TRUE(changes());
    EXPECT_EQ(currentRow(), current);
    EXPECT_EQ(place(), paged);

    wheel(50);
    const double away = place();
    EXPECT_GT(away, paged + 1000) << "the current row is still in sight";
    ASSERT_TRUE(changes());
    EXPECT_EQ(currentRow(), current);
    EXPECT_EQ(place(), away);

    press(Qt::Key_End);
    const QString last = currentRow();
    const double end = place();
    EXPECT_GT(end, 1'000'000);
    ASSERT_TRUE(changes());
    EXPECT_EQ(currentRow(), last);
    EXPECT_EQ(place(), end);
    press(Qt::Key_Home);
    EXPECT_EQ(place(), 0);
}

TEST_F(LargeFolderJourney, PressedRowIsMeantAlsoWhenReportsMoveIt)
{
    wheel(20);
    const QStringList before = rows();
    const QString pressed = before[8];
    const QPoint place = app().centre(row(pressed));
    QTest::mousePress(&app().window(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(changes());
    EXPECT_NE(rows()[8], pressed) << "nothing moved";
    QTest::mouseRelease(&app().window(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(scan().selectedNode().isValid());
    EXPECT_EQ(scan().selectedNode().node()->name(), pressed);
}

TEST_F(LargeFolderJourney, MenuActsOnTheRowThatItWasOpenedFor)
{
    const QString chosen = rows()[8];
    app().click(row(chosen), Qt::RightButton);
    ASSERT_TRUE(app().shows(u"menuCopyPath"_s));
    ASSERT_TRUE(changes());
    EXPECT_NE(rows()[8], chosen) << "nothing moved";
    ASSERT_TRUE(app().click(u"menuCopyPath"_s));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().endsWith(u"/many/"_s + chosen));
}

} // namespace brivane::testing
