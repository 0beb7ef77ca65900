#include "platform/linux/SoftwarePlaces.h"

#include "platform/Locations.h"
#include "platform/PathText.h"

#include <cerrno>
#include <filesystem>

// GLib's headers have names that are Qt's keywords elsewhere; they stand alone here.
#include <glib.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

void addOnce(QStringList& list, const QString& path)
{
    if (path.startsWith(u'/') && !list.contains(path))
        list += path;
}

/// The folders in a variable such as PATH, spelled without what listFolder() refuses.
void addFoldersOf(QStringList& list, const char* variable)
{
    const QList<QByteArray> folders = qgetenv(variable).split(':');
    for (const QByteArray& folder : folders) {
        const auto plain = std::filesystem::path(folder.toStdString()).lexically_normal();
        QString path = PathText::fromBytes(plain.native());
        while (path.endsWith(u'/'))
            path.chop(1);
        addOnce(list, path);
    }
}

} // namespace

SoftwarePlaces SoftwarePlaces::of(const Locations& desktop, const QString& root)
{
    SoftwarePlaces places;
    places.home = desktop.home();
    places.root = root;
    const QString data = desktop.path(u"~/Library/Application Support");
    places.flatpaks = QStringList{data + u"/flatpak"_s, places.system(u"/var/lib/flatpak")};
    addFoldersOf(places.flatpaks, "FLATPAK_USER_DIR");

    places.data += data;
    addFoldersOf(places.data, "XDG_DATA_DIRS");
    // Whatever the variable leaves out is installed all the same.
    for (const QStringView folder : {u"/usr/local/share", u"/usr/share", u"/var/lib/snapd/desktop"})
        addOnce(places.data, places.system(folder));
    for (const QString& flatpak : std::as_const(places.flatpaks))
        addOnce(places.data, flatpak + u"/exports/share"_s);

    addFoldersOf(places.programs, "PATH");
    for (const QStringView folder : {u"/.local/bin", u"/bin", u"/.cargo/bin", u"/go/bin"})
        addOnce(places.programs, places.home % folder);
    for (const QStringView folder :
         {u"/usr/local/bin", u"/usr/bin", u"/bin", u"/usr/local/games", u"/usr/games",
          u"/usr/local/sbin", u"/usr/sbin", u"/sbin", u"/snap/bin"})
        addOnce(places.programs, places.system(folder));

    for (const char* const* name = g_get_language_names(); *name != nullptr; ++name)
        places.languages += QString::fromUtf8(*name);
    return places;
}

bool isMissing(const FileError& error)
{
    return error.code == ENOENT || error.code == ENOTDIR || error.code == EACCES ||
           error.code == ELOOP;
}

} // namespace brivane
