#include "removal/StoreBoundary.h"

#include "platform/LiesIn.h"
#include "platform/PathText.h"
#include "removal/StoreNames.h"

#include <algorithm>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// `path` without links on the way and at the end; as it is, where that cannot be found out.
QString resolved(const QString& path)
{
    std::error_code failure;
    const std::filesystem::path real =
        std::filesystem::canonical(PathText::toBytes(path).toStdString(), failure);
    return failure ? path : PathText::fromBytes(real.native());
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
    QString real = slash > 0 ? resolved(path.first(slash)) : QString();
    if (real == u"/"_s)
        real.clear();
    real += path.sliced(slash);
    return isForbidden(real) ? std::nullopt : std::optional(real);
}

bool StoreBoundary::isStored(const QString& path, const QString& quarantineDir)
{
    if (!liesIn(path, quarantineDir) || path.size() == quarantineDir.size())
        return false;
    const QString name = path.sliced(quarantineDir.size() + 1);
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/') &&
           !StoreNames::isOwn(name);
}

bool StoreBoundary::isForbidden(const QString& path) const
{
    for (const QString* place : {&m_dir, &m_realDir, &m_home, &m_realHome}) {
        if (liesIn(*place, path))
            return true;
    }
    return liesIn(path, m_dir) || liesIn(path, m_realDir);
}

} // namespace brivane
