#include "removal/StoreBoundary.h"

#include "platform/PathText.h"
#include "removal/StoreNames.h"

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// `path` without links on the way and at the end; as it is, where that cannot be found out. Empty
/// for "/", so that a component can be put behind it.
QString resolved(const QString& path)
{
    std::error_code failure;
    const std::filesystem::path real =
        std::filesystem::canonical(PathText::toBytes(path).toStdString(), failure);
    if (failure)
        return path;
    return real == "/" ? QString() : PathText::fromBytes(real.native());
}

bool isPlainlySpelled(const QString& path)
{
    if (!path.startsWith(u'/') || path.size() < 2)
        return false;
    const QList<QStringView> components = QStringView(path).sliced(1).split(u'/');
    return std::ranges::none_of(components, [](QStringView component) {
        return component.isEmpty() || component == u"." || component == u"..";
    });
}

bool isOrLeadsTo(const QString& path, const QString& place)
{
    return place == path || place.startsWith(path + u'/');
}

} // namespace

StoreBoundary::StoreBoundary(const QString& quarantineDir, const QString& home)
    : m_dir(quarantineDir)
    , m_realDir(resolved(quarantineDir))
    , m_home(home)
    , m_realHome(resolved(home))
{
}

std::optional<QString> StoreBoundary::accepted(const QString& path) const
{
    if (!isPlainlySpelled(path) || isForbidden(path))
        return {};
    // The object itself may be a link, which is then what goes; the way to it is looked through.
    const qsizetype slash = path.lastIndexOf(u'/');
    const QString real = slash > 0 ? resolved(path.first(slash)) + path.sliced(slash) : path;
    return isForbidden(real) ? std::nullopt : std::optional(real);
}

bool StoreBoundary::isStored(const QString& path, const QString& quarantineDir)
{
    if (!path.startsWith(quarantineDir + u'/'))
        return false;
    const QString name = path.sliced(quarantineDir.size() + 1);
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/') &&
           !StoreNames::isOwn(name);
}

bool StoreBoundary::isForbidden(const QString& path) const
{
    for (const QString* place : {&m_dir, &m_realDir, &m_home, &m_realHome}) {
        if (isOrLeadsTo(path, *place))
            return true;
    }
    return isOrLeadsTo(m_dir, path) || isOrLeadsTo(m_realDir, path);
}

} // namespace brivane
