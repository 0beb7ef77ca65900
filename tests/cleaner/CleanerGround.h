#pragma once

#include "cleaner/CleanerService.h"
#include "core/ActivityTracker.h"
#include "core/AppSettings.h"
#include "core/Log.h"
#include "core/NotificationNames.h"
#include "platform/Host.h"
#include "platform/Volumes.h"
#include "removal/QuarantineProvider.h"
#include "removal/SafetyChecker.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"
#include "support/ManualClock.h"
#include "support/PrintText.h"
#include "support/RecordingFileSystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace brivane::testing {

using namespace Qt::StringLiterals;
using Type = CleanerCategory::CategoryType;
using Size = SandboxMachine::Size;

/// A machine with a home that Smart Clean is let loose on.
class CleanerGround {
public:
    CleanerGround()
    {
        fileSystem.trash = machine.directory(u"/trash");
        machine.directory(u"~");
        host().notifications.subscribe(NotificationNames::diskSpaceChanged, &m_receiver,
                                       [this] { ++posts; });
    }

    [[nodiscard]] Host& host() { return m_owned.host(); }
    [[nodiscard]] QString path(QStringView place) const { return machine.path(place); }
    /// A file that was last written so many days ago.
    void file(const QString& place, qint64 bytes, int days = 0) const
    {
        machine.file(place, Size{bytes});
        const QDateTime time = clock->now().addDays(-days);
        machine.setTimes(place, time, time);
    }

    void scan()
    {
        service.scanAll();
        EXPECT_TRUE(waitUntil([&] { return !service.isScanning(); }));
    }
    /// Null where nothing of it was found.
    [[nodiscard]] CleanerCategory* category(Type type) const
    {
        for (const auto& category : service.categories()) {
            if (category->type() == type)
                return category.get();
        }
        return nullptr;
    }
    /// The names of what is listed, in order.
    [[nodiscard]] QStringList names(Type type) const
    {
        QStringList names;
        if (const CleanerCategory* found = category(type)) {
            for (const CleanerItem& item : found->items())
                names += item.name;
        }
        return names;
    }
    /// Selects what `isWanted` says and nothing else.
    void select(const std::function<bool(const CleanerItem&)>& isWanted) const
    {
        for (const auto& category : service.categories()) {
            for (const CleanerItem& item : std::vector(category->items()))
                category->setItemSelected(item.id, isWanted(item));
        }
    }

    enum class Route { Quarantine, ForGood };
    CleanerService::CleanResult clean(Route route)
    {
        return awaitTask(route == Route::ForGood ? service.cleanSelectedPermanently()
                                                 : service.cleanSelected());
    }

    SandboxMachine machine = SandboxMachine::temporary();
    RecordingFileSystem fileSystem;
    ManualClock* clock = new ManualClock; ///< m_owned's
    int posts = 0;                        ///< of diskSpaceChanged

private:
    OwnedHost m_owned{machine.locations(), fileSystem, std::unique_ptr<Clock>(clock)};
    QObject m_receiver;

public:
    AppSettings settings{host().defaults, *clock, machine.locations().home()};
    ActivityTracker tracker;
    SafetyChecker safety{machine.locations()};
    QuarantineProvider quarantine{host(), settings};
    CleanerService service{host(), settings, tracker, safety, quarantine};
};

/// What the cleaner has logged.
inline QStringList cleanerLines(const LogCapture& log)
{
    QStringList lines;
    for (const LogLine& line : log.lines()) {
        if (line.category == u"cleaner")
            lines += line.text;
    }
    return lines;
}

/// A test on such a ground.
class CleanerTest : public ::testing::Test, protected CleanerGround {};

} // namespace brivane::testing
