#pragma once

#include <optional>
#include <string>
#include <string_view>

// What the osascript stand-in makes of a script and of a failure. Pure functions.
namespace brivane::AdminScript {

struct ShellCommand {
    std::string line;
    bool needsAdministrator = false;
};

/// Understands `do shell script "..."`, with or without `with administrator privileges` after it;
/// none for anything else.
std::optional<ShellCommand> parse(std::string_view script);

enum class Elevation { None, Pkexec };

/// The message for a command that ended with `status`, which is not 0, and printed `diagnostics`. A
/// prompt that the user dismissed reads "User canceled. (-128)".
std::string failureMessage(int status, std::string_view diagnostics, Elevation elevation);

} // namespace brivane::AdminScript
