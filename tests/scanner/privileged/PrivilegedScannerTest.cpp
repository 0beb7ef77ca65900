#include "sandbox/NastyTree.h"
#include "scanner/DiskScanner.h"
#include "scanner/privileged/PrivilegedMachine.h"

using namespace brivane;
using namespace brivane::testing;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const QString swiftc = u"/usr/bin/swiftc"_s;
const QString osascript = u"/usr/bin/osascript"_s;

QByteArray line(const QByteArray& parent, const QByteArray& name, qint64 size, bool isDirectory)
{
    return "{\"path\":\"" + parent + '/' + name + "\",\"name\":\"" + name +
           "\",\"size\":" + QByteArray::number(size) +
           ",\"isDir\":" + (isDirectory ? "true" : "false") + ",\"parentPath\":\"" + parent +
           "\"}\n";
}

class PrivilegedScannerTest : public PrivilegedScanTest {
protected:
    /// A tree of "/data" as a walk without rights has left it: "secret" could not be read.
    FileNodePtr partialTree()
    {
        const QByteArray path = PathText::toBytes(m_machine.path(u"/data"));
        const auto tree = FileTree::create(path);
        FileNode* secret = addFolder(tree->root(), "secret");
        addFile(tree->root(), "known", 11);
        tree->addIssue(secret, true, {path + "/secret", EACCES});
        tree->root()->recalculateSize();
        return tree->root()->shared();
    }
};

} // namespace

TEST_F(PrivilegedScannerTest, TheHelperSeesTheNastyTreeAsTheWalkDoes)
{
    const QByteArray path = PathText::toBytes(m_machine.path(u"/nasty"));
    buildNastyTree(path, {.levels = 100});
    SystemClock clock;
    const FileNodePtr walked = DiskScanner(clock).scan(PathText::fromBytes(path));
    useScript(swiftc, "exec '" + PathText::toBytes(libexecDirectory()) + "/swiftc' \"$@\"");
    const FileNodePtr seen = scan(PathText::fromBytes(path) + u"//"_s);
    const FactsByPath expected = factsOf(walked.get());
    EXPECT_EQ(differenceOf(factsOf(seen.get()), expected), "");
    EXPECT_TRUE(seen->isSorted());
    EXPECT_EQ(m_scanner->filesFound(), qint64(expected.size()) - 1);
    unlockNastyTree(path);
}

TEST_F(PrivilegedScannerTest, GapsAreFilledInTheTreeThatIsThere)
{
    m_machine.file(u"/data/secret/deep/er", SandboxMachine::Size{520});
    const FileNodePtr root = partialTree();
    EXPECT_EQ(scan(m_machine.path(u"/data"), root), root);
    EXPECT_EQ(root->size(), 531U);
    // A tree of another folder is no place for what is found here.
    const QString other = m_machine.directory(u"/data2");
    EXPECT_EQ(scan(other, root)->path(), other);
    // A folder inside is.
    m_machine.file(u"/data/secret/deep/later", SandboxMachine::Size{7});
    EXPECT_EQ(scan(m_machine.path(u"/data/secret/deep"), root), root);
    EXPECT_EQ(root->size(), 538U);
}

TEST_F(PrivilegedScannerTest, PathsReachTheHelperThroughBothQuotings)
{
    const QByteArray names[] = {"it's",  "'",           "\"double\"", "back\\slash\\n",
                                "\\",    " blanks  ",   "$(id) `id`", "line\nbreak",
                                "tab\t", "invalid\xFF", "-rf",        "caf\xC3\xA9 %s"};
    for (const QByteArray& name : names) {
        const QString folder = u"/data/"_s + PathText::fromBytes(name);
        m_machine.file(folder + u"/file"_s, SandboxMachine::Size{3});
        const FileNodePtr root = scan(m_machine.path(folder));
        EXPECT_EQ(root->path(), m_machine.path(folder));
        EXPECT_EQ(root->size(), 3U) << name.constData();
    }
}

TEST_F(PrivilegedScannerTest, EachFailureHasItsTextAndLeavesTheTreeAlone)
{
    const FileNodePtr root = partialTree();
    const QByteArray path = PathText::toBytes(root->path());
    struct Row {
        CommandAnswer compile;
        CommandAnswer run;
        QString text;
    };
    const QByteArray some = line(path, "part", 5, false);
    const QString refused = u"Administrator authentication was cancelled."_s;
    const Row rows[] = {
        {{.error = "no", .status = 1}, {}, u"Failed to compile the scanner helper."_s},
        {{}, {.error = "execution error: User canceled. (-128)\n", .status = 1}, refused},
        {{}, {.output = some, .error = "it was (-128)", .status = 1}, refused},
        {{},
         {.output = some, .error = "b\xC3\xB6se\n", .status = 2},
         u"Admin scan failed: böse\n"_s},
        {{}, {.error = "\xFF", .status = 1}, u"Admin scan failed: Unknown error"_s},
        {{}, {.output = some, .status = 1}, u"Admin scan failed: "_s},
    };
    for (const Row& row : rows) {
        useAnswers(swiftc).answer(row.compile);
        useAnswers(osascript).answer(row.run);
        EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)), row.text);
        EXPECT_FALSE(m_scanner->isRunning());
        EXPECT_EQ(temporaryFiles(), QStringList());
        EXPECT_EQ(root->childCount(), 2U);
    }
    for (const QString& command : {osascript, swiftc}) {
        ::unlink(PathText::toBytes(m_machine.path(command)).constData());
        EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)),
                  u"'%1' could not be started: No such file or directory"_s.arg(command));
    }
    EXPECT_EQ(root->size(), 11U);
    EXPECT_TRUE(root->isIncomplete());
}

TEST_F(PrivilegedScannerTest, ACancelEndsEveryStepAndTheNextScanSucceeds)
{
    enum Step { AtOnce, Compiling, Prompt, Output, Last };
    const FileNodePtr root = partialTree();
    const QByteArray path = PathText::toBytes(root->path());
    const QByteArray some = line(path, "part", 5, false);
    for (const bool isDestroyed : {false, true}) {
        for (int step = AtOnce; step < Last; ++step) {
            SandboxCommand compiler = useAnswers(swiftc);
            SandboxCommand script = useAnswers(osascript);
            const qsizetype compilations = compiler.calls().size();
            const qsizetype scripts = script.calls().size();
            compiler.answer({.delay = step == Compiling ? 60s : 0s});
            script.answer({.output = some,
                           .delay = step == Prompt ? 60s : 0s,
                           .linger = step == Output ? 60s : 0s});
            QCoro::Task<FileNodePtr> task = m_scanner->scanAsAdmin(root->path(), root);
            EXPECT_TRUE(m_scanner->isRunning());
            if (step == AtOnce) {
                EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)),
                          u"Admin scan is already running."_s);
            }
            ASSERT_TRUE(waitUntil([&] {
                if (step == AtOnce || step == Compiling)
                    return step == AtOnce || compiler.calls().size() > compilations;
                return script.calls().size() > scripts;
            }));
            if (isDestroyed)
                m_scanner.reset();
            else
                m_scanner->cancel();
            const QString text = failure(std::move(task));
            const bool isByScript = !isDestroyed && (step == Prompt || step == Output);
            EXPECT_EQ(text, isByScript ? u"Admin scan failed: "_s : u"Admin scan was cancelled."_s)
                << step;
            EXPECT_TRUE(waitForNoChildren());
            EXPECT_EQ(temporaryFiles(), QStringList());
            EXPECT_EQ(root->childCount(), 2U);
            EXPECT_EQ(root->tree().nodeCount(), 3U);
            if (isDestroyed)
                m_scanner = std::make_unique<PrivilegedScanner>(m_owned.host());
            EXPECT_FALSE(m_scanner->isRunning());
        }
    }
    useAnswers(osascript);
    useAnswers(swiftc);
    EXPECT_EQ(scan(root->path(), root), root);
}
