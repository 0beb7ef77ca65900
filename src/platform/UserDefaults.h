#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <mutex>
#include <optional>

namespace brivane {

/// The user's preferences: values under keys, kept in one property list file.
///
/// Every write reaches the disk before it returns, atomically: the file is either the old or the
/// new one. Keys that others put into the file stay. Any thread.
///
/// A typed read gives none when the key is absent or its value is not of the type. Numbers convert
/// where nothing is lost: 1 reads as true, 7 as 7.0, 7.0 as 7, but 7.5 is no integer.
class UserDefaults {
public:
    /// `file` need not exist; it and its directory are made at the first write. A file that is no
    /// property list is put aside under another name before it would be overwritten.
    explicit UserDefaults(const QString& file);
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// The value as it is stored, invalid when the key is absent.
    [[nodiscard]] QVariant object(const QString& key) const;
    [[nodiscard]] std::optional<qint64> integer(const QString& key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    [[nodiscard]] std::optional<double> real(const QString& key) const;
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// None also when a single element is no string.
    [[nodiscard]] std::optional<QStringList> stringArray(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const;

    /// Each write tells whether it reached the disk. One that did not still holds for this object,
    /// and is tried again with the next one.
    bool setInteger(const QString& key, qint64 value);
    bool setBool(const QString& key, bool value);
    bool setReal(const QString& key, double value);
    bool setString(const QString& key, const QString& value);
    bool setStringArray(const QString& key, const QStringList& value);
    bool setData(const QString& key, const QByteArray& value);
    bool remove(const QString& key);

private:
    bool change(const QString& key, const QVariant& value);

    const QString m_file;
    mutable std::mutex m_mutex;
    QVariantMap m_values;  ///< guarded by m_mutex: the file's values with the changes applied
    QVariantMap m_unsaved; ///< guarded by m_mutex: changes not in the file yet; invalid: removed
};

} // namespace brivane
