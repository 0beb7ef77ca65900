#include "platform/linux/libexec/AdminScript.h"

#include <gtest/gtest.h>

using namespace brivane::AdminScript;

TEST(AdminScript, OnlyTheOneFormIsUnderstoodAndItsEscapesUndone)
{
    const struct {
        const char* script;
        const char* line; ///< null: not understood
        bool needsAdministrator = false;
    } rows[] = {{R"(do shell script "id")", "id"},
                {R"(do shell script "a\\b \"c\" $d\n" with administrator privileges)",
                 "a\\b \"c\" $d\n", true},
                {R"(do shell script "id" & "more")", nullptr},
                {R"(do shell script "id" with administrator privileges; rm)", nullptr},
                {R"(do shell script "id)", nullptr},
                {R"(do shell script "id\)", nullptr},
                {R"(do shell script "\x")", nullptr},
                {"", nullptr}};
    for (const auto& [script, line, needsAdministrator] : rows) {
        const auto command = parse(script);
        ASSERT_EQ(command.has_value(), line != nullptr) << script;
        EXPECT_TRUE(!command || command->line == line) << script;
        EXPECT_TRUE(!command || command->needsAdministrator == needsAdministrator) << script;
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
