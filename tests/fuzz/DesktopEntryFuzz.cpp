#include "platform/linux/DesktopEntry.h"

#include <cstdlib>

using namespace brivane;
using namespace Qt::StringLiterals;

/// Any input is refused, or is an entry whose texts are of bounded length.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, size_t size)
{
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto entry = DesktopEntry::parse(bytes, {u"de_DE"_s, u"de"_s, u"C"_s});
    if (!entry)
        return 0;
    for (const QString& text : {entry->name, entry->localizedName, entry->program,
                                entry->windowClass, entry->flatpak, entry->snap}) {
        if (text.size() > 4096)
            std::abort();
    }
    return 0;
}
