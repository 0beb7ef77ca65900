#include "platform/ThreadName.h"

#include <pthread.h>

namespace brivane {

void nameThisThread(const QString& name)
{
    constexpr qsizetype longest = 15;
    QByteArray bytes = name.toUtf8();
    bytes.truncate(longest);
    ::pthread_setname_np(::pthread_self(), bytes.constData());
}

} // namespace brivane
