// Prints how many paths a second the safety rules rate on one core. The paths are of the kinds that
// a cleaner and a scanner bring: most lie deep in a home directory, where the most rules are tried.
// Once for a home directory as most have it, once for one that is reached through a link, in which
// every path has two names.

#include "platform/Locations.h"
#include "removal/SafetyChecker.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>

using namespace brivane;
using namespace Qt::StringLiterals;

namespace {

/// Millions of calls of `rate` a second, each path of `paths` many times.
template<typename Rate>
double measure(const QStringList& paths, Rate rate)
{
    constexpr int rounds = 100;
    qsizetype notHarmless = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int round = 0; round < rounds; ++round) {
        for (const QString& path : paths)
            notHarmless += rate(path) ? 1 : 0;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    std::printf("(%lld hits) ", static_cast<long long>(notHarmless / rounds));
    return static_cast<double>(paths.size()) * rounds / elapsed.count() / 1e6;
}

void measureHome(const QString& home)
{
    const QStringList patterns = {
        home + u"/Movies/2024/Summer at the sea/clip %1.mov"_s,
        home + u"/Library/Caches/com.example.browser/Cache.db/entry-%1"_s,
        home + u"/Library/Application Support/Example/Profiles/%1/History"_s,
        home + u"/Library/Containers/com.example.notes/Data/Documents/%1.txt"_s,
        home + u"/.ssh/id_%1"_s,
        home + u"/Projects/brivane/build/../src/part %1/file.cpp"_s,
        u"/Applications/Example %1.app/Contents/Resources/icon.icns"_s,
        u"/Library/Caches/com.example.updater/%1"_s,
        u"/System/Library/Frameworks/Example%1.framework/Versions/A"_s,
        u"/private/var/folders/ab/cdefghijkl/T/com.example.%1"_s,
        u"/tmp/example-%1/output.log"_s,
        u"/opt/homebrew/Cellar/example/%1.0/bin/example"_s,
    };
    QStringList paths;
    for (const QString& pattern : patterns) {
        for (int number = 0; number < 1000; ++number)
            paths += pattern.arg(number);
    }
    const SafetyChecker checker(Locations::asWritten(home));
    const double checks = measure(paths, [&](const QString& path) {
        return checker.check(path).which != SafetyChecker::SafetyLevel::Case::safe;
    });
    std::printf("check:         %.2f million paths a second\n", checks);
    const double gates =
        measure(paths, [&](const QString& path) { return checker.isCleanerSafe(path); });
    std::printf("isCleanerSafe: %.2f million paths a second\n", gates);
}

} // namespace

int main()
{
    measureHome(u"/Users/somebody"_s);
    const QTemporaryDir folder;
    const QString link = folder.filePath(u"somebody"_s);
    const QString real = folder.filePath(u"data/homes/somebody"_s);
    if (!folder.isValid() || !QDir().mkpath(real) || !QFile::link(real, link))
        return 1;
    std::puts("With the home directory behind a link:");
    measureHome(link);
    return 0;
}
