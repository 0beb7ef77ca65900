// Stands in for a command of a sandbox machine: records the arguments it is called with and does
// what SandboxCommand.h was told. Plain POSIX, so that a call costs as little as the real
// command's.
//
// It is called through a link at the command's place, FOLDER/Macintosh HD/usr/bin/tmutil, and finds
// its instructions in FOLDER/commands/Macintosh HD/usr/bin/tmutil:
//   calls/TIME-PROCESS     one for each call: the arguments, each followed by a NUL
//   rules/NUMBER/          tried in the order of their numbers
//     when                 leading arguments that the call must have, in the same form
//     uses/                when there is such a folder, each call takes one file of it, and the
//     rule
//                          is over when there are none
//     output, error        what goes to standard output and error
//     settings             exit status, delay and linger in milliseconds

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <sys/auxv.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

struct Answer {
    std::string output;
    std::string error;
    int status = 0;
    long delay = 0;
    long linger = 0;
};

std::string content(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> sortedEntries(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        entries.push_back(entry.path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

/// The folder of instructions of the command that was called at `place`, empty if there is none.
fs::path instructions(const fs::path& place)
{
    for (fs::path above = place.parent_path(); above.has_relative_path();
         above = above.parent_path()) {
        fs::path folder = above / "commands" / place.lexically_relative(above);
        if (fs::is_directory(folder))
            return folder;
    }
    return {};
}

/// Gives the record its name only when it is complete: a reader sees whole records.
bool record(const fs::path& calls, const std::string& arguments)
{
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    char unfinished[64]; // the name with a dot before it
    std::snprintf(unfinished, sizeof unfinished, ".%012lld.%09ld-%d",
                  static_cast<long long>(now.tv_sec), now.tv_nsec, static_cast<int>(::getpid()));
    std::ofstream stream(calls / unfinished, std::ios::binary);
    stream << arguments;
    stream.close();
    std::error_code error;
    fs::rename(calls / unfinished, calls / (unfinished + 1), error);
    return stream.good() && !error;
}

/// Takes one use of the rule. Of several processes that try for the last one, one gets it.
bool takeUse(const fs::path& rule)
{
    const fs::path uses = rule / "uses";
    if (!fs::is_directory(uses))
        return true;
    const std::vector<fs::path> left = sortedEntries(uses);
    return std::any_of(left.begin(), left.end(),
                       [](const fs::path& use) { return ::unlink(use.c_str()) == 0; });
}

Answer answerTo(const fs::path& rules, const std::string& arguments)
{
    for (const fs::path& rule : sortedEntries(rules)) {
        if (rule.filename().native().front() == '.' ||
            !arguments.starts_with(content(rule / "when")))
            continue;
        if (!takeUse(rule))
            continue;
        Answer answer{content(rule / "output"), content(rule / "error")};
        std::ifstream(rule / "settings") >> answer.status >> answer.delay >> answer.linger;
        return answer;
    }
    return {};
}

void writeAll(int descriptor, const std::string& bytes)
{
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t written = ::write(descriptor, bytes.data() + at, bytes.size() - at);
        if (written < 0)
            return;
        at += static_cast<std::size_t>(written);
    }
}

void pause(long milliseconds)
{
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
    while (::nanosleep(&left, &left) != 0)
        continue;
}

} // namespace

int main(int count, char** values)
{
    // The path as it was given to exec: the link, where /proc/self/exe would be this program.
    const unsigned long called = ::getauxval(AT_EXECFN);
    const fs::path place = called == 0 ? "" : reinterpret_cast<const char*>(called);
    const fs::path folder = instructions(fs::absolute(place).lexically_normal());
    if (folder.empty()) {
        std::fprintf(stderr, "%s: stands in for a command of a sandbox machine, and this is none\n",
                     place.c_str());
        return 126;
    }
    std::string arguments;
    for (int i = 1; i < count; ++i)
        arguments.append(values[i]).push_back('\0');
    if (!record(folder / "calls", arguments)) {
        std::fprintf(stderr, "%s: the call cannot be recorded\n", place.c_str());
        return 126;
    }
    const Answer answer = answerTo(folder / "rules", arguments);
    pause(answer.delay);
    writeAll(STDOUT_FILENO, answer.output);
    writeAll(STDERR_FILENO, answer.error);
    pause(answer.linger);
    return answer.status;
}
