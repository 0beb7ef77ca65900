#include "removal/RestoreJournal.h"

#include "platform/FileReading.h"
#include "platform/FileWriting.h"
#include "platform/PathText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cerrno>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QString folderOf(const QString& path)
{
    return path.left(path.lastIndexOf(u'/'));
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
                .begunAt = value[u"begunAt"].toString().toLongLong(),
                .copy = decode(value[u"copy"].toArray())};
    const bool isOne = !entry.stored.isEmpty() && entry.place.startsWith(u'/') &&
                       isTemporaryName(entry.temporary) && !entry.temporary.contains(u'/');
    return isOne ? std::optional(entry) : std::nullopt;
}

void RestoreJournal::sweep(const QString& quarantineDir)
{
    const Result<QByteArray> bytes = readWholeFile(m_path);
    if (!bytes)
        return;
    const QJsonArray entries = QJsonDocument::fromJson(*bytes).array();
    for (const QJsonValue& value : entries) {
        const std::optional<Entry> entry = entryOf(value);
        if (entry && !isOver(*entry, quarantineDir))
            m_entries += *entry;
    }
    (void)save();
}

bool RestoreJournal::isOver(const Entry& entry, const QString& quarantineDir) const
{
    const QString folder = folderOf(entry.place);
    const auto folderNow = FileIdentity::of(folder);
    if (!folderNow && folder.contains(u'/'))
        return false; // its volume may come back
    const RemovalReport removal = m_fileSystem.removeItem(folder + u'/' + entry.temporary);
    const bool isSwept = removal.isComplete() || removal.failures.front().code == ENOENT;
    return isSwept && (!entry.copy || !FileIdentity::of(quarantineDir + u'/' + entry.stored));
}

RestoreJournal::Entry* RestoreJournal::find(const QString& stored)
{
    const auto entry =
        std::ranges::find(m_entries, PathText::lastComponent(stored), &Entry::stored);
    return entry != m_entries.end() ? &*entry : nullptr;
}

void RestoreJournal::begin(const QString& stored, const QString& place, const QString& temporary)
{
    m_entries.removeIf(
        [&](const Entry& entry) { return entry.stored == PathText::lastComponent(stored); });
    m_entries += {PathText::lastComponent(stored), place, temporary};
    if (!save())
        return;
    // What is changed from now on is stamped no earlier than this.
    if (const auto journal = FileIdentity::of(m_path))
        m_entries.back().begunAt = *journal->changedAt;
}

void RestoreJournal::becameWhole(const QString& stored, const FileIdentity& copy)
{
    if (Entry* entry = find(stored)) {
        // The rename into place changes the time of change.
        entry->copy = copy;
        entry->copy->changedAt.reset();
        entry->copy->folder.reset();
        (void)save();
    }
}

void RestoreJournal::end(const QString& stored)
{
    const QString name = PathText::lastComponent(stored);
    if (m_entries.removeIf([&](const Entry& entry) { return entry.stored == name; }) > 0)
        (void)save();
}

std::optional<std::int64_t> RestoreJournal::wholeSince(const QString& stored,
                                                       const QString& place) const
{
    const QString name = PathText::lastComponent(stored);
    const auto entry = std::ranges::find(m_entries, name, &Entry::stored);
    if (entry == m_entries.end() || entry->place != place || !entry->copy)
        return {};
    const auto standing = FileIdentity::of(place);
    return standing && entry->copy->matches(*standing) ? std::optional(entry->begunAt)
                                                       : std::nullopt;
}

Result<> RestoreJournal::save() const
{
    if (m_entries.isEmpty()) {
        (void)m_fileSystem.removeItem(m_path);
        return {};
    }
    QJsonArray entries;
    for (const Entry& entry : m_entries) {
        QJsonObject object{{u"stored"_s, entry.stored},
                           {u"place"_s, entry.place},
                           {u"temporary"_s, entry.temporary},
                           {u"begunAt"_s, QString::number(entry.begunAt)}};
        if (entry.copy)
            object[u"copy"_s] = encode(*entry.copy);
        entries += object;
    }
    return m_fileSystem.writeAtomically(
        m_path, QJsonDocument(entries).toJson(QJsonDocument::Compact), 0600);
}

} // namespace brivane
