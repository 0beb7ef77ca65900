#pragma once

#include <QObject>
#include <QString>

namespace brivane {

/// How far a bulk operation of the quarantine has come. A plain value.
struct QuarantineProgress {
    Q_GADGET
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(qint64 completed MEMBER completed CONSTANT)
    Q_PROPERTY(qint64 total MEMBER total CONSTANT)
    Q_PROPERTY(quint64 bytesProcessed MEMBER bytesProcessed CONSTANT)

public:
    QString label;
    qint64 completed = 0; ///< items done, also those that failed
    qint64 total = 0;
    quint64 bytesProcessed = 0; ///< of the items that did not fail
};

} // namespace brivane
