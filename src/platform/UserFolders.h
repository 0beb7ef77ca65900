#pragma once

#include <QByteArrayView>
#include <QString>

// The folders that a desktop gives a user for documents, downloads and the like, and that it names
// in the user's own language.
namespace brivane {

/// Where they lie: absolute, no slash at the end; empty for what the desktop has none of, or does
/// not tell.
struct UserFolders {
    QString desktop = {};
    QString documents = {};
    QString downloads = {};
    QString music = {};
    QString pictures = {};
    QString videos = {};
    QString screenshots = {};
};

/// What `content`, that of a file "user-dirs.dirs", says for the home directory `home`. A line that
/// is no entry is passed over. An entry that leads to the home directory, by this name of it or by
/// `realHome`, says that there is no such folder; one that leads above it is taken for the same,
/// since a folder of the user's holds no homes. Pure; any content.
[[nodiscard]] UserFolders parseUserFolders(QByteArrayView content, const QString& home,
                                           const QString& realHome);

/// The same of the file in the folder `configuration`; nothing when that cannot be read or is too
/// large to be one. Blocks for one small read, and never waits for a writer.
[[nodiscard]] UserFolders readUserFolders(const QString& configuration, const QString& home,
                                          const QString& realHome);

} // namespace brivane
