#pragma once

#include "platform/FileDescriptor.h"
#include "platform/Host.h"
#include "platform/LocationAliases.h"
#include "platform/PathText.h"
#include "platform/Volumes.h"
#include "sandbox/SandboxMachine.h"
#include "scanner/FileNodes.h"
#include "scanner/privileged/AdminHelperScript.h"
#include "scanner/privileged/PrivilegedScanner.h"
#include "support/AwaitTask.h"
#include "support/ChildProcesses.h"
#include "support/FileTestSupport.h"
#include "support/RecordedProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brivane::testing {

/// A machine with the two commands of a scan as administrator, and a scanner on it.
///
/// The script command is the program's own stand-in, run without asking for rights. The compiler
/// hands out a helper that the real one has made once.
class PrivilegedScanTest : public ::testing::Test {
protected:
    using AdminScanError = PrivilegedScanner::AdminScanError;

    PrivilegedScanTest()
    {
        m_machine.directory(QStringLiteral("/data"));
        useScript(QStringLiteral("/usr/bin/swiftc"),
                  "[ $# = 4 ] && [ \"$1 $2\" = '-O -o' ] && [ -f \"$4\" ] && cp '" + helper() +
                      "' \"$3\"");
        useScript(QStringLiteral("/usr/bin/osascript"),
                  "exec '" + PathText::toBytes(libexecDirectory()) +
                      "/osascript' \"$1\" \"${2% with administrator privileges}\"");
        m_scanner = std::make_unique<PrivilegedScanner>(m_owned.host());
    }

    void TearDown() override
    {
        EXPECT_TRUE(waitForNoChildren());
        EXPECT_EQ(temporaryFiles(), QStringList());
    }

    void useScript(const QString& command, const QByteArray& script) const
    {
        ::unlink(PathText::toBytes(m_machine.path(command)).constData());
        m_machine.file(command, "#!/bin/sh\n" + script + '\n');
        m_machine.setMode(command, 0755);
    }

    /// A recording command that answers as it is told from now on, in place of the script.
    SandboxCommand useAnswers(const QString& command) const
    {
        ::unlink(PathText::toBytes(m_machine.path(command)));
        SandboxCommand recording = m_machine.command(command);
        recording.forgetAnswers();
        return recording;
    }

    FileNodePtr scan(const QString& path, const FileNodePtr& existingRoot = {})
    {
        return awaitTask(m_scanner->scanAsAdmin(path, existingRoot));
    }

    /// The text of the error by which a scan fails; empty when there is none.
    static QString failure(QCoro::Task<FileNodePtr> task)
    {
        try {
            awaitTask(std::move(task));
        } catch (const std::exception& error) {
            return QString::fromUtf8(error.what());
        }
        return {};
    }

    [[nodiscard]] QString temporary() const { return m_machine.locations().temporaryDirectory(); }

    [[nodiscard]] QStringList temporaryFiles() const { return namesIn(temporary()); }

    /// The helper, compiled by the real stand-in for the compiler.
    static QByteArray helper()
    {
        static const SandboxMachine machine = SandboxMachine::temporary();
        static const QString binary = [] {
            const QString source = machine.file(u"/helper.swift", AdminHelperScript::sourceText());
            const QString made = machine.path(u"/helper");
            EXPECT_EQ(statusOf(libexecDirectory() + QStringLiteral("/swiftc"),
                               {QStringLiteral("-O"), QStringLiteral("-o"), made, source}),
                      0);
            return made;
        }();
        return PathText::toBytes(binary);
    }

    LogCapture m_log;
    SandboxMachine m_machine = SandboxMachine::temporary();
    OwnedHost m_owned{m_machine.locations()};
    std::unique_ptr<PrivilegedScanner> m_scanner;
};

} // namespace brivane::testing
