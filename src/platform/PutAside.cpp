#include "platform/PutAside.h"

#include "platform/FileMove.h"

#include <cerrno>

using namespace Qt::StringLiterals;

namespace brivane {

Result<QString> putAside(const QString& path)
{
    constexpr int lastNumber = 999;
    for (int number = 1;; ++number) {
        const QString place = path + u".damaged-%1"_s.arg(number);
        const auto moved = moveWithoutReplacing(path, place, {.otherDevice = OtherDevice::Refuse});
        if (moved)
            return place;
        if (moved.error().code != EEXIST || number == lastNumber)
            return moved.error();
    }
}

} // namespace brivane
