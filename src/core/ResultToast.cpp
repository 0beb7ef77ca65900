#include "core/ResultToast.h"

#include "core/Publish.h"
#include "platform/Clock.h"

namespace brivane {

using namespace std::chrono_literals;

ResultToast::ResultToast(Clock& clock, QString message, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
    , m_message(std::move(message))
{
}

ResultToast::~ResultToast()
{
    m_showing.request_stop();
}

void ResultToast::setMessage(const QString& message)
{
    if (message == m_message)
        return;
    m_message = message;
    m_showing.request_stop();
    setVisibleMessage(message);
    if (!message.isEmpty())
        hideLater();
}

void ResultToast::dismiss()
{
    m_showing.request_stop();
    setVisibleMessage({});
}

QCoro::Task<> ResultToast::hideLater()
{
    m_showing = {};
    const std::stop_token stop = m_showing.get_token();
    const std::chrono::milliseconds time = 3500ms;
    QCoro::Task<> sleeping = m_clock.sleep(time, stop);
    co_await sleeping;
    if (!stop.stop_requested())
        setVisibleMessage({});
}

void ResultToast::setVisibleMessage(const QString& message)
{
    publish(m_visibleMessage, message, this, &ResultToast::visibleMessageChanged);
}

} // namespace brivane
