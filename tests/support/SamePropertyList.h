#pragma once

#include "platform/PropertyList.h"

#include <QDateTime>

#include <algorithm>
#include <bit>
#include <cmath>

namespace brivane {

/// Whether `is` is what `was` has to be after it was written in `encoding` and read: the same down
/// to the types and the sign of zero, dates in XML to the second.
inline bool isSameList(const QVariant& was, const QVariant& is, PropertyList::Encoding encoding)
{
    const auto isSame = [&](const QVariant& a, const QVariant& b) {
        return isSameList(a, b, encoding);
    };
    if (was.typeId() != is.typeId())
        return false;
    switch (was.typeId()) {
    case QMetaType::QVariantMap:
        return was.toMap().keys() == is.toMap().keys() &&
               isSame(was.toMap().values(), is.toMap().values());
    case QMetaType::QVariantList: {
        const QVariantList before = was.toList();
        const QVariantList after = is.toList();
        return std::equal(before.begin(), before.end(), after.begin(), after.end(), isSame);
    }
    case QMetaType::Double:
        return std::isnan(was.toDouble()) ? std::isnan(is.toDouble())
                                          : std::bit_cast<quint64>(was.toDouble()) ==
                                                std::bit_cast<quint64>(is.toDouble());
    case QMetaType::QDateTime: {
        const qint64 before = was.toDateTime().toMSecsSinceEpoch();
        const qint64 unit = encoding == PropertyList::Encoding::Xml ? 1000 : 1;
        return before - is.toDateTime().toMSecsSinceEpoch() == (before % unit + unit) % unit;
    }
    default:
        return was == is;
    }
}

} // namespace brivane
