#include "core/ShellRunner.h"

#include "core/DataCollector.h"
#include "platform/ThreadName.h"

#include <QCoroFuture>
#include <QPromise>
#include <QStringDecoder>

#include <system_error>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

/// What became of a run; the one error that is set says what kind of failure it was.
struct Outcome {
    bool hasStarted = false;
    int launchErrorNumber = 0;
    bool isSuccess = false;
    QByteArray output{};
    QByteArray error{};
};

/// One command while it runs. Its handlers keep it alive, and go when it has ended.
struct Run {
    Run(const QString& path, const QStringList& arguments)
        : process(path, arguments)
    {
    }

    Process process;
    DataCollector output;
    DataCollector error;
    QPromise<Outcome> promise;

    void finish(const Outcome& outcome)
    {
        promise.addResult(outcome);
        promise.finish();
    }
};

void start(const std::shared_ptr<Run>& run)
{
    run->process.setOutputHandler([run](QByteArrayView bytes) { run->output.append(bytes); });
    run->process.setErrorHandler([run](QByteArrayView bytes) { run->error.append(bytes); });
    run->process.setTerminationHandler([run](ProcessEnd end) {
        run->finish({.hasStarted = true,
                     .isSuccess = end.isSuccess(),
                     .output = run->output.data(),
                     .error = run->error.data()});
    });
    try {
        run->process.start();
    } catch (const LaunchError& failure) {
        run->finish({.launchErrorNumber = failure.errorNumber()});
    }
}

/// Starting reads the executable from the disk, which the caller's thread must not wait for. Each
/// on a thread of its own, since a start may hang on a volume that is gone, and those of other
/// commands must not stand in line behind it.
void startElsewhere(const std::shared_ptr<Run>& run)
{
    try {
        std::thread([run] {
            nameThisThread(u"starts"_s);
            start(run);
        }).detach();
    } catch (const std::system_error& failure) { // no thread, and so no process either
        run->finish({.launchErrorNumber = failure.code().value()});
    }
}

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
    auto command = std::make_shared<Run>(locations.path(executable), arguments);
    QFuture<Outcome> future = command->promise.future();
    command->promise.start();
    startElsewhere(std::exchange(command, nullptr));
    const Outcome outcome = co_await future;

    if (!outcome.hasStarted)
        throw LaunchError(executable, outcome.launchErrorNumber);
    const QString output = decoded(outcome.output);
    if (outcome.isSuccess)
        co_return output;
    const QString error = decoded(outcome.error);
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
    const QString output = co_await run(locations, executable, arguments);
    co_return output;
}

} // namespace brivane
