#pragma once

#include "platform/SystemLog.h"

#include <QString>
#include <QStringView>

#include <memory>
#include <vector>

namespace brivane {

/// One log channel of the program. A constant; may be used from any thread.
class Logger {
public:
    explicit constexpr Logger(QStringView category)
        : m_category(category)
    {
    }

    void info(const QString& text) const { write(LogLevel::Info, text); }
    void notice(const QString& text) const { write(LogLevel::Default, text); } ///< level default
    void error(const QString& text) const { write(LogLevel::Error, text); }

private:
    void write(LogLevel level, const QString& text) const;

    QStringView m_category;
};

/// The four channels of subsystem "com.brivane.app".
namespace Log {

inline constexpr Logger scanner{u"scanner"};
inline constexpr Logger cleaner{u"cleaner"};
inline constexpr Logger delete_{u"delete"}; // the name without underscore is a word of the language
inline constexpr Logger perf{u"performance"};

} // namespace Log

/// One line as it was logged.
struct LogLine {
    QString subsystem;
    QString category;
    LogLevel level;
    QString text;
};

/// While it lives, lines of all threads come here instead of the system's log: for tests. The
/// youngest one gets them.
class LogCapture {
public:
    LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    /// All lines so far, in order.
    [[nodiscard]] std::vector<LogLine> lines() const;

private:
    friend class Logger;
    std::vector<LogLine> m_lines; ///< guarded by the mutex that guards the captures
    LogCapture* m_before;
};

} // namespace brivane
