#pragma once

#include <QString>

#include <span>

// The items of the application menu. Constant data; any thread.
namespace brivane {

struct MenuCommand {
    QString menu;
    QString title;
    QString keys;         ///< portable form of a key sequence
    QString notification; ///< what choosing the item posts
};

/// The notification that ends the program; `main` listens to it.
inline const QString quitNotification = QStringLiteral("quit");

[[nodiscard]] std::span<const MenuCommand> menuCommands();

} // namespace brivane
