#pragma once

#include "platform/DefaultFileSystem.h"
#include "platform/PathText.h"

#include <QMutex>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <cerrno>
#include <functional>

namespace brivane::testing {

/// The real file system with a Trash of its own; calls are recorded, and can be made to fail.
/// Any thread; the public fields are set before the calls that they are meant for.
class RecordingFileSystem final : public FileSystemProviding {
public:
    QString trash; ///< a folder
    bool hasNoTrash = false;
    bool cannotWrite = false;
    bool isFull = false; ///< nothing can be written but in the place of a reserve
    QString cannotRemove;
    std::uint64_t removedAllTheSame = 0; ///< objects in cannotRemove
    std::atomic<int> writes = 0;
    /// Called before each operation but writing, on its thread.
    std::function<void(FileOperation, const QString& path)> before = [](FileOperation,
                                                                        const QString&) {};
    std::function<void()> beforeWriting = [] {}; ///< on the writing thread

    /// Called when a copy between devices is whole, on its thread.
    std::function<void()> onceWhole = [] {};

    /// In order: "trash name", "remove name", "move name".
    [[nodiscard]] QStringList calls() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_calls;
    }
    /// The one of the last call.
    [[nodiscard]] QThread* thread() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_thread;
    }
    void clearCalls()
    {
        const QMutexLocker lock(&m_mutex);
        m_calls.clear();
    }

    Result<QString> trashItem(const QString& path,
                              const std::optional<FileIdentity>& expected) override
    {
        record("trash ", FileOperation::Trash, path);
        if (hasNoTrash)
            return FileError{ENOTSUP, path, FileOperation::Trash};
        const QString place = trash + u'/' + PathText::lastComponent(path);
        const auto moved = m_real.moveItem(path, place, {.expected = expected});
        if (!moved)
            return moved.error();
        return place;
    }
    RemovalReport removeItem(const QString& path,
                             const std::optional<FileIdentity>& expected) override
    {
        record("remove ", FileOperation::Remove, path);
        if (cannotRemove == path)
            return {.removed = removedAllTheSame,
                    .failures = {{EACCES, path, FileOperation::Remove}}};
        return m_real.removeItem(path, expected);
    }
    Result<Moved> moveItem(const QString& from, const QString& to,
                           const MoveOptions& options) override
    {
        record("move ", FileOperation::Move, from);
        MoveOptions watched = options;
        watched.onceWhole = [&](const FileIdentity& copy) {
            if (options.onceWhole)
                options.onceWhole(copy);
            onceWhole();
        };
        return m_real.moveItem(from, to, watched);
    }
    Result<> makeDirectory(const QString& path, mode_t mode, ParentLinks links) override
    {
        return m_real.makeDirectory(path, mode, links);
    }
    Result<> writeAtomically(const QString& path, QByteArrayView bytes, mode_t mode) override
    {
        ++writes;
        beforeWriting();
        if (cannotWrite || (isFull && bytes.size() > m_room.exchange(0)))
            return FileError{ENOSPC, path, FileOperation::Write};
        return m_real.writeAtomically(path, bytes, mode);
    }
    Result<> reserveSpace(const QString& path, std::uint64_t bytes) override
    {
        if (isFull)
            return FileError{ENOSPC, path, FileOperation::Write};
        return m_real.reserveSpace(path, bytes);
    }
    Result<> releaseSpace(const QString& path) override
    {
        const auto reserve = FileIdentity::of(path);
        m_room = reserve ? static_cast<qint64>(*reserve->size) : 0;
        return m_real.releaseSpace(path);
    }

private:
    void record(const char* call, FileOperation operation, const QString& path)
    {
        {
            const QMutexLocker lock(&m_mutex);
            m_calls += QLatin1StringView(call) + PathText::lastComponent(path);
            m_thread = QThread::currentThread();
        }
        before(operation, path);
    }

    DefaultFileSystem m_real;
    std::atomic<qint64> m_room = 0; ///< on a full disk: bytes that a reserve has given back
    mutable QMutex m_mutex;
    QStringList m_calls;         ///< guarded by m_mutex
    QThread* m_thread = nullptr; ///< guarded by m_mutex
};

} // namespace brivane::testing
