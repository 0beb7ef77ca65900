#include "app/MenuCommands.h"

#include "core/NotificationNames.h"

namespace brivane {

using namespace Qt::StringLiterals;

std::span<const MenuCommand> menuCommands()
{
    static const MenuCommand commands[] = {
        {u"Scan"_s, u"Scan Startup Disk"_s, u"Ctrl+Shift+S"_s, NotificationNames::scanStartupDisk},
        {u"Scan"_s, u"Rescan"_s, u"Ctrl+R"_s, NotificationNames::rescan},
        {u"Navigate"_s, u"Go Up"_s, u"Ctrl+Up"_s, NotificationNames::navigateUp},
        {u"Navigate"_s, u"Go to Root"_s, u"Ctrl+Shift+Up"_s, NotificationNames::navigateRoot},
        {u"Brivane"_s, u"Quit"_s, u"Ctrl+Q"_s, quitNotification},
    };
    return commands;
}

} // namespace brivane
