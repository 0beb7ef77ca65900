#pragma once

#include "platform/PathText.h"
#include "sandbox/NastyTree.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include <fts.h>
#include <gtest/gtest.h>

// What the tests of file-changing code share. All paths here are bytes.
namespace brivane {

/// A folder for one test, gone with it, whatever permissions the test has set in it.
class TestFolder {
public:
    TestFolder();
    /// Takes over a folder that is there; empty for none.
    explicit TestFolder(QByteArray path)
        : m_path(std::move(path))
    {
    }
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] const QByteArray& path() const { return m_path; }
    [[nodiscard]] QByteArray operator/(const char* name) const { return m_path + '/' + name; }

private:
    QByteArray m_path;
};

/// A test with a folder on each of two devices.
class TwoDevices : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (other.path().isEmpty())
            GTEST_SKIP() << "there is no second device";
    }

    const TestFolder folder;
    const TestFolder other{makeFolderOnOtherDevice(folder.path())};
};

/// Makes a folder for trees of very many entries: in memory, where this machine can.
QByteArray makeSpaciousFolder();

inline QString text(const QByteArray& path)
{
    return PathText::fromBytes(path);
}

/// Whether anything stands at `path`, be it a dangling link.
bool stands(const QByteArray& path);
/// The permissions of what stands at `path`, a link itself.
mode_t modeOf(const QByteArray& path);
void makeFolders(const TestFolder& folder, std::initializer_list<const char*> names);
void writeFile(const QByteArray& path, const QByteArray& content);
QByteArray readFile(const QByteArray& path);

/// The names of what is in a folder, sorted.
QStringList namesIn(const QString& folder);

/// Calls `visit` for what fts finds from `path` down, without following links; `options` adds to
/// its own.
void forEachByFts(const QByteArray& path, int options,
                  const std::function<void(const FTSENT&)>& visit);

/// Every object from `path` down, by its path below `path`, with all of it that a move must keep:
/// type, mode, owner, modification time, link count, target, content, extended attributes. Read by
/// fts, which shares no code with what is tested.
using Snapshot = std::map<QByteArray, QByteArray>;
Snapshot snapshot(const QByteArray& path);
/// The first entry in which the two differ, as text for a failure; empty when they are alike.
std::string difference(const Snapshot& actual, const Snapshot& expected);

/// Runs `body` in a process of its own, which ends with status 0 when it passed. How it ended.
int statusOfChild(const std::function<void()>& body);
/// Runs `body` in a child for which permissions bind. Whether it passed.
bool passesUnprivileged(const std::function<void()>& body);
/// Runs `body` in a child for which `source` is mounted at `target` as well. Whether it passed;
/// nothing where this machine does not let us mount.
std::optional<bool> passesWithMount(const QByteArray& source, const QByteArray& target,
                                    const std::function<void()>& body);

} // namespace brivane
