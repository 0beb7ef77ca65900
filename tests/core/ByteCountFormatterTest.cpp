#include "core/ByteCountFormatter.h"

#include <limits>

#include <gtest/gtest.h>

using namespace brivane;

TEST(ByteCountFormatter, UnitsDecimalsAndRoundingChangeAtTheirBounds)
{
    const std::pair<quint64, const char*> rows[] = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {2, "2 bytes"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {1'499, "1 KB"},
        {1'500, "2 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"}, // not "1000 KB"
        {1'049'999, "1 MB"},
        {1'050'000, "1.1 MB"},
        {1'200'000, "1.2 MB"},
        {15'000'000, "15 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {1'004'999'999, "1 GB"},
        {1'005'000'000, "1.01 GB"},
        {1'240'000'000, "1.24 GB"},
        {1'300'000'000, "1.3 GB"},
        {20'480'000'000, "20.48 GB"},
        {999'994'999'999, "999.99 GB"},
        {999'995'000'000, "1 TB"},
        {1'500'000'000'000'000, "1.5 PB"},
        {std::numeric_limits<quint64>::max(), "18.45 EB"},
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(ByteCountFormatter::string(bytes).toStdString(), text) << bytes;
}
