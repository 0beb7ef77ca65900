#include "Journey.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPauseAnimation>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace brivane::testing {

namespace {

constexpr auto clockStep = std::chrono::milliseconds(2);
constexpr long walkBetweenReports = std::chrono::milliseconds(500) / clockStep; ///< entries

} // namespace

/// A folder of 10,000 files of different sizes, open in the folder list while the walk that fills
/// it is held before its middle.
class LargeFolderJourney : public Journey {
protected:
    void SetUp() override
    {
        disk().clockStep = clockStep;
        const QString drive = disk().machine.directory(u"/Volumes/Memory");
        // Of sizes far apart for neighbours, so that those that come late belong in between.
        for (qint64 number = 0; number < 10'000; ++number)
            disk().machine.file(u"/Volumes/Memory/many/file %1"_s.arg(number),
                                SandboxMachine::Size{1 + number * 7919 % 10'007});
        Journey::SetUp();
        app().volumes().mount(drive, SandboxVolumes::externalDrive(u"Memory"_s));
        scan().refreshVolumes();
        app().press(Qt::Key_1, Qt::ControlModifier);
        ASSERT_TRUE(waitUntil([&] { return names(u"volumeCard"_s).contains(u"Memory"_s); }));

        holdNextScan();
        app().click(card(u"Memory"_s));
        ASSERT_TRUE(isHeld());
        ASSERT_TRUE(walksOn(4'100)); // no report is on its way just then
        app().click(row(u"many"_s));
        ASSERT_TRUE(waitUntil([&] { return rowCount() > 3'000; }));
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
};

TEST_F(LargeFolderJourney, DroppedFileIsBroughtIntoSightInItsFolder)
{
    const QString dropped = u"file 2"_s;
    scan().scanFolder(disk().machine.path(u"/Volumes/Memory/many/file 2"));
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
    const double end = place();
    EXPECT_GT(end, 100'000);
    ASSERT_TRUE(changes());
    EXPECT_EQ(place(), end);
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
