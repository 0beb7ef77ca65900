#include "platform/PropertyList.h"
#include "support/SamePropertyList.h"

#include <cstdio>
#include <cstdlib>

using namespace brivane;
using PropertyList::Encoding;

namespace {

/// Ends the program, which is how libFuzzer learns of a finding, unless `holds`.
void require(bool holds, const char* fault)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", fault);
    std::abort();
}

/// Dates are the one thing that may have a form in one encoding and none in the other.
bool mayHoldDate(const QByteArray& bytes)
{
    return bytes.contains("<date") || bytes.contains('\x33');
}

} // namespace

/// Any input is refused, or is a value that both encodings keep.
extern "C" int LLVMFuzzerTestOneInput(const quint8* data, size_t size)
{
    // Not copied: a copy would have room behind its end.
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const std::optional<QVariant> value = PropertyList::read(bytes);
    if (!value)
        return 0;
    for (const Encoding encoding : {Encoding::Xml, Encoding::Binary}) {
        const std::optional<QByteArray> written = PropertyList::write(*value, encoding);
        require(written || mayHoldDate(bytes), "what was read cannot be written");
        if (!written)
            continue;
        const std::optional<QVariant> back = PropertyList::read(*written);
        require(back.has_value(), "what was written cannot be read");
        require(isSameList(*value, *back, encoding), "what was written reads otherwise");
    }
    return 0;
}
