#include "FileTestSupport.h"

#include "sandbox/NastyTree.h"

#include <QCryptographicHash>
#include <QList>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <fts.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace brivane {

namespace {

QByteArray makeTemporaryFolder()
{
    QByteArray path = (testing::TempDir() + "brivane-XXXXXX").c_str();
    EXPECT_NE(::mkdtemp(path.data()), nullptr);
    return path;
}

QByteArray extendedAttributes(const char* path)
{
    QByteArray names(4096, '\0');
    names.resize(std::max<ssize_t>(
        0, ::llistxattr(path, names.data(), static_cast<std::size_t>(names.size()))));
    QByteArray all;
    QList<QByteArray> sorted = names.split('\0');
    std::sort(sorted.begin(), sorted.end());
    for (const QByteArray& name : sorted) {
        QByteArray value(4096, '\0');
        value.resize(std::max<ssize_t>(0, ::lgetxattr(path, name.constData(), value.data(),
                                                      static_cast<std::size_t>(value.size()))));
        all += name + '=' + value.toHex() + ' ';
    }
    return all;
}

QByteArray describe(const char* path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(path, &status), 0) << path;
    const auto number = [](auto value) { return QByteArray::number(qlonglong(value)) + ' '; };
    QByteArray line = number(status.st_mode) + number(status.st_uid) + number(status.st_gid) +
                      number(status.st_mtim.tv_sec) + number(status.st_mtim.tv_nsec);
    if (S_ISDIR(status.st_mode))
        return line + extendedAttributes(path);
    line += number(status.st_size) + number(status.st_nlink);
    if (S_ISREG(status.st_mode)) {
        line += QCryptographicHash::hash(readFile(path), QCryptographicHash::Sha1).toHex();
        line += ' ' + extendedAttributes(path);
    } else if (S_ISLNK(status.st_mode)) {
        line += std::filesystem::read_symlink(path).c_str();
    }
    return line;
}

} // namespace

TestFolder::TestFolder()
    : m_path((testing::TempDir() + "brivane-XXXXXX").c_str())
{
    EXPECT_NE(::mkdtemp(m_path.data()), nullptr);
}

TestFolder::~TestFolder()
{
    if (m_path.isEmpty())
        return;
    const pid_t child = ::fork();
    if (child == 0) {
        ::execlp("sh", "sh", "-c", "chmod -R u+rwX -- \"$1\" 2>/dev/null; exec rm -rf -- \"$1\"",
                 "sh", m_path.constData(), nullptr);
        ::_exit(127);
    }
    ::waitpid(child, nullptr, 0);
}

QByteArray makeSpaciousFolder()
{
    const QByteArray path = makeFolderOnOtherDevice(testing::TempDir().c_str());
    return path.isEmpty() ? makeTemporaryFolder() : path;
}

bool stands(const QByteArray& path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0;
}

void writeFile(const QByteArray& path, const QByteArray& content)
{
    std::ofstream file(path.constData(), std::ios::binary | std::ios::trunc);
    file.write(content.constData(), content.size());
    EXPECT_TRUE(file.flush().good()) << path.constData();
}

QByteArray readFile(const QByteArray& path)
{
    std::ifstream file(path.constData(), std::ios::binary);
    EXPECT_TRUE(file.good()) << path.constData();
    std::ostringstream content;
    content << file.rdbuf();
    return QByteArray::fromStdString(content.str());
}

Snapshot snapshot(const QByteArray& path)
{
    QByteArray start = path;
    char* const starts[] = {start.data(), nullptr};
    Snapshot all;
    FTS* const walk = ::fts_open(starts, FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    while (const FTSENT* entry = ::fts_read(walk)) {
        if (entry->fts_info != FTS_DP && entry->fts_info != FTS_NS)
            all[QByteArray(entry->fts_path).mid(path.size())] = describe(entry->fts_path);
    }
    ::fts_close(walk);
    return all;
}

std::string difference(const Snapshot& actual, const Snapshot& expected)
{
    const auto [is, should] =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    std::string text;
    if (is != actual.end())
        text += "is: \"" + (is->first + "\" " + is->second + "\n").toStdString();
    if (should != expected.end())
        text += "should be: \"" + (should->first + "\" " + should->second + "\n").toStdString();
    return text;
}

bool passesUnprivileged(const std::function<void()>& body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr unsigned nobody = 65534;
        if (::geteuid() == 0 && (::setresgid(nobody, nobody, nobody) != 0 ||
                                 ::setresuid(nobody, nobody, nobody) != 0)) {
            ::_exit(2);
        }
        body();
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace brivane
