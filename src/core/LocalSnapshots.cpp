#include "core/LocalSnapshots.h"

#include "core/Command.h"

#include <QCoroFuture>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

constexpr QLatin1StringView namePrefix = "com.apple.TimeMachine."_L1;
constexpr qsizetype dateField = 3; // of those between the dots of a name

/// Without the blanks and tabs around it.
QStringView trimmed(QStringView line)
{
    const auto isBlank = [](QChar sign) { return sign == u' ' || sign == u'\t'; };
    while (!line.isEmpty() && isBlank(line.front()))
        line = line.sliced(1);
    while (!line.isEmpty() && isBlank(line.back()))
        line.chop(1);
    return line;
}

} // namespace

LocalSnapshots::SnapshotError::SnapshotError(const QString& command, const QString& output)
    : CommandError(command, output)
    , m_what(errorDescription().toUtf8())
{
}

QString LocalSnapshots::SnapshotError::errorDescription() const
{
    return u"Command "_s + CommandError::errorDescription();
}

QCoro::Task<QString> LocalSnapshots::runCommand(Locations locations, QString executable,
                                                QStringList arguments)
{
    Command command(locations.path(executable), arguments);
    command.mergeErrorIntoOutput();
    const QFuture<CommandEnd> ending = command.start();
    const CommandEnd end = co_await ending;

    end.throwIfNotStarted(executable);
    const QString output = QString::fromUtf8(end.output);
    if (!end.isSuccess())
        throw SnapshotError(executable, output);
    co_return output;
}

QList<SnapshotInfo> LocalSnapshots::parseSnapshots(const QString& output)
{
    QList<SnapshotInfo> snapshots;
    for (const QStringView part : QStringView(output).split(u'\n')) {
        const QStringView line = trimmed(part);
        if (!line.startsWith(namePrefix))
            continue;
        const QList<QStringView> fields = line.split(u'.');
        if (fields.size() <= dateField)
            continue;
        const QDateTime date =
            QDateTime::fromString(fields[dateField].toString(), u"yyyy-MM-dd-HHmmss"_s);
        if (!date.isValid())
            continue;
        snapshots += {.name = line.toString(), .date = date, .size = {}, .volumeName = u"/"_s};
    }
    std::ranges::stable_sort(snapshots, std::ranges::greater(), &SnapshotInfo::date);
    return snapshots;
}

QCoro::Task<bool> LocalSnapshots::exist(Locations locations)
{
    const QString executable = u"/usr/bin/tmutil"_s;
    const QStringList arguments{u"listlocalsnapshots"_s, u"/"_s};
    bool areThere = false;
    try {
        QCoro::Task<QString> running = runCommand(locations, executable, arguments);
        const QString output = co_await running;
        areThere = !parseSnapshots(output).isEmpty();
    } catch (const std::exception&) { // then there is nothing to be said of them
        areThere = false;
    }
    co_return areThere;
}

} // namespace brivane
