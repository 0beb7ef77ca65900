#include "core/ResultToast.h"

#include "platform/Clock.h"

#include <QPointer>

namespace brivane {

using namespace std::chrono_literals;

ResultToast::ResultToast(Clock& clock, QString message, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
    , m_message(std::move(message))
{
}

void ResultToast::setMessage(const QString& message)
{
    if (message == m_message)
        return;
    m_message = message;
    ++m_showing;
    setVisibleMessage(message);
    if (!message.isEmpty())
        hideLater(m_showing);
}

void ResultToast::dismiss()
{
    ++m_showing;
    setVisibleMessage({});
}

QCoro::Task<> ResultToast::hideLater(int showing)
{
    const QPointer<ResultToast> self(this);
    const std::chrono::milliseconds time = 3500ms;
    co_await m_clock.sleep(time);
    if (self && showing == m_showing)
        setVisibleMessage({});
}

void ResultToast::setVisibleMessage(const QString& message)
{
    if (message == m_visibleMessage)
        return;
    m_visibleMessage = message;
    Q_EMIT visibleMessageChanged();
}

} // namespace brivane
