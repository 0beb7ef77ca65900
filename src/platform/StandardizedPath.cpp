#include "platform/StandardizedPath.h"

#include "platform/PathText.h"

#include <cstdlib>
#include <filesystem>

#include <pwd.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QString withTildeExpanded(const QString& path, const QString& home)
{
    if (!path.startsWith(u'~'))
        return path;
    const qsizetype slash = path.indexOf(u'/');
    const QString user = slash < 0 ? path.sliced(1) : path.sliced(1, slash - 1);
    const QString rest = slash < 0 ? QString() : path.sliced(slash);
    if (user.isEmpty())
        return home + rest;
    const passwd* entry = ::getpwnam(PathText::toBytes(user).constData());
    return entry != nullptr ? PathText::fromBytes(entry->pw_dir) + rest : path;
}

bool isLink(const QString& path)
{
    struct stat facts = {};
    return ::lstat(PathText::toBytes(path).constData(), &facts) == 0 && S_ISLNK(facts.st_mode);
}

QStringList components(const QString& path)
{
    QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
    parts.removeAll(u"."_s);
    return parts;
}

QString absolute(const QStringList& parts)
{
    return u"/"_s + parts.join(u'/');
}

/// `parts` of an absolute path without "..".
QStringList withParentsResolved(const QStringList& parts)
{
    QStringList resolved;
    for (const QString& part : parts) {
        if (part != u".."_s) {
            resolved += part;
            continue;
        }
        if (resolved.isEmpty())
            continue;
        const QString folder = absolute(resolved);
        if (isLink(folder)) {
            char* real = ::realpath(PathText::toBytes(folder).constData(), nullptr);
            if (real != nullptr)
                resolved = components(PathText::fromBytes(real));
            std::free(real);
        }
        if (!resolved.isEmpty())
            resolved.removeLast();
    }
    return resolved;
}

} // namespace

QString standardizedPath(const QString& path, const QString& home)
{
    const QString expanded = withTildeExpanded(path, home);
    QStringList parts = components(expanded);
    if (!expanded.startsWith(u'/'))
        return parts.join(u'/');
    parts = withParentsResolved(parts);
    if (parts.size() > 1 && parts.front() == u"private"_s) {
        const QString shorter = absolute(parts.sliced(1));
        struct stat facts = {};
        if (::lstat(PathText::toBytes(shorter).constData(), &facts) == 0)
            return shorter;
    }
    return absolute(parts);
}

QString withoutLinks(const QString& path)
{
    std::error_code failure;
    const std::filesystem::path real =
        std::filesystem::weakly_canonical(PathText::toBytes(path).toStdString(), failure);
    return failure ? path : PathText::fromBytes(real.native());
}

} // namespace brivane
