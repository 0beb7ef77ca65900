#include "sandbox/NastyTree.h"
#include "scanner/DiskScanner.h"
#include "scanner/privileged/PrivilegedMachine.h"

#include <QRegularExpression>

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
    QStringList steps;
    QObject::connect(m_scanner.get(), &PrivilegedScanner::progressChanged,
                     [&] { steps += m_scanner->progress(); });
    const LogCapture capture;
    const FileNodePtr seen = scan(PathText::fromBytes(path) + u"//"_s);
    const FactsByPath expected = factsOf(walked.get());
    EXPECT_EQ(differenceOf(factsOf(seen.get()), expected), "");
    EXPECT_TRUE(seen->isSorted());
    EXPECT_EQ(m_scanner->filesFound(), qint64(expected.size()) - 1);
    EXPECT_EQ(steps, QStringList({u"Preparing admin scan..."_s, u"Compiling scanner..."_s,
                                  u"Requesting administrator privileges..."_s,
                                  u"Building file tree..."_s}));
    const QString log =
        u"scanner: Admin scan started: .*//\nscanner: Admin scan complete: %1 files, "
        u"[0-9.]+s\nperformance: Admin scan rate: [0-9]+ files/s"_s;
    const QString lines = linesOf(capture).join(u'\n');
    EXPECT_TRUE(
        QRegularExpression(QRegularExpression::anchoredPattern(log.arg(expected.size() - 1)))
            .match(lines)
            .hasMatch())
        << lines.toStdString();
    unlockNastyTree(path);
}

TEST_F(PrivilegedScannerTest, GapsAreFilledInTheTreeThatIsThere)
{
    m_machine.file(u"/data/known", SandboxMachine::Size{99}); // has grown since
    m_machine.file(u"/data/secret/deep/er", SandboxMachine::Size{500});
    m_machine.file(u"/data/secret/new", SandboxMachine::Size{20});
    const FileNodePtr root = partialTree();
    FileNode* const secret = root->children().at(0);
    EXPECT_EQ(scan(m_machine.path(u"/data"), root), root);
    EXPECT_EQ(root->children().at(0), secret);
    EXPECT_EQ(root->size(), 531U);
    EXPECT_EQ(root->fileCount(), 3);
    EXPECT_EQ(m_scanner->filesFound(), 3);
    EXPECT_FALSE(root->isIncomplete() || secret->isUnreadable());
    EXPECT_EQ(root->tree().issueCount(), 0U);
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
        {{}, {.error = "User canceled", .status = 255}, refused},
        {{},
         {.output = some, .error = "b\xC3\xB6se\n", .status = 2},
         u"Admin scan failed: böse\n"_s},
        {{}, {.error = "\xFF", .status = 1}, u"Admin scan failed: Unknown error"_s},
        {{}, {.output = some, .status = 1}, u"Admin scan failed: "_s},
    };
    for (const Row& row : rows) {
        useAnswers(swiftc).answer(row.compile);
        useAnswers(osascript).answer(row.run);
        const LogCapture capture;
        EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)), row.text);
        EXPECT_FALSE(m_scanner->isRunning());
        EXPECT_EQ(temporaryFiles(), QStringList());
        EXPECT_EQ(root->childCount(), 2U);
        const bool isLogged = row.text.startsWith(u"Admin scan failed");
        ASSERT_EQ(capture.lines().size(), isLogged ? 2U : 1U);
        EXPECT_EQ(capture.lines().back().text == row.text, isLogged);
    }
    for (const QString& command : {osascript, swiftc}) {
        ::unlink(PathText::toBytes(m_machine.path(command)).constData());
        EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)),
                  u"'%1' could not be started: No such file or directory"_s.arg(command));
    }
    EXPECT_EQ(root->size(), 11U);
    EXPECT_TRUE(root->isIncomplete());
}

TEST_F(PrivilegedScannerTest, ABrokenLineCostsThatLineOnly)
{
    useAnswers(swiftc).answer({});
    const QString path = m_machine.path(u"/data");
    const QByteArray bytes = PathText::toBytes(path);
    const QByteArray whole = line(bytes, "a", 1, false);
    useAnswers(osascript).answer({.output = whole.first(whole.size() - 3) + "\n\nnoise\n" +
                                            line(bytes, "b", 2, false) + "\xFF\n" +
                                            line(bytes, "c", 4, true) +
                                            line(bytes + "/c", "d", 8, false).trimmed()});
    const FileNodePtr root = scan(path);
    EXPECT_EQ(m_scanner->filesFound(), 3);
    EXPECT_EQ(root->size(), 10U);
}

TEST_F(PrivilegedScannerTest, ACancelEndsEveryStepAndTheNextScanSucceeds)
{
    enum Step { AtOnce, Compiling, Prompt, Output, AfterOutput, Last };
    const QByteArray gate = PathText::toBytes(m_machine.path(u"/gate"));
    ASSERT_EQ(::mkfifo(gate.constData(), 0600), 0);
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
            if (step == AfterOutput)
                useScript(osascript, "cat '" + gate + "'");
            FileDescriptor opened;
            QCoro::Task<FileNodePtr> task = m_scanner->scanAsAdmin(root->path(), root);
            EXPECT_TRUE(m_scanner->isRunning());
            if (step == AtOnce) {
                EXPECT_EQ(failure(m_scanner->scanAsAdmin(root->path(), root)),
                          u"Admin scan is already running."_s);
            }
            ASSERT_TRUE(waitUntil([&] {
                if (step == AtOnce || step == Compiling)
                    return step == AtOnce || compiler.calls().size() > compilations;
                if (step != AfterOutput)
                    return script.calls().size() > scripts;
                opened = FileDescriptor(::open(gate.constData(), O_WRONLY | O_NONBLOCK));
                return opened.isValid();
            }));
            if (step == AfterOutput) {
                // Without the event loop: the scanner does not hear of the end before the cancel.
                ASSERT_EQ(::write(opened.get(), some.constData(), std::size_t(some.size())),
                          some.size());
                opened.close();
                ASSERT_TRUE(waitForNoChildren());
            }
            if (isDestroyed)
                m_scanner.reset();
            else
                m_scanner->cancel();
            const QString text = failure(std::move(task));
            const bool isByScript = !isDestroyed && (step == Prompt || step == Output);
            EXPECT_EQ(text, isByScript ? u"Admin scan failed: "_s : u"Admin scan was cancelled."_s)
                << step;
            EXPECT_EQ(script.calls().size() > scripts, step == Prompt || step == Output);
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

TEST_F(PrivilegedScannerTest, TheHelperEndsWithTheStatusThatItsCallersKnow)
{
    const std::pair<QStringList, int> rows[] = {{{}, 2}, {{u""_s}, 1}, {{u"/nowhere"_s}, 0}};
    for (const auto& [arguments, status] : rows) {
        RecordedProcess run(PathText::fromBytes(helper()), arguments);
        ASSERT_TRUE(run.runs());
        EXPECT_EQ(run.status(), status);
        EXPECT_EQ(run.output, QByteArray());
        const char* const texts[] = {"__SCAN_COMPLETE__0\n", "", "Usage: helper <path>\n"};
        EXPECT_EQ(run.error, texts[status]);
    }
}
