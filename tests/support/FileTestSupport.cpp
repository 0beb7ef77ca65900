#include "FileTestSupport.h"

#include "sandbox/ClearFolder.h"

#include <QCryptographicHash>
#include <QList>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
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
    constexpr int most = 4096;
    QByteArray names(most, '\0');
    names.truncate(::llistxattr(path, names.data(), most));
    QList<QByteArray> all;
    for (const QByteArray& name : names.split('\0')) {
        QByteArray value(most, '\0');
        value.truncate(::lgetxattr(path, name.constData(), value.data(), most));
        all += name + '=' + value.toHex();
    }
    std::ranges::sort(all);
    return all.join(' ');
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

bool hasPassed(int status)
{
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

TestFolder::TestFolder()
    : TestFolder(makeTemporaryFolder())
{
}

TestFolder::~TestFolder()
{
    if (!m_path.isEmpty())
        clearFolder(m_path);
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

mode_t modeOf(const QByteArray& path)
{
    struct stat status = {};
    EXPECT_EQ(::lstat(path.constData(), &status), 0) << path.constData();
    return status.st_mode & 07777;
}

void makeFolders(const TestFolder& folder, std::initializer_list<const char*> names)
{
    for (const char* name : names)
        EXPECT_EQ(::mkdir(folder / name, 0755), 0) << name;
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

QStringList namesIn(const QString& folder)
{
    QStringList names;
    const std::filesystem::path path = PathText::toBytes(folder).toStdString();
    for (const auto& entry : std::filesystem::directory_iterator(path))
        names += PathText::fromBytes(QByteArray::fromStdString(entry.path().filename().native()));
    names.sort();
    return names;
}

void forEachByFts(const QByteArray& path, int options,
                  const std::function<void(const FTSENT&)>& visit)
{
    QByteArray start = path;
    char* const starts[] = {start.data(), nullptr};
    FTS* const walk = ::fts_open(starts, FTS_PHYSICAL | FTS_NOCHDIR | options, nullptr);
    while (const FTSENT* entry = ::fts_read(walk))
        visit(*entry);
    ::fts_close(walk);
}

Snapshot snapshot(const QByteArray& path)
{
    Snapshot all;
    forEachByFts(path, 0, [&](const FTSENT& entry) {
        if (entry.fts_info != FTS_DP && entry.fts_info != FTS_NS)
            all[QByteArray(entry.fts_path).mid(path.size())] = describe(entry.fts_path);
    });
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

int statusOfChild(const std::function<void()>& body)
{
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

bool passesUnprivileged(const std::function<void()>& body)
{
    return hasPassed(statusOfChild([&] {
        constexpr unsigned nobody = 65534;
        if (::geteuid() == 0 &&
            (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0))
            ::_exit(2);
        body();
    }));
}

std::optional<bool> passesWithMount(const QByteArray& source, const QByteArray& target,
                                    const std::function<void()>& body)
{
    constexpr int mayNot = 77;
    const int status = statusOfChild([&] {
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount(source, target, nullptr, MS_BIND, nullptr) != 0)
            ::_exit(mayNot);
        body();
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == mayNot)
        return {};
    return hasPassed(status);
}

} // namespace brivane
