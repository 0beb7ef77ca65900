// How things come into the quarantine.

#include "platform/PathText.h"
#include "removal/QuarantineProcessing.h"

#include <QCoroFuture>

using namespace Qt::StringLiterals;

namespace brivane {

QuarantineItem QuarantineService::makeItem(const QString& originalPath,
                                           const QString& quarantinePath, quint64 size,
                                           const QString& categoryName) const
{
    return {
        .id = QUuid::createUuid(),
        .originalPath = originalPath,
        .quarantinePath = quarantinePath,
        .size = size,
        .quarantineDate = m_host.clock.now(),
        .categoryName = categoryName,
        .fileName = PathText::lastComponent(originalPath),
    };
}

QCoro::Task<QuarantineService::HandOver> QuarantineService::quarantine(QStringList paths,
                                                                       QString categoryName)
{
    std::vector<QuarantineCandidate> candidates;
    candidates.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString& path : paths)
        candidates.push_back({path});
    return quarantine(std::move(candidates), std::move(categoryName));
}

QCoro::Task<QuarantineService::HandOver>
QuarantineService::quarantine(std::vector<QuarantineCandidate> candidates, QString categoryName)
{
    using QuarantineMoves::MovePlan;
    using Moves = std::vector<QuarantineMoves::PlannedMove>;
    const QPointer<QuarantineService> self(this);
    const Processing processing(this);
    HandOver result;
    QCoro::Task<bool> trying = makeWritable();
    const bool isWritable = co_await trying;
    if (!self)
        co_return result;
    const QFuture<MovePlan> planning =
        m_planner.run([candidates = std::move(candidates), folder = m_quarantineDir,
                       home = m_host.locations.home()] {
            return QuarantineMoves::planMoves(candidates, folder, home);
        });
    const MovePlan plan = co_await planning;
    const Moves& moves = plan.moves;
    for (const Kept& kept : plan.leftOut)
        result.reasons.insert(kept.handedOverAs, kept.error.reason());
    if (!self)
        co_return result;

    const Locations locations = m_host.locations; // for after this is gone
    const int handOver = m_handOvers++;
    QString refusal = m_readOnlyReason;
    if (!moves.empty() && isWritable) {
        QList<QuarantineItem>& announced = m_announced[handOver];
        for (const auto& move : moves)
            announced += makeItem(move.originalPath, move.quarantinePath, move.size, categoryName);
        const QFuture<Result<>> recording = save();
        const Result<> recorded = co_await recording;
        if (!self)
            co_return result;
        if (!recorded)
            refusal = u"The quarantine's list cannot be written: "_s + recorded.error().reason();
    }
    // Where there is a store, and it may not be used, nothing is moved. Where there is none, there
    // is the Trash.
    const auto use =
        m_hasFolder ? QuarantineMoves::StoreUse::Allowed : QuarantineMoves::StoreUse::TrashOnly;
    const bool isHeldBack = m_hasFolder && !refusal.isEmpty();
    const QFuture<MoveReport> moving = m_intake.run(
        [moves = isHeldBack ? Moves() : moves, journal = m_journal, &fileSystem = m_host.fileSystem,
         use] { return QuarantineMoves::moveToQuarantine(moves, *journal, fileSystem, use); });
    const MoveReport report = co_await moving;
    for (const Kept& kept : report.kept)
        result.reasons.insert(kept.handedOverAs, kept.error.reason());
    if (isHeldBack) {
        for (const auto& move : moves)
            result.reasons.insert(move.handedOverAs, refusal);
    }
    for (const MoveOutcome& outcome : report.outcomes) {
        if (outcome.leftBehind)
            continue;
        ++result.moved;
        result.size += outcome.size;
        result.movedPaths.insert(outcome.handedOverAs);
    }
    if (isHeldBack && !moves.empty())
        result.refusal = refusal;
    else if (report.obstacle)
        result.refusal = refusal.isEmpty() ? report.obstacle->text(locations) : refusal;
    if (!self)
        co_return result;

    QList<QuarantineItem> stored;
    for (const MoveOutcome& outcome : report.outcomes) {
        if (outcome.quarantinePath)
            stored +=
                makeItem(outcome.originalPath, *outcome.quarantinePath, outcome.size, categoryName);
    }
    m_announced.erase(handOver);
    m_items.append(stored);
    const QFuture<Result<>> saving = save();
    QString text = resultText(u"Quarantined"_s, result.moved, result.size);
    if (!result.refusal.isEmpty())
        text += u". The rest stays where it is: "_s + result.refusal;
    setLastResult(text);
    co_await saving;
    co_return result;
}

} // namespace brivane
