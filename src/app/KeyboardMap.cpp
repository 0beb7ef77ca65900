#include "app/KeyboardMap.h"

#include <QKeyEvent>

#include <algorithm>

namespace brivane {

namespace {

constexpr KeyboardCommand commands[] = {
    {Qt::Key_0, AppMode::dashboard},    {Qt::Key_1, AppMode::scanner},
    {Qt::Key_2, AppMode::cleaner},      {Qt::Key_3, AppMode::uninstaller},
    {Qt::Key_4, AppMode::duplicates},   {Qt::Key_5, AppMode::quarantine},
    {Qt::Key_Comma, AppMode::settings}, {Qt::Key_R, std::nullopt},
};

} // namespace

const KeyboardCommand* keyboardCommand(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    if (!modifiers.testFlag(Qt::ControlModifier))
        return nullptr;
    // Shift is in the key already where it makes another character, but for letters.
    if (event.key() == Qt::Key_R && modifiers.testFlag(Qt::ShiftModifier))
        return nullptr;
    const auto* found = std::ranges::find(commands, event.key(), &KeyboardCommand::key);
    return found != std::ranges::end(commands) ? found : nullptr;
}

} // namespace brivane
