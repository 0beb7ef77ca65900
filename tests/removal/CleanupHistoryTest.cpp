#include "removal/CleanupHistory.h"

#include "platform/Host.h"
#include "platform/PathText.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

class CleanupHistoryTest : public ::testing::Test {
protected:
    SandboxMachine m_machine = SandboxMachine::temporary();
    ManualClock m_clock;
    OwnedHost m_host{m_machine.locations()};
    CleanupHistory m_history{m_host.host().defaults, m_clock};
};

} // namespace

TEST_F(CleanupHistoryTest, TheTenNewestAreKeptWithAllThatTheyHold)
{
    const QString odd = PathText::fromBytes("/odd \xFF");
    EXPECT_TRUE(m_history.loadAll().isEmpty());
    for (int i = 0; i < 11; ++i) {
        CleanupRecord record{m_clock.now().addSecs(i), i, quint64(i) << 40};
        if (i == 10)
            record.categories = {{odd, 0}, {u"/b"_s, 7}};
        m_history.save(record);
    }
    m_history.save({m_clock.now().addMSecs(1), 0, 0});
    const QList<CleanupRecord> records = m_history.loadAll();
    ASSERT_EQ(records.size(), 10);
    EXPECT_EQ(records[0].date, m_clock.now().addMSecs(1));
    EXPECT_EQ(records[1].bytesFreed, quint64{10} << 40);
    EXPECT_EQ(records[1].categories, (QMap<QString, quint64>{{odd, 0}, {u"/b"_s, 7}}));
    EXPECT_EQ(records[9].filesRemoved, 2);
}

TEST_F(CleanupHistoryTest, ADamagedHistoryReadsAsEmptyAndIsReplacedByTheNextRecord)
{
    const QString key = CleanupHistory::key.toString();
    const QByteArray good = R"({"date":1,"filesRemoved":1,"bytesFreed":1,"categories":{}})";
    for (const QByteArray& bytes :
         {QByteArray("no list"), "[" + good + R"(,{"date":1,"filesRemoved":1,"bytesFreed":1}])",
          "[" + good.left(good.size() - 3) + R"({"a":"b"}}])", "[" + good + ",3]"}) {
        m_host.host().defaults.setData(key, bytes);
        EXPECT_TRUE(m_history.loadAll().isEmpty()) << bytes.toStdString();
        EXPECT_EQ(m_host.host().defaults.data(key), bytes);
        m_history.save({m_clock.now()});
        EXPECT_EQ(m_history.loadAll().size(), 1);
    }
}

TEST_F(CleanupHistoryTest, DaysAreThoseThatHavePassedOnTheCalendar)
{
    // Clocks go forward in the night to 29 March.
    ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    ::tzset();
    EXPECT_EQ(m_history.daysSinceLastCleanup(), std::nullopt);
    const auto at = [](int month, int day, int hour) {
        return QDateTime(QDate(2026, month, day), QTime(hour, 0)).toUTC();
    };
    struct Row {
        QDateTime from;
        QDateTime now;
        qint64 days;
    };
    for (const Row& row : {
             Row{at(1, 10, 12), at(1, 11, 11), 0}, Row{at(1, 10, 12), at(1, 11, 13), 1},
             Row{at(3, 28, 12), at(3, 29, 12), 1},  // after 23 hours
             Row{at(1, 12, 12), at(1, 11, 11), -1}, // the clock was set back
         }) {
        m_history.save({row.from});
        m_clock.setNow(row.now);
        EXPECT_EQ(m_history.daysSinceLastCleanup(), row.days) << row.now.toString().toStdString();
    }
    ::unsetenv("TZ");
    ::tzset();
}
