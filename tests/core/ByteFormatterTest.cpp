#include "core/ByteFormatter.h"

#include <limits>

#include <gtest/gtest.h>

using namespace brivane;

TEST(ByteFormatter, UnitsAndDecimalsChangeAtTheirBounds)
{
    const std::pair<quint64, const char*> rows[] = {
        {0, "0 B"},
        {1023, "1023 B"},
        {1024, "1.00 KB"},
        {1536, "1.50 KB"},
        {10239, "10.00 KB"}, // below ten, though it rounds up to it
        {10240, "10.0 KB"},
        {15360, "15.0 KB"},
        {102399, "100.0 KB"},
        {153600, "150 KB"},
        {1048575, "1024 KB"},
        {1048576, "1.00 MB"},
        {1073741824, "1.00 GB"},
        {1099511627776, "1.00 TB"},
        {std::numeric_limits<quint64>::max(), "16777216 TB"},
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(ByteFormatter::format(bytes).toStdString(), text);
}
