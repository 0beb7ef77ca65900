#include "core/Log.h"

#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace brivane {

namespace {

std::mutex captureMutex;
LogCapture* youngestCapture = nullptr; ///< guarded by captureMutex

} // namespace

void Logger::write(LogLevel level, const QString& text) const
{
    const QString subsystem = u"com.brivane.app"_s;
    {
        const std::lock_guard lock(captureMutex);
        if (youngestCapture != nullptr) {
            youngestCapture->m_lines.push_back({subsystem, m_category.toString(), level, text});
            return;
        }
    }
    writeToSystemLog(subsystem, m_category, level, text);
}

LogCapture::LogCapture()
{
    const std::lock_guard lock(captureMutex);
    m_before = std::exchange(youngestCapture, this);
}

LogCapture::~LogCapture()
{
    const std::lock_guard lock(captureMutex);
    youngestCapture = m_before;
}

std::vector<LogLine> LogCapture::lines() const
{
    const std::lock_guard lock(captureMutex);
    return m_lines;
}

} // namespace brivane
