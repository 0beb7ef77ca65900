#pragma once

#include "platform/Worker.h"
#include "removal/QuarantineManifest.h"

#include <QCoroTask>
#include <QFuture>
#include <QObject>
#include <QPromise>

#include <functional>
#include <memory>

namespace brivane {

/// Writes the list of what is in quarantine, off the GUI thread and in the order in which it
/// changed.
///
/// While one write is under way, all who ask for another share one: it takes the list as it stands
/// when it begins. So however fast items come and go, the disk is never behind by more than one
/// write, and thousands of changes do not cost thousands of lists. GUI thread.
class ManifestSaver : public QObject {
public:
    using List = std::function<QList<QuarantineItem>()>;

    /// `list` gives what is to be written. Nobody else uses `manifest` from now on.
    ManifestSaver(QuarantineManifest manifest, List list);
    /// Waits for the write that is under way; one that waits behind it is not made.
    ~ManifestSaver() override;

    /// Ends when the list of this moment, or a later one, has been written, or could not be, and
    /// then says why.
    QFuture<Result<>> save();
    /// The same for the save that was asked for last.
    [[nodiscard]] QFuture<Result<>> lastSave() const { return m_last; }

private:
    QCoro::Task<> write();

    const std::shared_ptr<QuarantineManifest> m_manifest; ///< m_writer's
    const List m_list;
    std::shared_ptr<QPromise<Result<>>> m_current; ///< of the write under way; null for none
    std::shared_ptr<QPromise<Result<>>> m_next;    ///< null when none waits
    QFuture<Result<>> m_last = QtFuture::makeReadyFuture(Result<>());
    Worker m_writer{QStringLiteral("quarantine list")};
};

} // namespace brivane
