#pragma once

#include <QObject>

#include <memory>

namespace brivane {

class Composition;

/// Whether somebody is cleaning the machine's keyboard and screen right now. The cleaning mode says
/// so, the window gives it all of its room as long. GUI thread.
class CleaningSessionState : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isSessionActive READ isSessionActive WRITE setSessionActive NOTIFY
                   sessionActiveChanged)

public:
    using QObject::QObject;

    static std::unique_ptr<CleaningSessionState> make(Composition& composition);

    [[nodiscard]] bool isSessionActive() const { return m_isSessionActive; }
    void setSessionActive(bool active);

Q_SIGNALS:
    void sessionActiveChanged();

private:
    bool m_isSessionActive = false;
};

} // namespace brivane
