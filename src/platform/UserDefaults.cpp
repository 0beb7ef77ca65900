#include "platform/UserDefaults.h"

#include "platform/FileDescriptor.h"
#include "platform/FileWriting.h"
#include "platform/PathText.h"
#include "platform/PropertyList.h"

#include <cerrno>
#include <cmath>

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brivane {

namespace {

enum class Content { Missing, Unreadable, Broken, Good };

struct Loaded {
    Content content;
    QVariantMap values;
};

Loaded load(const QByteArray& file)
{
    const FileDescriptor descriptor(::open(file.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor.isValid())
        return {errno == ENOENT ? Content::Missing : Content::Unreadable, {}};
    QByteArray bytes;
    char buffer[16384];
    for (;;) {
        const ssize_t got = ::read(descriptor.get(), buffer, sizeof buffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return {Content::Unreadable, {}};
        if (got == 0)
            break;
        bytes.append(buffer, got);
    }
    const std::optional<QVariant> value = PropertyList::read(bytes);
    if (!value || value->typeId() != QMetaType::QVariantMap)
        return {Content::Broken, {}};
    return {Content::Good, value->toMap()};
}

/// Replaces `file` by `bytes`: a reader, or a start after a crash, sees the old or the new content.
bool replaceFile(const QByteArray& file, QByteArrayView bytes)
{
    const QString path = PathText::fromBytes(file);
    const QString folder = path.left(path.lastIndexOf(u'/'));
    return makeDirectoryWithParents(folder, 0700) && writeFileAtomically(path, bytes, 0600);
}

/// Gives a file that cannot be understood another name, so that nothing in it is lost.
bool putAside(const QByteArray& file)
{
    for (int number = 1; number < 1000; ++number) {
        const QByteArray name = file + ".damaged-" + QByteArray::number(number);
        if (::renameat2(AT_FDCWD, file.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE) ==
            0)
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
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
    , m_values(load(PathText::toBytes(file)).values)
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
    const QByteArray file = PathText::toBytes(m_file);
    Loaded current = load(file);
    if (current.content == Content::Unreadable ||
        (current.content == Content::Broken && !putAside(file)))
        return false;
    apply(current.values, m_unsaved);
    const std::optional<QByteArray> bytes =
        PropertyList::write(current.values, PropertyList::Encoding::Xml);
    if (!bytes || !replaceFile(file, *bytes))
        return false;
    m_values = current.values;
    m_unsaved.clear();
    return true;
}

} // namespace brivane
