#include "platform/linux/PathPlace.h"

#include "platform/FileWriting.h"
#include "platform/PathText.h"

#include <QList>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr char temporaryPrefix[] = ".brivane-temporary-";

} // namespace

bool isTemporaryName(const QString& name)
{
    return name.startsWith(QLatin1StringView(temporaryPrefix));
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

int stepInto(int folder, const char* name, ParentLinks links, FileDescriptor& opened)
{
    const int noFollow = links == ParentLinks::Refuse ? O_NOFOLLOW : 0;
    const int descriptor = uninterrupted(
        [&] { return ::openat(folder, name, O_PATH | O_DIRECTORY | O_CLOEXEC | noFollow); });
    if (descriptor < 0)
        return errno;
    opened = FileDescriptor(descriptor);
    return 0;
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
