#include "platform/UserFolders.h"

#include "platform/FileReading.h"
#include "platform/LiesIn.h"
#include "platform/PathText.h"

#include <algorithm>
#include <filesystem>
#include <optional>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr qsizetype largestFile = 64 << 10;

constexpr struct {
    QByteArrayView name;
    QString UserFolders::*folder;
} entries[] = {
    {"XDG_DESKTOP_DIR", &UserFolders::desktop},
    {"XDG_DOCUMENTS_DIR", &UserFolders::documents},
    {"XDG_DOWNLOAD_DIR", &UserFolders::downloads},
    {"XDG_MUSIC_DIR", &UserFolders::music},
    {"XDG_PICTURES_DIR", &UserFolders::pictures},
    {"XDG_SCREENSHOTS_DIR", &UserFolders::screenshots},
    {"XDG_VIDEOS_DIR", &UserFolders::videos},
};

/// What stands between the quotes that `text` begins with; a backslash takes the meaning from what
/// follows it. None when they do not end, or hold what no path holds.
std::optional<QByteArray> unquoted(QByteArrayView text)
{
    QByteArray content;
    for (qsizetype i = 1; i < text.size() && text[0] == '"'; ++i) {
        if (text[i] == '"')
            return content;
        if (text[i] == '\\' && ++i == text.size())
            break;
        if (text[i] == '\0')
            break;
        content += text[i];
    }
    return {};
}

/// The path that `value` stands for, from a slash on or from the home directory.
std::optional<QString> pathOf(QByteArrayView value, const QString& home)
{
    const bool isInHome = value.startsWith("\"$HOME/") || value.startsWith("\"$HOME\"");
    const auto content = unquoted(value);
    if (!content || !(isInHome || content->startsWith('/')))
        return {};
    const QByteArray path = isInHome ? PathText::toBytes(home) + content->sliced(5) : *content;
    const std::filesystem::path plain(path.toStdString());
    QString text = PathText::fromBytes(plain.lexically_normal().native());
    while (text.size() > 1 && text.endsWith(u'/'))
        text.chop(1);
    return text;
}

} // namespace

UserFolders parseUserFolders(QByteArrayView content, const QString& home, const QString& realHome)
{
    UserFolders folders;
    for (qsizetype at = 0; at < content.size();) {
        qsizetype end = content.indexOf('\n', at);
        if (end < 0)
            end = content.size();
        const QByteArrayView line = content.sliced(at, end - at);
        at = end + 1;
        const qsizetype equals = line.indexOf('=');
        if (equals < 0)
            continue;
        const auto* const entry =
            std::ranges::find_if(entries, [name = line.first(equals).trimmed()](const auto& one) {
                return one.name == name;
            });
        if (entry == std::end(entries))
            continue;
        const auto path = pathOf(line.sliced(equals + 1).trimmed(), home);
        if (path)
            folders.*entry->folder = liesIn(home, *path) || liesIn(realHome, *path) ? u""_s : *path;
    }
    return folders;
}

UserFolders readUserFolders(const QString& configuration, const QString& home,
                            const QString& realHome)
{
    const auto content = readWholeFile(configuration + u"/user-dirs.dirs"_s, largestFile);
    return content ? parseUserFolders(*content, home, realHome) : UserFolders();
}

} // namespace brivane
