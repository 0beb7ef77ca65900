#include "removal/QuarantineFileIcons.h"

#include "removal/tables/FileIcons.h"

#include <algorithm>

namespace brivane {

namespace {

const FileIcon& iconOf(const QString& fileName)
{
    // A dot in front makes a name hidden, and no extension.
    const qsizetype dot = fileName.lastIndexOf(u'.');
    const QString extension = dot > 0 ? fileName.sliced(dot + 1).toLower() : QString();
    if (extension.isEmpty())
        return otherFileIcon;
    const std::u16string_view wanted(reinterpret_cast<const char16_t*>(extension.utf16()),
                                     static_cast<std::size_t>(extension.size()));
    const auto* found = std::ranges::find_if(fileIcons, [&](const FileIcon& icon) {
        return std::ranges::find(icon.extensions, wanted) != icon.extensions.end();
    });
    return found != std::ranges::end(fileIcons) ? *found : otherFileIcon;
}

} // namespace

QString QuarantineFileIcons::symbol(const QString& fileName)
{
    return QStringView(iconOf(fileName).symbol).toString();
}

QColor QuarantineFileIcons::color(const QString& fileName)
{
    return iconOf(fileName).color();
}

} // namespace brivane
