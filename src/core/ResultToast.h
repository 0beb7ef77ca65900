#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace brivane {

class Clock;

/// What a toast says, and for how long: a new message shows for three and a half seconds, or until
/// the next one. Screens show it by ResultToastModifier. GUI thread.
class ResultToast : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A view model brings it")
    Q_PROPERTY(QString visibleMessage READ visibleMessage NOTIFY visibleMessageChanged)

public:
    /// `message` is what was said before, and does not show. `clock` has to outlive this.
    ResultToast(Clock& clock, QString message, QObject* parent = nullptr);

    /// Shows `message`, unless it is what was said last. An empty one shows nothing.
    void setMessage(const QString& message);
    /// Hides what shows; it counts as said.
    void dismiss();

    /// Empty when nothing shows.
    [[nodiscard]] const QString& visibleMessage() const { return m_visibleMessage; }

Q_SIGNALS:
    void visibleMessageChanged();

private:
    QCoro::Task<> hideLater(int showing);
    void setVisibleMessage(const QString& message);

    Clock& m_clock;
    QString m_message;
    QString m_visibleMessage;
    int m_showing = 0; ///< counts up, so that an old end does not hide a new message
};

} // namespace brivane
