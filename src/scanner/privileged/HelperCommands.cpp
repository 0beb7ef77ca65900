#include "scanner/privileged/HelperCommands.h"

#include "core/ShellRunner.h"

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QString shellQuoted(QString text)
{
    text.replace(u'\'', u"'\\''"_s);
    return u'\'' + text + u'\'';
}

} // namespace

HelperCommands::CommandLine HelperCommands::compile(const QString& source, const QString& binary)
{
    return {u"/usr/bin/swiftc"_s, {u"-O"_s, u"-o"_s, binary, source}};
}

HelperCommands::CommandLine HelperCommands::runAsAdmin(const QString& binary, const QString& path)
{
    const QString line = shellQuoted(binary) + u' ' + shellQuoted(path);
    return {u"/usr/bin/osascript"_s, {u"-e"_s, ShellRunner::adminScript(line)}};
}

} // namespace brivane
