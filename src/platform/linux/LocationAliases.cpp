#include "platform/LocationAliases.h"

#include "platform/PathText.h"

#include <QStringBuilder>

#include <iterator>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// User folders last, and alone there.
enum class Base {
    Cache,
    Config,
    Data,
    Home,
    Libexec,
    Media,
    Root,
    Desktop,
    Documents,
    Downloads,
    Music,
    Pictures,
    Videos,
};

struct Row {
    QStringView cataloguePath;
    Base base;
    QStringView rest;
};

// A place that commands or screens only read or run may have a rough equivalent; a place that
// something is removed from must be the same thing under another name.
constexpr Row table[] = {
    {u"/Library/Application Support/com.apple.TCC", Base::Data, u""},
    {u"/Volumes", Base::Media, u""},
    {u"/opt/homebrew", Base::Root, u"/home/linuxbrew/.linuxbrew"},
    {u"/usr/bin/osascript", Base::Libexec, u"/osascript"},
    {u"/usr/bin/swiftc", Base::Libexec, u"/swiftc"},
    {u"~/.Trash", Base::Data, u"/Trash/files"},
    {u"~/Desktop", Base::Desktop, u""},
    {u"~/Documents", Base::Documents, u""},
    {u"~/Downloads", Base::Downloads, u""},
    {u"~/Library/Application Support", Base::Data, u""},
    {u"~/Library/Application Support/Code", Base::Config, u"/Code"},
    {u"~/Library/Application Support/Code - Insiders", Base::Config, u"/Code - Insiders"},
    {u"~/Library/Application Support/Code - OSS", Base::Config, u"/Code - OSS"},
    {u"~/Library/Application Support/Cursor", Base::Config, u"/Cursor"},
    {u"~/Library/Application Support/Google/Chrome", Base::Config, u"/google-chrome"},
    {u"~/Library/Application Support/VSCodium", Base::Config, u"/VSCodium"},
    {u"~/Library/Application Support/Windsurf", Base::Config, u"/Windsurf"},
    {u"~/Library/Caches", Base::Cache, u""},
    {u"~/Library/Caches/Firefox", Base::Cache, u"/mozilla/firefox"},
    {u"~/Library/Caches/Google/Chrome", Base::Cache, u"/google-chrome"},
    {u"~/Library/Caches/Microsoft Edge", Base::Cache, u"/microsoft-edge"},
    {u"~/Library/Caches/Yarn", Base::Cache, u"/yarn"},
    {u"~/Library/Caches/com.operasoftware.Opera", Base::Cache, u"/opera"},
    {u"~/Library/Containers/com.docker.docker", Base::Home, u"/.docker"},
    {u"~/Library/Containers/com.docker.docker/Data", Base::Home, u"/.docker/desktop"},
    {u"~/Library/Cookies", Base::Data, u"/epiphany/cookies"},
    {u"~/Library/Keychains", Base::Data, u"/keyrings"},
    {u"~/Library/Messages", Base::Data, u"/dino"},
    {u"~/Library/Preferences", Base::Config, u""},
    {u"~/Library/Preferences/com.brivane.app.plist", Base::Config,
     u"/brivane/com.brivane.app.plist"},
    {u"~/Library/Safari", Base::Data, u"/epiphany"},
    {u"~/Library/pnpm", Base::Data, u"/pnpm"},
    {u"~/Movies", Base::Videos, u""},
    {u"~/Music", Base::Music, u""},
    {u"~/Pictures", Base::Pictures, u""},
};

/// Where removable drives of this user are mounted.
QString mediaDirectory(const QString& home)
{
    return u"/media/"_s + PathText::lastComponent(home);
}

/// Empty for the root, and for a user folder that there is none of.
QString directoryOf(Base base, const AliasBases& bases)
{
    switch (base) {
    case Base::Cache:
        return bases.cache;
    case Base::Config:
        return bases.config;
    case Base::Data:
        return bases.data;
    case Base::Home:
        return bases.home;
    case Base::Libexec:
        return libexecDirectory();
    case Base::Media:
        return mediaDirectory(bases.home);
    case Base::Root:
        break;
    case Base::Desktop:
        return bases.user.desktop;
    case Base::Documents:
        return bases.user.documents;
    case Base::Downloads:
        return bases.user.downloads;
    case Base::Music:
        return bases.user.music;
    case Base::Pictures:
        return bases.user.pictures;
    case Base::Videos:
        return bases.user.videos;
    }
    return {};
}

} // namespace

std::vector<ResolvedAlias> resolvedAliases(const AliasBases& bases)
{
    std::vector<ResolvedAlias> aliases;
    aliases.reserve(std::size(table));
    for (const Row& row : table) {
        const QString target = directoryOf(row.base, bases) % row.rest;
        if (!target.isEmpty())
            aliases.push_back({row.cataloguePath, target, row.base >= Base::Desktop});
    }
    return aliases;
}

QString libexecDirectory()
{
    QByteArray executable(4096, '\0');
    const ssize_t length =
        ::readlink("/proc/self/exe", executable.data(), static_cast<size_t>(executable.size()));
    if (length > 0 && length < executable.size()) {
        executable.truncate(length);
        const QByteArray folder = executable.first(executable.lastIndexOf('/'));
        const QByteArray beside =
            folder.first(std::max<qsizetype>(folder.lastIndexOf('/'), 0)) + "/libexec/brivane";
        if (::access((beside + "/osascript").constData(), X_OK) == 0)
            return PathText::fromBytes(beside);
    }
    return QStringLiteral(BRIVANE_LIBEXEC_DIRECTORY);
}

} // namespace brivane
