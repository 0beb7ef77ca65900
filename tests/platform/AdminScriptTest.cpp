#include "platform/linux/libexec/AdminScript.h"

#include <gtest/gtest.h>

using namespace brivane::AdminScript;

TEST(AdminScript, OnlyTheOneFormIsUnderstoodAndItsEscapesUndone)
{
    struct Row {
        const char* script;
        const char* line; ///< null: not understood
        bool needsAdministrator;
    };
    const Row rows[] = {
        {R"(do shell script "id")", "id", false},
        {R"(do shell script "id" with administrator privileges)", "id", true},
        {R"(do shell script "a\\b \"c\" $d\n" with administrator privileges)", "a\\b \"c\" $d\n",
         true},
        {R"(do shell script "id" & "more")", nullptr, false},
        {R"(do shell script "id" with administrator privileges; rm)", nullptr, false},
        {R"(do shell script "id)", nullptr, false},
        {R"(do shell script "id\)", nullptr, false},
        {R"(do shell script "\x")", nullptr, false},
        {R"(tell application "System Events" to quit)", nullptr, false},
        {"", nullptr, false},
    };
    for (const Row& row : rows) {
        const auto command = parse(row.script);
        ASSERT_EQ(command.has_value(), row.line != nullptr) << row.script;
        if (command) {
            EXPECT_EQ(command->line, row.line);
            EXPECT_EQ(command->needsAdministrator, row.needsAdministrator) << row.script;
        }
    }
}

TEST(AdminScript, OnlyADismissedPromptReadsAsCancelled)
{
    const std::string dismissed = "Error executing command as another user: Request dismissed\n";
    EXPECT_EQ(failureMessage(126, dismissed, Elevation::Pkexec),
              "execution error: User canceled. (-128)");
    EXPECT_EQ(failureMessage(126, "sh: 1: /x: Permission denied\n", Elevation::Pkexec),
              "execution error: sh: 1: /x: Permission denied (126)");
    EXPECT_EQ(failureMessage(126, "", Elevation::None),
              "execution error: The command exited with a non-zero status. (126)");
    EXPECT_EQ(failureMessage(127, "Not authorized", Elevation::Pkexec),
              "execution error: Not authorized (127)");
}
