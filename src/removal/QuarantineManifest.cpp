#include "removal/QuarantineManifest.h"

#include "platform/FileReading.h"
#include "platform/PutAside.h"
#include "removal/StoreNames.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <bit>
#include <cerrno>

namespace brivane {

namespace {

constexpr qsizetype longestList = qsizetype{1} << 30; // bytes; some million items

bool isShortOfRoom(const FileError& error)
{
    return error.code == ENOSPC || error.code == EDQUOT;
}

std::optional<QList<QuarantineItem>> decode(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isArray())
        return {};
    const QJsonArray records = document.array();
    QList<QuarantineItem> items;
    items.reserve(records.size());
    for (const QJsonValue record : records) {
        std::optional<QuarantineItem> item = QuarantineItem::fromJson(record);
        if (!item)
            return {};
        items += *std::move(item);
    }
    return items;
}

QByteArray encode(const QList<QuarantineItem>& items)
{
    QJsonArray records;
    for (const QuarantineItem& item : items)
        records += item.toJson();
    return QJsonDocument(records).toJson(QJsonDocument::Compact);
}

} // namespace

QuarantineManifest::QuarantineManifest(const QString& quarantineDir,
                                       FileSystemProviding& fileSystem)
    : m_path(quarantineDir + u'/' + StoreNames::manifest)
    , m_reserve(quarantineDir + u'/' + StoreNames::reserve)
    , m_fileSystem(fileSystem)
{
}

Result<QList<QuarantineItem>> QuarantineManifest::load()
{
    const Result<QByteArray> bytes = readWholeFile(m_path, longestList);
    m_length = bytes ? bytes->size() : 0;
    // A folder, say, and what is too large for any list are no lists.
    const bool isNone = !bytes && (bytes.error().code == EINVAL || bytes.error().code == EFBIG);
    if (!bytes && !isNone && bytes.error().code != ENOENT)
        return bytes.error();
    const auto items = bytes ? decode(*bytes) : std::nullopt;
    m_isDamaged = !items && (bytes || isNone);
    return items.value_or(QList<QuarantineItem>());
}

Result<> QuarantineManifest::save(const QList<QuarantineItem>& items)
{
    if (m_lock) {
        if (const Result<> held = m_lock->check(); !held)
            return held.error();
    }
    if (m_isDamaged) {
        if (const auto aside = putAside(m_path); !aside && aside.error().code != ENOENT)
            return aside.error();
        m_isDamaged = false;
    }
    const QByteArray bytes = encode(items);
    Result<> written = write(bytes);
    if (written)
        m_length = bytes.size();
    makeReserve();
    return written;
}

Result<> QuarantineManifest::write(const QByteArray& bytes)
{
    Result<> written = m_fileSystem.writeAtomically(m_path, bytes, 0600);
    if (written || !isShortOfRoom(written.error()))
        return written;
    if (!m_fileSystem.releaseSpace(m_reserve))
        return written;
    return m_fileSystem.writeAtomically(m_path, bytes, 0600);
}

void QuarantineManifest::makeReserve()
{
    constexpr std::uint64_t least = 256 << 10;
    const auto twice = 2 * static_cast<std::uint64_t>(m_length);
    // In steps, so that a list which grows does not have it made anew each time.
    (void)m_fileSystem.reserveSpace(m_reserve, std::bit_ceil(twice + least + 1));
}

} // namespace brivane
