#include "removal/RestoreJournal.h"

#include "platform/FileReading.h"
#include "platform/FileWriting.h"
#include "platform/PathText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// Of the folder that `place` is in; 0 when it is not there.
std::uint64_t deviceOf(const QString& place)
{
    const auto folder = FileIdentity::folderOf(place);
    return folder ? folder->device : 0;
}

// As text: the numbers of JSON end at 2^53.

QJsonArray encode(const FileIdentity& copy)
{
    return {QString::number(copy.device), QString::number(copy.inode),
            QString::number(copy.size.value_or(0)), QString::number(copy.modifiedAt.value_or(0))};
}

std::optional<FileIdentity> decode(const QJsonArray& fields)
{
    if (fields.size() != 4)
        return {};
    return FileIdentity{.device = fields[0].toString().toULongLong(),
                        .inode = fields[1].toString().toULongLong(),
                        .size = fields[2].toString().toULongLong(),
                        .modifiedAt = fields[3].toString().toLongLong()};
}

} // namespace

RestoreJournal::RestoreJournal(QString path, FileSystemProviding& fileSystem)
    : m_path(std::move(path))
    , m_fileSystem(fileSystem)
{
}

std::optional<RestoreJournal::Entry> RestoreJournal::entryOf(const QJsonValue& value)
{
    Entry entry{.stored = value[u"stored"].toString(),
                .place = value[u"place"].toString(),
                .temporary = value[u"temporary"].toString(),
                .device = value[u"device"].toString().toULongLong(),
                .copy = decode(value[u"copy"].toArray())};
    const bool isCopyOut = isTemporaryName(entry.temporary) && !entry.temporary.contains(u'/');
    const bool isCopyIn = entry.temporary.isEmpty() && !entry.stored.isEmpty();
    const bool isOne = entry.place.startsWith(u'/') && (isCopyOut || isCopyIn);
    return isOne ? std::optional(entry) : std::nullopt;
}

void RestoreJournal::load()
{
    if (std::exchange(m_isLoaded, true))
        return;
    const Result<QByteArray> bytes = readWholeFile(m_path);
    const QString store = m_path.left(m_path.lastIndexOf(u'/') + 1);
    const QJsonArray entries = QJsonDocument::fromJson(bytes ? *bytes : QByteArray()).array();
    for (const QJsonValue value : entries) {
        const std::optional<Entry> entry = entryOf(value);
        if (!entry)
            continue;
        if (!entry->temporary.isEmpty())
            m_left += {{}, entry->place, entry->temporary, entry->device};
        // Of what is not stored any more there is nothing to know.
        const bool isStored = !entry->stored.isEmpty() && FileIdentity::of(store + entry->stored);
        if (isStored && (entry->copy || entry->temporary.isEmpty()))
            m_entries += *entry;
    }
    if (!entries.isEmpty() && m_entries.isEmpty() && m_left.isEmpty())
        save();
}

void RestoreJournal::forget(const QString& name)
{
    load();
    if (m_entries.removeIf([&](const Entry& entry) { return entry.stored == name; }) > 0)
        save();
}

void RestoreJournal::sweep()
{
    QList<Entry> left;
    {
        const std::lock_guard lock(m_mutex);
        load();
        left = m_left;
    }
    left.removeIf([&](const Entry& entry) { return !isSwept(entry); });
    if (left.isEmpty())
        return;
    const std::lock_guard lock(m_mutex);
    m_left.removeIf([&](const Entry& entry) { return left.contains(entry); });
    save();
}

bool RestoreJournal::isSwept(const Entry& entry) const
{
    const QString folder = entry.place.left(entry.place.lastIndexOf(u'/') + 1);
    const QString temporary = folder + entry.temporary;
    if (const auto found = FileIdentity::of(temporary)) {
        (void)m_fileSystem.removeItem(temporary, *found);
        return !FileIdentity::of(temporary);
    }
    return deviceOf(entry.place) == entry.device; // else its volume may come back
}

void RestoreJournal::put(const Entry& entry)
{
    const std::lock_guard lock(m_mutex);
    load();
    m_entries.removeIf([&](const Entry& other) { return other.stored == entry.stored; });
    m_entries += entry;
    save();
}

void RestoreJournal::beginTaking(const QString& stored, const QString& place)
{
    put({.stored = PathText::lastComponent(stored), .place = place});
}

bool RestoreJournal::isTakenInPart(const QString& stored)
{
    const QString name = PathText::lastComponent(stored);
    const std::lock_guard lock(m_mutex);
    load();
    return std::ranges::any_of(m_entries, [&](const Entry& entry) {
        return entry.stored == name && entry.temporary.isEmpty();
    });
}

void RestoreJournal::begin(const QString& stored, const QString& place, const QString& temporary)
{
    put({.stored = PathText::lastComponent(stored),
         .place = place,
         .temporary = temporary,
         .device = deviceOf(place)});
}

void RestoreJournal::becameWhole(const QString& stored, const FileIdentity& copy)
{
    const std::lock_guard lock(m_mutex);
    const auto entry =
        std::ranges::find(m_entries, PathText::lastComponent(stored), &Entry::stored);
    if (entry == m_entries.end())
        return;
    // The rename into place changes the time of change.
    entry->copy = copy;
    entry->copy->changedAt.reset();
    entry->copy->folder.reset();
    save();
}

void RestoreJournal::end(const QString& stored)
{
    const std::lock_guard lock(m_mutex);
    forget(PathText::lastComponent(stored));
}

bool RestoreJournal::isWholeAt(const QString& stored, const QString& place)
{
    const QString name = PathText::lastComponent(stored);
    const auto standing = FileIdentity::of(place);
    const std::lock_guard lock(m_mutex);
    load();
    return standing && std::ranges::any_of(m_entries, [&](const Entry& entry) {
               return entry.stored == name && entry.place == place && entry.copy &&
                      entry.copy->matches(*standing);
           });
}

void RestoreJournal::save()
{
    if (m_entries.isEmpty() && m_left.isEmpty()) {
        (void)m_fileSystem.removeItem(m_path);
        return;
    }
    QJsonArray entries;
    for (const Entry& entry : m_entries + m_left) {
        QJsonObject object{{u"stored"_s, entry.stored}, {u"place"_s, entry.place}};
        if (!entry.temporary.isEmpty()) {
            object[u"temporary"_s] = entry.temporary;
            object[u"device"_s] = QString::number(entry.device);
        }
        if (entry.copy)
            object[u"copy"_s] = encode(*entry.copy);
        entries += object;
    }
    (void)m_fileSystem.writeAtomically(m_path,
                                       QJsonDocument(entries).toJson(QJsonDocument::Compact), 0600);
}

} // namespace brivane
