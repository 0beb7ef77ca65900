#pragma once

#include <QByteArray>

namespace brivane::testing {

/// A variable of the environment with another value; it has its own again in the end.
class Variable {
public:
    Variable(const char* name, const QByteArray& value)
        : m_name(name)
        , m_before(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable() { m_before.isNull() ? qunsetenv(m_name) : qputenv(m_name, m_before); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_before;
};

} // namespace brivane::testing
