#include "platform/UserDefaults.h"

#include "platform/FileReading.h"
#include "platform/FileWriting.h"
#include "platform/PropertyList.h"
#include "platform/PutAside.h"

#include <cerrno>
#include <cmath>

namespace brivane {

namespace {

enum class Content { Missing, Unreadable, Broken, Good };

struct Loaded {
    Content content;
    QVariantMap values;
};

Loaded load(const QString& file)
{
    const Result<QByteArray> bytes = readWholeFile(file);
    if (!bytes)
        return {bytes.error().code == ENOENT ? Content::Missing : Content::Unreadable, {}};
    const std::optional<QVariant> value = PropertyList::read(*bytes);
    if (!value || value->typeId() != QMetaType::QVariantMap)
        return {Content::Broken, {}};
    return {Content::Good, value->toMap()};
}

/// Replaces `file` by `bytes`: a reader, or a start after a crash, sees the old or the new content.
bool replaceFile(const QString& file, QByteArrayView bytes)
{
    const QString folder = file.left(file.lastIndexOf(u'/'));
    return makeDirectoryWithParents(folder, 0700) && writeFileAtomically(file, bytes, 0600);
}

bool isNumber(const QVariant& value)
{
    return value.typeId() == QMetaType::Bool || value.typeId() == QMetaType::LongLong ||
           value.typeId() == QMetaType::Double;
}

void apply(QVariantMap& values, const QVariantMap& changes)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isValid())
            values.insert(change.key(), change.value());
        else
            values.remove(change.key());
    }
}

} // namespace

UserDefaults::UserDefaults(const QString& file)
    : m_file(file)
    , m_values(load(file).values)
{
}

QVariant UserDefaults::object(const QString& key) const
{
    const std::lock_guard lock(m_mutex);
    return m_values.value(key);
}

std::optional<qint64> UserDefaults::integer(const QString& key) const
{
    const QVariant value = object(key);
    if (!isNumber(value))
        return {};
    if (value.typeId() == QMetaType::Double) {
        const double number = value.toDouble();
        // 2^63 is the first double that no qint64 holds; the comparison also drops "not a number".
        if (!(number >= -0x1p63 && number < 0x1p63) || std::trunc(number) != number)
            return {};
        return static_cast<qint64>(number);
    }
    return value.toLongLong();
}

std::optional<bool> UserDefaults::boolean(const QString& key) const
{
    const std::optional<qint64> number = integer(key);
    return number == 0 || number == 1 ? std::optional(*number == 1) : std::nullopt;
}

std::optional<double> UserDefaults::real(const QString& key) const
{
    const QVariant value = object(key);
    return isNumber(value) ? std::optional(value.toDouble()) : std::nullopt;
}

std::optional<QString> UserDefaults::string(const QString& key) const
{
    const QVariant value = object(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QStringList> UserDefaults::stringArray(const QString& key) const
{
    const QVariant value = object(key);
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList)
        return {};
    QStringList strings;
    const QVariantList elements = value.toList();
    for (const QVariant& element : elements) {
        if (element.typeId() != QMetaType::QString)
            return {};
        strings += element.toString();
    }
    return strings;
}

std::optional<QByteArray> UserDefaults::data(const QString& key) const
{
    const QVariant value = object(key);
    return value.typeId() == QMetaType::QByteArray ? std::optional(value.toByteArray())
                                                   : std::nullopt;
}

bool UserDefaults::setInteger(const QString& key, qint64 value)
{
    return change(key, value);
}
bool UserDefaults::setBool(const QString& key, bool value)
{
    return change(key, value);
}
bool UserDefaults::setReal(const QString& key, double value)
{
    return change(key, value);
}
bool UserDefaults::setString(const QString& key, const QString& value)
{
    return change(key, value);
}
bool UserDefaults::setStringArray(const QString& key, const QStringList& value)
{
    return change(key, value);
}
bool UserDefaults::setData(const QString& key, const QByteArray& value)
{
    return change(key, value);
}
bool UserDefaults::remove(const QString& key)
{
    return change(key, {});
}

bool UserDefaults::change(const QString& key, const QVariant& value)
{
    const std::lock_guard lock(m_mutex);
    m_unsaved.insert(key, value);
    apply(m_values, m_unsaved);

    // Another process may have written since: its values stay, only what changed here is put in.
    Loaded current = load(m_file);
    if (current.content == Content::Unreadable ||
        (current.content == Content::Broken && !putAside(m_file)))
        return false;
    apply(current.values, m_unsaved);
    const std::optional<QByteArray> bytes =
        PropertyList::write(current.values, PropertyList::Encoding::Xml);
    if (!bytes || !replaceFile(m_file, *bytes))
        return false;
    m_values = current.values;
    m_unsaved.clear();
    return true;
}

} // namespace brivane
