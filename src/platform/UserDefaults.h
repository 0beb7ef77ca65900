#pragma once

#include "platform/Result.h"
#include "platform/Worker.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <mutex>
#include <optional>

namespace brivane {

class FileSystemProviding;

/// The user's preferences: values under keys, held in memory and kept in one property list file.
///
/// A change holds at once, and nobody waits for the disk: a worker writes it within moments. What
/// changes while one write is under way goes into the next, all of it. Each write is atomic: the
/// file is the old or the new one. Keys that others put into the file stay, and are seen here after
/// the next write. Any thread.
///
/// The file is read once, when the first value is asked for: that one call waits for the disk, and
/// less where readAhead() came before it. No later one does.
///
/// A write that fails is tried again with the next change and at the end; the first in a row is
/// logged. A program that ends without the destructor calls waitUntilSaved(); one that is killed
/// loses what it changed in its last moments.
///
/// A typed read gives none when the key is absent or its value is not of the type. Numbers convert
/// where nothing is lost: 1 reads as true, 7 as 7.0, 7.0 as 7, but 7.5 is no integer.
class UserDefaults {
public:
    /// `file` need not exist; it and its directory are made at the first write. A file that is no
    /// property list is put aside under another name before it would be overwritten. `fileSystem`
    /// is kept by reference; the worker uses it.
    UserDefaults(QString file, FileSystemProviding& fileSystem);
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    /// Waits until all is saved, or could not be.
    ~UserDefaults();

    /// Has the worker read the file, for a start that can do something else in the meantime.
    void readAhead();

    /// The preferences of another program, kept beside this file under its own name and ".plist",
    /// in either encoding. Read afresh: blocks, any thread. Empty when there are none or they
    /// cannot be read within the bounds of PropertyList, and for a name that is none of a file.
    [[nodiscard]] QVariantMap persistentDomain(const QString& name) const;

    /// The value as it is stored, invalid when the key is absent.
    [[nodiscard]] QVariant object(const QString& key) const;
    [[nodiscard]] std::optional<qint64> integer(const QString& key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    [[nodiscard]] std::optional<double> real(const QString& key) const;
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// None also when a single element is no string.
    [[nodiscard]] std::optional<QStringList> stringArray(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const;

    void setInteger(const QString& key, qint64 value);
    void setBool(const QString& key, bool value);
    void setReal(const QString& key, double value);
    void setString(const QString& key, const QString& value);
    void setStringArray(const QString& key, const QStringList& value);
    void setData(const QString& key, const QByteArray& value);
    void remove(const QString& key);

    /// Waits for the disk until every change made so far is in the file, or could not be written.
    /// Whether all are in the file.
    bool waitUntilSaved();

private:
    void change(const QString& key, const QVariant& value);
    /// Reads the file, unless that was done; who comes in between waits.
    void read() const;
    /// Has the worker write, unless it is going to.
    void requestWrite();
    /// The worker's, as is the next.
    void write();
    /// Puts the changes into the file as it is now, and gives what it holds then.
    Result<QVariantMap> save(const QVariantMap& changes);

    const QString m_file;
    FileSystemProviding& m_fileSystem;
    mutable std::once_flag m_isRead;
    mutable std::mutex m_mutex;
    // Guarded by m_mutex, which nobody holds while the disk works.
    mutable QVariantMap m_values; ///< the file's, once read, with the changes applied
    QVariantMap m_unsaved; ///< what no write has taken yet, or a failed one; invalid: removed
    bool m_isWriteWaiting = false;

    bool m_isFailing = false; ///< the worker's: so was the last write
    Worker m_worker;          ///< goes first: its jobs use all the rest
};

} // namespace brivane
