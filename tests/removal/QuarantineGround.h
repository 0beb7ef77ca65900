#pragma once

#include "core/AppSettings.h"
#include "core/NotificationNames.h"
#include "platform/FileIdentity.h"
#include "platform/FileReading.h"
#include "platform/FileWriting.h"
#include "platform/Volumes.h"
#include "removal/QuarantineService.h"
#include "sandbox/SandboxMachine.h"
#include "support/AwaitTask.h"
#include "support/ManualClock.h"
#include "support/RecordingFileSystem.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace brivane::testing {

using namespace Qt::StringLiterals;

/// A sandbox machine with a quarantine in its home, which can be started afresh on what is there.
class QuarantineGround {
public:
    QuarantineGround()
    {
        fileSystem.trash = machine.directory(u"/trash");
        machine.directory(u"~");
        host().notifications.subscribe(NotificationNames::diskSpaceChanged, &m_receiver,
                                       [this] { ++posts; });
    }

    [[nodiscard]] Host& host() { return m_owned.host(); }
    void start()
    {
        service.reset();
        service = std::make_unique<QuarantineService>(host(), settings, store());
    }

    [[nodiscard]] QString store() const { return machine.path(u"~/.Brivane_Quarantine"); }
    [[nodiscard]] QString manifest() const { return store() + u"/.manifest.json"_s; }
    QString file(const QString& place, const QByteArray& content = "12345") const
    {
        return machine.file(place, content);
    }

    /// A file at a real path, also outside the machine's folder.
    static QString put(const QString& path, const QByteArray& bytes = "12345")
    {
        if (!writeFileAtomically(path, bytes, 0600))
            throw std::runtime_error("cannot write " + path.toStdString());
        return path;
    }

    QuarantineService::HandOver quarantine(const QStringList& paths)
    {
        return awaitTask(service->quarantine(paths, QStringLiteral("Test")));
    }
    /// Runs a task without a result to its end.
    static void await(const QCoro::Task<>& task)
    {
        EXPECT_TRUE(waitUntil([&] { return task.isReady(); }));
    }
    /// The candidates for these paths as they are now.
    static std::vector<QuarantineCandidate> shown(const QStringList& paths)
    {
        std::vector<QuarantineCandidate> candidates;
        for (const QString& path : paths)
            candidates.push_back({path, *FileIdentity::of(path)});
        return candidates;
    }

    /// The item in quarantine, where there is one.
    [[nodiscard]] QuarantineItem only() const
    {
        EXPECT_EQ(service->items().size(), 1);
        return service->items().value(0);
    }
    [[nodiscard]] QStringList names() const
    {
        QStringList all;
        for (const QuarantineItem& item : service->items())
            all += item.fileName;
        return all;
    }
    /// What the list on disk holds.
    [[nodiscard]] QJsonArray recorded() const;

    SandboxMachine machine = SandboxMachine::temporary();
    RecordingFileSystem fileSystem;
    ManualClock* clock = new ManualClock; ///< m_owned's
    int posts = 0;                        ///< of diskSpaceChanged

private:
    OwnedHost m_owned{machine.locations(), fileSystem, std::unique_ptr<Clock>(clock)};
    QObject m_receiver;

public:
    AppSettings settings{host().defaults, *clock, machine.locations().home()};
    std::unique_ptr<QuarantineService> service;
};

/// Whether anything is there, be it a dangling link.
inline bool stands(const QString& path)
{
    struct stat status = {};
    return ::lstat(PathText::toBytes(path).constData(), &status) == 0;
}

/// Empty when there is none.
inline QByteArray content(const QString& path)
{
    const Result<QByteArray> bytes = readWholeFile(path);
    return bytes ? *bytes : QByteArray();
}

/// A test on such a ground, with the service started.
class QuarantineTest : public ::testing::Test, protected QuarantineGround {
protected:
    QuarantineTest() { start(); }
};

inline QJsonArray QuarantineGround::recorded() const
{
    return QJsonDocument::fromJson(content(manifest())).array();
}

} // namespace brivane::testing
