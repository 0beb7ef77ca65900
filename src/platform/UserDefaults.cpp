#include "platform/UserDefaults.h"

#include "platform/FileReading.h"
#include "platform/FileSystemProviding.h"
#include "platform/PropertyList.h"
#include "platform/PutAside.h"
#include "platform/SystemLog.h"

#include <cerrno>
#include <cmath>
#include <utility>

namespace brivane {

using namespace Qt::StringLiterals;

namespace {

enum class Content { Readable, Missing, Broken };

struct Loaded {
    Content content = Content::Readable;
    QVariantMap values = {};
};

/// An error is one of the disk. A file that is not there holds nothing.
Result<Loaded> load(const QString& file)
{
    const Result<QByteArray> bytes = readWholeFile(file);
    if (!bytes) {
        if (bytes.error().code == ENOENT)
            return Loaded{Content::Missing};
        if (bytes.error().code == EFBIG) // no preferences are that large
            return Loaded{Content::Broken};
        return bytes.error();
    }
    const std::optional<QVariant> value = PropertyList::read(*bytes);
    if (!value || value->typeId() != QMetaType::QVariantMap)
        return Loaded{Content::Broken};
    return Loaded{Content::Readable, value->toMap()};
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

UserDefaults::UserDefaults(QString file, FileSystemProviding& fileSystem)
    : m_file(std::move(file))
    , m_fileSystem(fileSystem)
    , m_worker(u"preferences"_s)
{
}

UserDefaults::~UserDefaults()
{
    waitUntilSaved();
}

void UserDefaults::readAhead()
{
    m_worker.run([this] { read(); });
}

void UserDefaults::read() const
{
    std::call_once(m_isRead, [this] {
        Result<Loaded> loaded = load(m_file);
        const std::lock_guard lock(m_mutex);
        if (loaded)
            m_values = std::move(loaded->values);
        apply(m_values, m_unsaved);
    });
}

QVariantMap UserDefaults::persistentDomain(const QString& name) const
{
    if (name.isEmpty() || name.contains(u'/') || name.contains(QChar(u'\0')))
        return {};
    Result<Loaded> loaded = load(m_file.left(m_file.lastIndexOf(u'/') + 1) + name + u".plist"_s);
    return loaded ? std::move(loaded->values) : QVariantMap();
}

QVariant UserDefaults::object(const QString& key) const
{
    read();
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

void UserDefaults::setInteger(const QString& key, qint64 value)
{
    change(key, value);
}
void UserDefaults::setBool(const QString& key, bool value)
{
    change(key, value);
}
void UserDefaults::setReal(const QString& key, double value)
{
    change(key, value);
}
void UserDefaults::setString(const QString& key, const QString& value)
{
    change(key, value);
}
void UserDefaults::setStringArray(const QString& key, const QStringList& value)
{
    change(key, value);
}
void UserDefaults::setData(const QString& key, const QByteArray& value)
{
    change(key, value);
}
void UserDefaults::remove(const QString& key)
{
    change(key, {});
}

void UserDefaults::change(const QString& key, const QVariant& value)
{
    {
        const std::lock_guard lock(m_mutex);
        m_unsaved.insert(key, value);
        apply(m_values, {{key, value}});
    }
    requestWrite();
}

void UserDefaults::requestWrite()
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_isWriteWaiting, true))
            return;
    }
    m_worker.run([this] { write(); });
}

bool UserDefaults::waitUntilSaved()
{
    const auto isSaved = [this] {
        m_worker.waitForDone();
        const std::lock_guard lock(m_mutex);
        return m_unsaved.isEmpty();
    };
    if (isSaved())
        return true;
    requestWrite(); // the last one failed
    return isSaved();
}

void UserDefaults::write()
{
    read();
    QVariantMap changes;
    {
        const std::lock_guard lock(m_mutex);
        m_isWriteWaiting = false;
        changes = std::exchange(m_unsaved, {});
    }
    Result<QVariantMap> saved = save(changes);
    if (!saved && !m_isFailing)
        writeToSystemLog(u"com.brivane.app", u"scanner", LogLevel::Error,
                         u"The preferences could not be saved: %1"_s.arg(saved.error().text()));
    m_isFailing = !saved;

    const std::lock_guard lock(m_mutex);
    if (saved) {
        m_values = std::move(*saved);
        apply(m_values, m_unsaved);
    } else {
        changes.insert(m_unsaved); // what is newer wins
        m_unsaved = std::move(changes);
    }
}

Result<QVariantMap> UserDefaults::save(const QVariantMap& changes)
{
    // Another process may have written since: its values stay, only what changed here is put in.
    Result<Loaded> current = load(m_file);
    if (!current)
        return current.error();
    QVariantMap values = std::move(current->values);
    if (current->content == Content::Broken) {
        if (const auto aside = putAside(m_file); !aside)
            return aside.error();
    }
    if (current->content != Content::Readable) {
        const std::lock_guard lock(m_mutex);
        values = m_values; // all that is left of it
    }
    apply(values, changes);
    const std::optional<QByteArray> bytes =
        PropertyList::write(values, PropertyList::Encoding::Xml);
    if (!bytes)
        return FileError{EINVAL, m_file, FileOperation::Write};
    const QString folder = m_file.left(m_file.lastIndexOf(u'/'));
    if (const auto made = m_fileSystem.makeDirectory(folder, 0700); !made)
        return made.error();
    if (const auto written = m_fileSystem.writeAtomically(m_file, *bytes, 0600); !written)
        return written.error();
    return values;
}

} // namespace brivane
