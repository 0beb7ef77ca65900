#pragma once

#include <QString>
#include <QStringView>

namespace brivane {

enum class LogLevel {
    Info,    ///< progress
    Default, ///< something refused or cancelled
    Error,   ///< a failed script or removal
};

/// Hands one line to the log of the system, or to standard error where there is none. Any thread;
/// never fails, never waits for a reader.
void writeToSystemLog(QStringView subsystem, QStringView category, LogLevel level,
                      QStringView text);

} // namespace brivane
