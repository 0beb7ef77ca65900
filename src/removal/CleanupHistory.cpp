#include "removal/CleanupHistory.h"

#include "core/Composition.h"
#include "core/JsonNumbers.h"
#include "core/ReferenceDate.h"
#include "platform/Host.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr qsizetype mostRecords = 10;

QJsonObject encode(const CleanupRecord& record)
{
    QJsonObject categories;
    for (auto entry = record.categories.begin(); entry != record.categories.end(); ++entry)
        categories[entry.key()] = JsonNumbers::fromUnsigned(entry.value());
    return {
        {u"date"_s, ReferenceDate::seconds(record.date)},
        {u"filesRemoved"_s, record.filesRemoved},
        {u"bytesFreed"_s, JsonNumbers::fromUnsigned(record.bytesFreed)},
        {u"categories"_s, categories},
    };
}

std::optional<CleanupRecord> decode(const QJsonValue& value)
{
    const QJsonValue date = value[u"date"];
    const QJsonValue categories = value[u"categories"];
    const auto filesRemoved = JsonNumbers::toSigned(value[u"filesRemoved"]);
    const auto bytesFreed = JsonNumbers::toUnsigned(value[u"bytesFreed"]);
    if (!date.isDouble() || !filesRemoved || !bytesFreed || !categories.isObject())
        return {};
    CleanupRecord record{ReferenceDate::fromSeconds(date.toDouble()), *filesRemoved, *bytesFreed};
    const QJsonObject entries = categories.toObject();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const auto number = JsonNumbers::toUnsigned(entry.value());
        if (!number)
            return {};
        record.categories.insert(entry.key(), *number);
    }
    return record;
}

} // namespace

CleanupHistory::CleanupHistory(UserDefaults& defaults, const Clock& clock)
    : m_defaults(defaults)
    , m_clock(clock)
{
}

std::unique_ptr<CleanupHistory> CleanupHistory::make(Composition& composition)
{
    const Host& host = composition.host();
    return std::make_unique<CleanupHistory>(host.defaults, host.clock);
}

void CleanupHistory::save(const CleanupRecord& record) const
{
    QList<CleanupRecord> records = loadAll();
    records.prepend(record);
    QJsonArray array;
    for (const CleanupRecord& kept : records.first(std::min(records.size(), mostRecords)))
        array += encode(kept);
    m_defaults.setData(key.toString(), QJsonDocument(array).toJson(QJsonDocument::Compact));
}

QList<CleanupRecord> CleanupHistory::loadAll() const
{
    const QByteArray bytes = m_defaults.data(key.toString()).value_or(QByteArray());
    const QJsonArray array = QJsonDocument::fromJson(bytes).array();
    QList<CleanupRecord> records;
    for (const QJsonValue value : array) {
        const std::optional<CleanupRecord> record = decode(value);
        if (!record)
            return {};
        records += *record;
    }
    return records;
}

std::optional<qint64> CleanupHistory::daysSinceLastCleanup() const
{
    const QList<CleanupRecord> records = loadAll();
    if (records.isEmpty())
        return {};
    // A day of the calendar has 23 or 25 hours when clocks change.
    const QDateTime from = records.front().date.toLocalTime();
    const QDateTime now = m_clock.now().toLocalTime();
    const bool isPast = from <= now;
    qint64 days = from.daysTo(now);
    if (isPast ? from.addDays(days) > now : from.addDays(days) < now)
        days -= isPast ? 1 : -1;
    return days;
}

} // namespace brivane
