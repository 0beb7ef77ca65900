#include "platform/LocationAliases.h"

#include "platform/PathText.h"

#include <QStringBuilder>

#include <iterator>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

enum class Base { Cache, Config, Data, Libexec, Media };

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
    {u"/usr/bin/osascript", Base::Libexec, u"/osascript"},
    {u"/usr/bin/swiftc", Base::Libexec, u"/swiftc"},
    {u"~/.Trash", Base::Data, u"/Trash/files"},
    {u"~/Library/Application Support", Base::Data, u""},
    {u"~/Library/Caches", Base::Cache, u""},
    {u"~/Library/Cookies", Base::Data, u"/epiphany/cookies"},
    {u"~/Library/Messages", Base::Data, u"/dino"},
    {u"~/Library/Preferences", Base::Config, u""},
    {u"~/Library/Preferences/com.brivane.app.plist", Base::Config,
     u"/brivane/com.brivane.app.plist"},
    {u"~/Library/Safari", Base::Data, u"/epiphany"},
};

/// Where removable drives of this user are mounted.
QString mediaDirectory(const QString& home)
{
    return u"/media/"_s + PathText::lastComponent(home);
}

} // namespace

std::vector<ResolvedAlias> resolvedAliases(const AliasBases& bases)
{
    const QString libexec = libexecDirectory();
    std::vector<ResolvedAlias> aliases;
    aliases.reserve(std::size(table));
    for (const Row& row : table) {
        QString target;
        switch (row.base) {
        case Base::Cache:
            target = bases.cache;
            break;
        case Base::Config:
            target = bases.config;
            break;
        case Base::Data:
            target = bases.data;
            break;
        case Base::Libexec:
            target = libexec;
            break;
        case Base::Media:
            target = mediaDirectory(bases.home);
            break;
        }
        aliases.push_back({row.cataloguePath, target % row.rest});
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
