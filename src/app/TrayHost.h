#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

namespace brivane {

/// Whether somebody on the session's bus shows status icons, which may begin long after the
/// session, and end. GUI thread; never waits for an answer.
///
/// Qt asks once in a process, for good, so nobody may make a QSystemTrayIcon before it is known.
class TrayHost : public QObject {
    Q_OBJECT

public:
    explicit TrayHost(QDBusConnection bus = QDBusConnection::sessionBus(),
                      QObject* parent = nullptr);

    [[nodiscard]] bool isAvailable() const { return m_isAvailable; }

Q_SIGNALS:
    void isAvailableChanged();

private:
    void ask();
    void setAvailable(bool isAvailable);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    unsigned m_questions = 0; ///< only the answer to the last one counts
    bool m_isAvailable = false;

private Q_SLOTS:
    void hostsChanged() { ask(); }
};

} // namespace brivane
