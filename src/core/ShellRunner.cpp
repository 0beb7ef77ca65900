#include "core/ShellRunner.h"

#include "core/Command.h"

#include <QCoroFuture>
#include <QStringDecoder>

#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

QString decoded(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::Stateless |
                                                     QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return decoder.hasError() ? QString() : text;
}

} // namespace

ShellRunner::CommandError::CommandError(QString command, QString output)
    : m_command(std::move(command))
    , m_output(std::move(output))
    , m_what(errorDescription().toUtf8())
{
}

QString ShellRunner::CommandError::errorDescription() const
{
    return u"'"_s + m_command + u"' failed: "_s + m_output;
}

QCoro::Task<QString> ShellRunner::run(Locations locations, QString executable,
                                      QStringList arguments)
{
    Command command(locations.path(executable), arguments);
    const QFuture<CommandEnd> ending = command.start();
    const CommandEnd end = co_await ending;

    end.throwIfNotStarted(executable);
    if (end.isTooLong)
        throw CommandError(executable, u"It printed more than can be read."_s);
    const QString output = decoded(end.output);
    if (end.isSuccess())
        co_return output;
    const QString error = decoded(end.error);
    const QString diagnostic = error.isEmpty() ? output : error;
    throw CommandError(executable, diagnostic.trimmed());
}

QString ShellRunner::adminScript(QString command)
{
    command.replace(u'\\', u"\\\\"_s); // before the quotes, whose escapes must stay single
    command.replace(u'"', u"\\\""_s);
    return u"do shell script \""_s + command + u"\" with administrator privileges"_s;
}

QCoro::Task<QString> ShellRunner::runAsAdmin(Locations locations, QString command)
{
    const QString executable = u"/usr/bin/osascript"_s;
    const QStringList arguments = {u"-e"_s, adminScript(command)};
    QCoro::Task<QString> running = run(locations, executable, arguments);
    const QString output = co_await running;
    co_return output;
}

} // namespace brivane
