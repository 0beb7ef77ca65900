#define G_LOG_DOMAIN "brivane"

#include "platform/SystemLog.h"

#include "platform/PathText.h"

#include <array>
#include <cstdio>

#include <glib.h>

namespace brivane {

namespace {

const char* nameOf(LogLevel level)
{
    switch (level) {
    case LogLevel::Info:
        return "info";
    case LogLevel::Default:
        return "default";
    case LogLevel::Error:
        break;
    }
    return "error";
}

/// The priorities of syslog: informational, notice, error.
const char* priorityOf(LogLevel level)
{
    switch (level) {
    case LogLevel::Info:
        return "6";
    case LogLevel::Default:
        return "5";
    case LogLevel::Error:
        break;
    }
    return "3";
}

} // namespace

void writeToSystemLog(QStringView subsystem, QStringView category, LogLevel level, QStringView text)
{
    const QByteArray subsystemBytes = subsystem.toUtf8();
    const QByteArray categoryBytes = category.toUtf8();
    const QByteArray message = PathText::toBytes(text);
    const auto field = [](const char* key, const QByteArray& value) {
        return GLogField{key, value.constData(), value.size()};
    };
    const std::array fields = {
        field("MESSAGE", message),
        GLogField{"PRIORITY", priorityOf(level), -1},
        GLogField{"SYSLOG_IDENTIFIER", "brivane", -1},
        field("BRIVANE_SUBSYSTEM", subsystemBytes),
        field("BRIVANE_CATEGORY", categoryBytes),
        GLogField{"BRIVANE_LEVEL", nameOf(level), -1},
    };
    if (g_log_writer_journald(G_LOG_LEVEL_MESSAGE, fields.data(), fields.size(), nullptr) ==
        G_LOG_WRITER_HANDLED)
        return;
    // A terminal obeys control characters, so a name in the text must not bring any.
    const QByteArray shown = PathText::forDisplay(text).toUtf8();
    std::fprintf(stderr, "%s %s %s: %s\n", subsystemBytes.constData(), categoryBytes.constData(),
                 nameOf(level), shown.constData());
}

} // namespace brivane
