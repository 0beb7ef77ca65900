#include "Contender.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace brivane::bench {

namespace {

bool isInstalled(const std::string& program)
{
    const std::string test = "command -v " + program + " >/dev/null 2>&1";
    return std::system(test.c_str()) == 0;
}

} // namespace

std::optional<Contender> command(const std::string& name, std::vector<std::string> arguments)
{
    if (!isInstalled(arguments.front()))
        return {};
    const auto body = [arguments = std::move(arguments)]() mutable {
        std::vector<char*> vector;
        for (std::string& argument : arguments)
            vector.push_back(argument.data());
        vector.push_back(nullptr);
        const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        ::dup2(nowhere, STDIN_FILENO);
        ::dup2(nowhere, STDOUT_FILENO);
        ::dup2(nowhere, STDERR_FILENO);
        ::execvp(vector.front(), vector.data());
        return 127;
    };
    return Contender{.name = name, .body = body, .isPeer = true};
}

bool runOnce(Contender& contender)
{
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(contender.body());
    int status = 0;
    struct rusage usage = {};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child)
        return false;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    contender.seconds.push_back(elapsed.count());
    contender.peakKiB = std::max(contender.peakKiB, usage.ru_maxrss);
    return WIFEXITED(status) && WEXITSTATUS(status) != 127;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

} // namespace brivane::bench
