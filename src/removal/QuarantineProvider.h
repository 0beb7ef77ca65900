#pragma once

#include "platform/Worker.h"
#include "removal/QuarantineService.h"

#include <QCoroTask>
#include <QObject>

#include <memory>
#include <optional>

namespace brivane {

class AppSettings;
class Composition;
struct Host;

/// The one quarantine of a machine, in "~/.Brivane_Quarantine", for all modules that remove things.
/// Its list is read by the first who asks, and what has been there for too long is removed then.
/// GUI thread.
class QuarantineProvider : public QObject {
    Q_OBJECT

public:
    /// Both have to outlive this.
    QuarantineProvider(Host& host, const AppSettings& settings);
    static std::unique_ptr<QuarantineProvider> make(Composition& composition);

    /// Reads on a worker if it is the first use. Null only when this has gone meanwhile; what it
    /// gives lives as long as this.
    QCoro::Task<QuarantineService*> open();
    /// The same at once: blocks while it is being read.
    QuarantineService& openNow();

private:
    [[nodiscard]] QString quarantineDir() const;

    Host& m_host;
    const AppSettings& m_settings;
    std::unique_ptr<QuarantineService> m_service;
    /// Of a first use that is under way: two readings at once would keep each other out.
    std::optional<QFuture<std::shared_ptr<QuarantineContents>>> m_opening;
    Worker m_worker{QStringLiteral("quarantine opening")}; ///< goes first
};

} // namespace brivane
