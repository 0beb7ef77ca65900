#include "scanner/privileged/PrivilegedMachine.h"

#include <filesystem>
#include <fstream>

using namespace brivane;
using namespace brivane::testing;
using namespace Qt::StringLiterals;

namespace {

/// Something that lies where one of the helper's files is going to be.
struct Planted {
    const char* name;
    std::function<void(const char* place, const char* victim)> plant;
};

const Planted allPlanted[] = {
    {"file",
     [](const char* place, const char* victim) {
         std::filesystem::copy_file(victim, place);
         ::chmod(place, 0777);
     }},
    {"symbolic link", [](const char* place, const char* victim) { ::symlink(victim, place); }},
    {"dangling link", [](const char* place, const char*) { ::symlink("/nowhere/at/all", place); }},
    {"hard link", [](const char* place, const char* victim) { ::link(victim, place); }},
    {"folder",
     [](const char* place, const char* victim) {
         ::mkdir(place, 0700);
         ::symlink(victim, (std::string(place) + "/inside").c_str());
     }},
    {"FIFO", [](const char* place, const char*) { ::mkfifo(place, 0700); }},
};

using PrivilegedFilesTest = PrivilegedScanTest;

} // namespace

TEST_F(PrivilegedFilesTest, NothingThatWasPlantedIsUsedOrFollowed)
{
    const QByteArray mark = PathText::toBytes(m_machine.path(u"/mark"));
    const QByteArray script = "#!/bin/sh\n: > '" + mark + "'\n";
    m_machine.file(u"/data/file", SandboxMachine::Size{3});
    for (const char* const file : {"/brivane_admin_helper.swift", "/brivane_admin_helper"}) {
        for (const Planted& planted : allPlanted) {
            const QByteArray victim = PathText::toBytes(m_machine.file(u"/victim", script));
            ASSERT_EQ(::chmod(victim.constData(), 0755), 0);
            const QByteArray place = PathText::toBytes(temporary()) + file;
            planted.plant(place.constData(), victim.constData());
            EXPECT_EQ(scan(m_machine.path(u"/data"))->size(), 3U) << planted.name << file;
            EXPECT_EQ(temporaryFiles(), QStringList()) << planted.name << file;
            struct stat facts = {};
            ASSERT_EQ(::stat(victim.constData(), &facts), 0);
            EXPECT_EQ(facts.st_size, script.size()) << planted.name << file;
            EXPECT_EQ(facts.st_mode & 07777, 0755U);
        }
    }
    EXPECT_NE(::access(mark.constData(), F_OK), 0) << "what was planted has been run";
}

TEST_F(PrivilegedFilesTest, OnlyAPlainFileOfOurOwnIsRunAsRoot)
{
    const QByteArray victim = PathText::toBytes(m_machine.file(u"/victim", "#!/bin/sh\n"));
    const QByteArray copy = "cp '" + helper() + "' \"$3\"; ";
    struct Row {
        QByteArray compiler;
        bool isRun;
    };
    std::vector<Row> rows = {
        {copy + "chmod 0777 \"$3\"", true},
        {"ln -s '" + helper() + "' \"$3\"", false},
        {copy + "ln \"$3\" '" + victim + "2'", false},
        {"mkfifo \"$3\"", false},
        {"mkdir \"$3\"", false},
    };
    if (::geteuid() == 0)
        rows.push_back({copy + "chown 65534 \"$3\"", false});
    // In place of being run, the binary shows the rights that are left to others.
    const QByteArray mode = PathText::toBytes(m_machine.path(u"/mode"));
    useScript(u"/usr/bin/osascript"_s, "stat -c %a '" + PathText::toBytes(temporary()) +
                                           "/brivane_admin_helper' > '" + mode + "'");
    for (const Row& row : rows) {
        ::unlink(mode.constData());
        useScript(u"/usr/bin/swiftc"_s, row.compiler);
        const QString text = failure(m_scanner->scanAsAdmin(m_machine.path(u"/data"), {}));
        EXPECT_EQ(text, row.isRun ? QString() : u"Failed to compile the scanner helper."_s)
            << row.compiler.constData();
        std::string found;
        std::ifstream(mode.toStdString()) >> found;
        EXPECT_EQ(found, row.isRun ? "700" : "") << row.compiler.constData();
        EXPECT_EQ(temporaryFiles(), QStringList());
    }
}

TEST_F(PrivilegedFilesTest, NothingIsWrittenWhereOthersCouldExchangeIt)
{
    const QByteArray folder = PathText::toBytes(m_machine.folder());
    ASSERT_EQ(::chmod(folder.constData(), 0777), 0);
    const QString text = failure(m_scanner->scanAsAdmin(m_machine.path(u"/data"), {}));
    EXPECT_TRUE(text.startsWith(u"Cannot make ") && text.endsWith(u": Permission denied"))
        << text.toStdString();
    EXPECT_FALSE(m_scanner->isRunning());
    ASSERT_EQ(::chmod(folder.constData(), 0700), 0);
}
