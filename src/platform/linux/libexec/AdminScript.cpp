#include "platform/linux/libexec/AdminScript.h"

namespace brivane::AdminScript {

std::optional<ShellCommand> parse(std::string_view script)
{
    constexpr std::string_view opening = "do shell script \"";
    constexpr std::string_view privileges = " with administrator privileges";
    if (!script.starts_with(opening))
        return {};
    script.remove_prefix(opening.size());
    ShellCommand command;
    size_t at = 0;
    for (; at < script.size() && script[at] != '"'; ++at) {
        if (script[at] != '\\') {
            command.line += script[at];
            continue;
        }
        switch (++at < script.size() ? script[at] : '\0') {
        case '\\':
        case '"':
            command.line += script[at];
            break;
        case 'n':
            command.line += '\n';
            break;
        case 'r':
            command.line += '\r';
            break;
        case 't':
            command.line += '\t';
            break;
        default:
            return {};
        }
    }
    if (at >= script.size())
        return {};
    const std::string_view rest = script.substr(at + 1);
    command.needsAdministrator = rest == privileges;
    return rest.empty() || command.needsAdministrator ? std::optional(command) : std::nullopt;
}

std::string failureMessage(int status, std::string_view diagnostics, Elevation elevation)
{
    while (!diagnostics.empty() && (diagnostics.back() == '\n' || diagnostics.back() == ' '))
        diagnostics.remove_suffix(1);
    // The command may end with 126 as well; then it, or its shell, has said why.
    const bool isDismissed =
        elevation == Elevation::Pkexec && status == 126 &&
        (diagnostics.empty() || diagnostics.find("dismissed") != std::string_view::npos);
    if (isDismissed)
        return "execution error: User canceled. (-128)";
    if (diagnostics.empty())
        diagnostics = "The command exited with a non-zero status.";
    return "execution error: " + std::string(diagnostics) + " (" + std::to_string(status) + ")";
}

} // namespace brivane::AdminScript
