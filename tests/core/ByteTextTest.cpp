#include "core/ByteCountFormatter.h"
#include "core/ByteFormatter.h"

#include <limits>

#include <gtest/gtest.h>

using namespace brivane;

namespace {

constexpr quint64 most = std::numeric_limits<quint64>::max();
using Rows = std::initializer_list<std::pair<quint64, const char*>>;

} // namespace

TEST(ByteCountFormatter, UnitsDecimalsAndRoundingChangeAtTheirBounds)
{
    for (const auto& [bytes, text] : Rows{{0, "Zero KB"},
                                          {1, "1 byte"},
                                          {999, "999 bytes"},
                                          {1'499, "1 KB"},
                                          {1'500, "2 KB"},
                                          {999'499, "999 KB"},
                                          {999'500, "1 MB"},
                                          {1'049'999, "1 MB"},
                                          {1'050'000, "1.1 MB"},
                                          {999'949'999, "999.9 MB"},
                                          {999'950'000, "1 GB"},
                                          {1'004'999'999, "1 GB"},
                                          {1'005'000'000, "1.01 GB"},
                                          {1'300'000'000, "1.3 GB"},
                                          {999'994'999'999, "999.99 GB"},
                                          {999'995'000'000, "1 TB"},
                                          {most, "18.45 EB"}})
        EXPECT_EQ(ByteCountFormatter::string(bytes).toStdString(), text) << bytes;
}

TEST(ByteFormatter, UnitsAndDecimalsChangeAtTheirBounds)
{
    for (const auto& [bytes, text] :
         Rows{{0, "0 B"},
              {1023, "1023 B"},
              {1024, "1.00 KB"},
              {10239, "10.00 KB"}, // below ten, though it rounds up to it
              {10240, "10.0 KB"},
              {102399, "100.0 KB"},
              {153600, "150 KB"},
              {1048575, "1024 KB"},
              {1048576, "1.00 MB"},
              {1ull << 40, "1.00 TB"},
              {most, "16777216 TB"}})
        EXPECT_EQ(ByteFormatter::format(bytes).toStdString(), text);
}
