#include "removal/QuarantineManifest.h"

#include "platform/FileReading.h"
#include "platform/PutAside.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cerrno>

namespace brivane {

namespace {

std::optional<QList<QuarantineItem>> decode(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isArray())
        return {};
    const QJsonArray records = document.array();
    QList<QuarantineItem> items;
    items.reserve(records.size());
    for (const QJsonValue& record : records) {
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

QList<QuarantineItem> QuarantineManifest::load()
{
    const Result<QByteArray> bytes = readWholeFile(m_path);
    const auto items = bytes ? decode(*bytes) : std::nullopt;
    m_isDamaged = !items && (bytes || bytes.error().code != ENOENT);
    return items.value_or(QList<QuarantineItem>());
}

Result<> QuarantineManifest::save(const QList<QuarantineItem>& items)
{
    if (m_isDamaged) {
        if (const auto aside = putAside(m_path); !aside && aside.error().code != ENOENT)
            return aside.error();
        m_isDamaged = false;
    }
    return m_fileSystem.writeAtomically(m_path, encode(items), 0600);
}

} // namespace brivane
