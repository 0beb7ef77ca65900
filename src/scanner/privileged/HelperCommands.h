#pragma once

#include <QString>
#include <QStringList>

// The two commands of the system that a scan as administrator needs, as paths of the catalogue and
// with their arguments. Pure.
namespace brivane::HelperCommands {

struct CommandLine {
    QString executable;
    QStringList arguments;
};

/// Makes the program `binary` of the text in `source`.
[[nodiscard]] CommandLine compile(const QString& source, const QString& binary);

/// Runs `binary` as administrator on the tree at `path`, after the system has asked the user.
[[nodiscard]] CommandLine runAsAdmin(const QString& binary, const QString& path);

} // namespace brivane::HelperCommands
