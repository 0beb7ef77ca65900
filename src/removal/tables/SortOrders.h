#pragma once

#include <string_view>

namespace brivane {

/// In which order the quarantine is listed. All orders keep what is equal as it is in the store.
enum class QuarantineSortOrder {
    dateDesc, ///< latest first
    dateAsc,
    sizeDesc, ///< largest first
    nameAsc,  ///< as people of the machine's language sort, small and capital letters alike
};

/// Their labels, in the order in which they are offered.
inline constexpr struct {
    QuarantineSortOrder order;
    std::u16string_view label;
} quarantineSortOrders[] = {
    {QuarantineSortOrder::dateDesc, u"Newest"},
    {QuarantineSortOrder::dateAsc, u"Oldest"},
    {QuarantineSortOrder::sizeDesc, u"Largest"},
    {QuarantineSortOrder::nameAsc, u"Name"},
};

} // namespace brivane
