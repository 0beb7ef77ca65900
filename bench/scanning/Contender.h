#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brivane::bench {

/// One way to go through a tree, run as a process of its own so that its memory is its own.
struct Contender {
    std::string name;
    /// Runs in the child and ends it with the status that it returns.
    std::function<int()> body;
    bool isPeer = false; ///< a tool that people use, for the ratio with the fastest
    std::vector<double> seconds{};
    long peakKiB = 0;
};

/// A contender that runs the command `arguments`, output thrown away; none if it is not installed.
std::optional<Contender> command(const std::string& name, std::vector<std::string> arguments);

/// Runs `contender` once and takes down time and memory. Returns whether it ended well.
bool runOnce(Contender& contender);

double median(std::vector<double> values);

} // namespace brivane::bench
