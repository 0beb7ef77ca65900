// How long the listing of a scan as administrator takes to be understood and merged, and what it
// costs in memory.
//
//   bench_privileged [LINES]
//
// Lines as the helper prints them, a hundred to a folder, come in pieces of 64 KiB. Once all of
// them are new, and once the tree knows all but one in twenty. Beside it: the same lines through
// the general parser of JSON.

#include "core/LineQueue.h"
#include "platform/ProcessMemory.h"
#include "scanner/privileged/TreeMerger.h"

#include <QByteArrayList>
#include <QJsonDocument>
#include <QJsonObject>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <thread>

#include <malloc.h>

using namespace brivane;

namespace {

constexpr int filesInAFolder = 100;

/// Seconds that this thread has computed: what prints the lines costs more than what reads them.
double secondsOfThread()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double megabytes()
{
    return static_cast<double>(residentMemory().value_or(0)) / 1048576;
}

QByteArray line(const QByteArray& parent, const QByteArray& name, int size, bool isDirectory)
{
    return "{\"path\":\"" + parent + '/' + name + "\",\"name\":\"" + name +
           "\",\"size\":" + QByteArray::number(size) +
           ",\"isDir\":" + (isDirectory ? "true" : "false") + ",\"parentPath\":\"" + parent +
           "\"}\n";
}

/// What the helper prints for folders `from`, `from` + `step`, ... below `count`.
void print(LineQueue& queue, int from, int count, int step)
{
    QByteArray piece;
    for (int folder = from; folder < count; folder += step) {
        const QByteArray name = "a folder of some length " + QByteArray::number(folder);
        const QByteArray path = "/Users/robin/Library/" + name;
        piece += line("/Users/robin/Library", name, 0, true);
        for (int file = 1; file < filesInAFolder; ++file)
            piece += line(path, "file " + QByteArray::number(file), file * 7, false);
        if (piece.size() > 65536)
            queue.append(std::exchange(piece, {}));
    }
    queue.append(piece);
    queue.close();
}

void run(const char* title, FileTree& tree, int folders, int step)
{
    ::malloc_trim(0);
    const double before = megabytes();
    const double start = secondsOfThread();
    TreeMerger merger(tree.waitToBuild());
    AdminHelperScript::EntryDecoder decoder;
    LineQueue queue;
    std::thread helper([&] { print(queue, 0, folders, step); });
    queue.forEachLine([&](std::string_view text) {
        if (const AdminHelperScript::ScanEntry* entry = decoder.decode(text))
            merger.take(*entry);
    });
    helper.join();
    const double taken = secondsOfThread() - start;
    const double peak = megabytes();
    const auto mergeStart = std::chrono::steady_clock::now();
    merger.merge();
    const std::chrono::duration<double> merging = std::chrono::steady_clock::now() - mergeStart;
    std::printf("%-28s %8lld new  %5.2f s  merge %5.2f s  %6.1f MB more, the tree has %5.1f MB\n",
                title, static_cast<long long>(merger.takenCount()), taken, merging.count(),
                peak - before, static_cast<double>(tree.memoryUse()) / 1048576);
}

void parseGenerally(int folders)
{
    LineQueue queue;
    std::thread helper([&] { print(queue, 0, folders, 1); });
    const double start = secondsOfThread();
    qint64 total = 0;
    queue.forEachLine([&](std::string_view text) {
        const auto bytes =
            QByteArray::fromRawData(text.data(), static_cast<qsizetype>(text.size()));
        total += QJsonDocument::fromJson(bytes).object()[QLatin1StringView("size")].toInteger();
    });
    const double taken = secondsOfThread() - start;
    helper.join();
    std::printf("%-28s %14s%5.2f s  (sum %lld)\n", "general parser, no merge", "", taken,
                static_cast<long long>(total));
}

} // namespace

int main(int count, char** arguments)
{
    const int lines = count > 1 ? std::atoi(arguments[1]) : 1'000'000;
    const int folders = lines / filesInAFolder;
    {
        const auto tree = FileTree::create("/Users/robin/Library");
        run("all new", *tree, folders, 1);
    }
    const auto tree = FileTree::create("/Users/robin/Library");
    for (int part = 1; part < 20; ++part) {
        TreeMerger merger(tree->waitToBuild());
        AdminHelperScript::EntryDecoder decoder;
        LineQueue queue;
        print(queue, part, folders, 20);
        queue.forEachLine([&](std::string_view text) { merger.take(*decoder.decode(text)); });
        merger.merge();
    }
    run("one in twenty new", *tree, folders, 1);
    parseGenerally(folders);
    return 0;
}
