#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <stop_token>

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
    ~ResultToast() override;

    /// Shows `message`, unless it is what was said last. An empty one shows nothing.
    void setMessage(const QString& message);
    /// Hides what shows; it counts as said.
    void dismiss();

    /// Empty when nothing shows.
    [[nodiscard]] const QString& visibleMessage() const { return m_visibleMessage; }

Q_SIGNALS:
    void visibleMessageChanged();

private:
    QCoro::Task<> hideLater();
    void setVisibleMessage(const QString& message);

    Clock& m_clock;
    QString m_message;
    QString m_visibleMessage;
    std::stop_source m_showing; ///< stopped when the message goes before its time
};

} // namespace brivane
