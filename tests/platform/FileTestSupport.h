#pragma once

#include "platform/PathText.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <map>
#include <string>

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

/// Makes a folder for trees of very many entries: in memory, where this machine can.
QByteArray makeSpaciousFolder();

inline QString text(const QByteArray& path)
{
    return PathText::fromBytes(path);
}

/// Whether anything stands at `path`, be it a dangling link.
bool stands(const QByteArray& path);
void writeFile(const QByteArray& path, const QByteArray& content);
QByteArray readFile(const QByteArray& path);

/// Every object from `path` down, by its path below `path`, with all of it that a move must keep:
/// type, mode, owner, modification time, link count, target, content, extended attributes. Read by
/// fts, which shares no code with what is tested.
using Snapshot = std::map<QByteArray, QByteArray>;
Snapshot snapshot(const QByteArray& path);
/// The first entry in which the two differ, as text for a failure; empty when they are alike.
std::string difference(const Snapshot& actual, const Snapshot& expected);

/// Runs `body` in a child for which permissions bind. Whether it passed.
bool passesUnprivileged(const std::function<void()>& body);

} // namespace brivane
