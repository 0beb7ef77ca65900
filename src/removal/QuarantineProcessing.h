#pragma once

#include "core/ByteCountFormatter.h"
#include "removal/QuarantineService.h"

#include <QPointer>

// What the operations of the quarantine share.
namespace brivane {

/// Makes the service say that it is processing, for as long as it lives.
class QuarantineService::Processing {
public:
    explicit Processing(QuarantineService* service)
        : m_service(service)
    {
        if (service->m_running++ == 0)
            Q_EMIT service->isProcessingChanged();
    }
    ~Processing()
    {
        if (m_service && --m_service->m_running == 0)
            Q_EMIT m_service->isProcessingChanged();
    }
    Q_DISABLE_COPY_MOVE(Processing)

private:
    QPointer<QuarantineService> m_service;
};

/// What an operation on many items says in the end. `bytes` is their size.
inline QString resultText(const QString& verb, qsizetype count, quint64 bytes)
{
    return QStringLiteral("%1 %2 items (%3)")
        .arg(verb)
        .arg(count)
        .arg(ByteCountFormatter::string(bytes));
}

} // namespace brivane
