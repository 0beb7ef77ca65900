#pragma once

#include "cleaner/CleanFailureModel.h"
#include "cleaner/CleanerService.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <utility>
#include <vector>

namespace brivane {

/// Which way a removal goes.
enum class CleanRoute {
    quarantine, ///< from where it can be put back; frees nothing yet
    permanent,
};

/// How full a disk was before something was removed, and how full it is.
struct DiskSpaceChange {
    double before = 0.8; ///< fraction that is taken; these where nothing is known of the disk
    double after = 0.7;

    /// Of a disk as it is now, all in bytes: how it was before is told from what was freed.
    static DiskSpaceChange of(quint64 total, quint64 free, quint64 freedBytes);

    /// "71%", without the decimals.
    [[nodiscard]] static QString percent(double fraction);
    /// "↓ 2.5%"
    [[nodiscard]] QString dropText() const;
};

/// Bytes by category, in the order of the categories.
using CategorySizes = std::vector<std::pair<QString, quint64>>;

/// What the dialog after a clean-up says. GUI thread.
class CleanResultViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("CleanerViewModel has it")
    Q_PROPERTY(QString cleanedText READ cleanedText CONSTANT)
    Q_PROPERTY(QString freedText READ freedText CONSTANT)
    /// Empty when nothing failed.
    Q_PROPERTY(QString failedText READ failedText CONSTANT)
    /// See CleanFailureModel.
    Q_PROPERTY(QAbstractItemModel* failures READ failures CONSTANT)
    /// What else there is to know of the numbers; each empty where there is nothing.
    Q_PROPERTY(QString stoppedText READ stoppedText CONSTANT)
    Q_PROPERTY(QString alongsideText READ alongsideText CONSTANT)
    Q_PROPERTY(bool hasDiskSpace READ hasDiskSpace NOTIFY diskSpaceChanged)
    Q_PROPERTY(double beforeFraction READ beforeFraction NOTIFY diskSpaceChanged)
    Q_PROPERTY(double afterFraction READ afterFraction NOTIFY diskSpaceChanged)
    Q_PROPERTY(QString beforeText READ beforeText NOTIFY diskSpaceChanged)
    Q_PROPERTY(QString afterText READ afterText NOTIFY diskSpaceChanged)
    Q_PROPERTY(QString dropText READ dropText NOTIFY diskSpaceChanged)
    /// What was selected, largest first; each with `name` and `sizeText`.
    Q_PROPERTY(QVariantList breakdown READ breakdown CONSTANT)
    /// Empty where nothing went to the quarantine.
    Q_PROPERTY(QString quarantineText READ quarantineText CONSTANT)
    /// Empty where no snapshot is known of.
    Q_PROPERTY(QString snapshotsText READ snapshotsText NOTIFY hasLocalSnapshotsChanged)

public:
    CleanResultViewModel(CleanerService::CleanResult result, CleanRoute route,
                         CategorySizes selected, qint64 purgeDays, const Locations& locations,
                         QObject* parent = nullptr);

    /// The disk was looked at. Tells nothing unless something was freed.
    void setDiskSpace(quint64 total, quint64 free);
    void setHasLocalSnapshots(bool areThere);

    [[nodiscard]] QString cleanedText() const { return QString::number(m_result.cleaned); }
    [[nodiscard]] QString freedText() const;
    [[nodiscard]] QString failedText() const;
    [[nodiscard]] CleanFailureModel* failures() { return &m_failures; }
    [[nodiscard]] QString stoppedText() const;
    [[nodiscard]] QString alongsideText() const;
    [[nodiscard]] bool hasDiskSpace() const { return m_hasDiskSpace; }
    [[nodiscard]] double beforeFraction() const { return m_diskSpace.before; }
    [[nodiscard]] double afterFraction() const { return m_diskSpace.after; }
    [[nodiscard]] QString beforeText() const;
    [[nodiscard]] QString afterText() const;
    [[nodiscard]] QString dropText() const { return m_diskSpace.dropText(); }
    [[nodiscard]] QVariantList breakdown() const;
    [[nodiscard]] QString quarantineText() const;
    [[nodiscard]] QString snapshotsText() const;

Q_SIGNALS:
    void diskSpaceChanged();
    void hasLocalSnapshotsChanged();

private:
    const CleanerService::CleanResult m_result;
    const CleanRoute m_route;
    CategorySizes m_selected; ///< largest first
    const qint64 m_purgeDays;
    CleanFailureModel m_failures;
    bool m_hasDiskSpace = false;
    DiskSpaceChange m_diskSpace;
    bool m_hasLocalSnapshots = false;
};

} // namespace brivane
