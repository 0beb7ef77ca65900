#include "app/MenuModel.h"

#include "app/KeyboardMap.h"
#include "app/MenuCommands.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace brivane {

namespace {

const MenuCommand& commandAt(int row)
{
    return menuCommands()[static_cast<std::size_t>(row)];
}

bool isInKeyboardMap(const QKeySequence& keys)
{
    const QKeyEvent press(QEvent::KeyPress, keys[0].key(), keys[0].keyboardModifiers());
    return keyboardCommand(press) != nullptr;
}

} // namespace

int MenuModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(menuCommands().size());
}

QVariant MenuModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const MenuCommand& command = commandAt(index.row());
    const QKeySequence keys(command.keys);
    switch (role) {
    case Qt::DisplayRole:
    case TitleRole:
        return command.title;
    case HeadingRole: {
        const bool isFirst = index.row() == 0 || commandAt(index.row() - 1).menu != command.menu;
        return isFirst ? command.menu : QString();
    }
    case KeysRole:
        return keys.toString(QKeySequence::NativeText);
    case ShortcutRole:
        return isInKeyboardMap(keys) ? QString() : command.keys;
    case NotificationRole:
        return command.notification;
    default:
        return {};
    }
}

QHash<int, QByteArray> MenuModel::roleNames() const
{
    return {
        {TitleRole, "title"},       {HeadingRole, "heading"},           {KeysRole, "keys"},
        {ShortcutRole, "shortcut"}, {NotificationRole, "notification"},
    };
}

} // namespace brivane
