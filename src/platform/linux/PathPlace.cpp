#include "platform/linux/PathPlace.h"

#include "platform/FileWriting.h"
#include "platform/PathText.h"
#include "platform/linux/TrustedLink.h"

#include <QList>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr char temporaryPrefix[] = ".brivane-temporary-";

} // namespace

QString makeTemporaryName()
{
    return QString::fromLatin1(posix::temporaryName());
}

bool isTemporaryName(const QString& name)
{
    return name.startsWith(QLatin1StringView(temporaryPrefix)) && !name.contains(u'/');
}

namespace posix {

int splitPath(const QString& path, std::vector<QByteArray>& components)
{
    const QByteArray bytes = PathText::toBytes(path);
    if (!bytes.startsWith('/') || bytes.contains('\0'))
        return EINVAL;
    if (PathText::fromBytes(bytes) != path)
        return EILSEQ;
    for (const QByteArray& component : bytes.split('/')) {
        if (component == "." || component == "..")
            return EINVAL;
        if (!component.isEmpty())
            components.push_back(component);
    }
    return 0;
}

namespace {

constexpr int maximumLinks = 40; // as the kernel's

int stepOnce(int folder, const char* name, bool follow, FileDescriptor& opened)
{
    const int noFollow = follow ? 0 : O_NOFOLLOW;
    const int descriptor = uninterrupted(
        [&] { return ::openat(folder, name, O_PATH | O_DIRECTORY | O_CLOEXEC | noFollow); });
    if (descriptor < 0)
        return errno;
    opened = FileDescriptor(descriptor);
    return 0;
}

/// Goes by the links that may be trusted, in the steps in which the kernel would go.
int stepByTrustedLinks(int folder, const char* name, FileDescriptor& opened)
{
    std::vector<QByteArray> pending = {name}; // the next one is the last
    FileDescriptor reached;
    for (int links = 0; !pending.empty();) {
        const QByteArray step = std::move(pending.back());
        pending.pop_back();
        const int base = reached.isValid() ? reached.get() : folder;
        int code = stepOnce(base, step.constData(), false, reached);
        if (code == 0)
            continue;
        if (code != ENOTDIR)
            return code;
        QByteArray target;
        code = readTrustedLink(base, step.constData(), target);
        if (code == 0 && ++links > maximumLinks)
            code = ELOOP;
        if (code == 0 && target.startsWith('/'))
            code = stepOnce(AT_FDCWD, "/", false, reached);
        if (code != 0)
            return code;
        const QList<QByteArray> steps = target.split('/');
        std::copy_if(steps.rbegin(), steps.rend(), std::back_inserter(pending),
                     [](const QByteArray& component) { return !component.isEmpty(); });
    }
    opened = std::move(reached);
    return 0;
}

} // namespace

int stepInto(int folder, const char* name, ParentLinks links, FileDescriptor& opened)
{
    if (links == ParentLinks::Trusted)
        return stepByTrustedLinks(folder, name, opened);
    return stepOnce(folder, name, links == ParentLinks::Follow, opened);
}

Result<PathPlace> PathPlace::find(const QString& path, FileOperation operation, ParentLinks links)
{
    std::vector<QByteArray> components;
    int code = splitPath(path, components);
    if (code == 0 && components.empty())
        code = EINVAL;
    PathPlace place;
    place.m_path = path;
    if (code == 0)
        code = stepInto(AT_FDCWD, "/", links, place.m_folder);
    for (std::size_t i = 0; code == 0 && i + 1 < components.size(); ++i)
        code = stepInto(place.m_folder.get(), components[i].constData(), links, place.m_folder);
    if (code != 0)
        return place.error(code, operation);
    place.m_name = components.back();
    return place;
}

int PathPlace::readStatus(FileStatus& status) const
{
    FileStatus holder;
    int code = posix::readStatus(folder(), holder);
    if (code == 0)
        code = posix::readStatus(folder(), name(), status);
    if (code == 0)
        status.identity.folder = {holder.identity.device, holder.identity.inode};
    return code;
}

QByteArray temporaryName()
{
    return temporaryPrefix + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

} // namespace posix

} // namespace brivane
