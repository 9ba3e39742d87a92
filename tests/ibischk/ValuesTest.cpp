// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Values.h"

#include "base/Number.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace zov::ibischk {

namespace {

TEST(Values, SuffixScalesAndIsRoundedOnce)
{
    struct SRow
    {
        std::string_view text;
        double value;
        int flags;
    };
    constexpr SRow kRows[] = {
        {"4.0pF", 4e-12, 0},
        {"3.3nH", 3.3e-9, 0},
        {"0.1f", 1e-16, 0},
        {"50Ohms", 50, 0},
        {"+1.25", 1.25, 0},
        {"-.5m", -0.5e-3, 0},
        {"7.", 7, 0},
        {"0.1250k", 125, 0},
        {"2M", 2e6, 0},
        {"2G", 2e9, 0},
        {"2T", 2e12, 0},
        {"5F", 5, 0},
        {"5e", 5, 0},
        {"1.2E-3", 1.2e-3, 0},
        {"1.2e-3m", 1.2e-6, kExponentAndScale},
        {"2.2n3", 2.2e-9, kDigitsInScale},
        {"33K", 33, kCapitalScale},
        {"123456789012345678901234567890", 123456789012345678901234567890.0, 0},
        {"1e300k", 1e303, kExponentAndScale},
    };
    for (const SRow& row : kRows) {
        SNumber number;
        ASSERT_EQ(ReadNumber(row.text, number), ENumber::Good) << row.text;
        EXPECT_EQ(number.value, row.value) << row.text;
        EXPECT_EQ(number.flags, row.flags) << row.text;
    }
}

TEST(Values, RefusesWhatIsNoNumber)
{
    for (const std::string_view text :
         {"", "-", ".", "e5", "NA", "inf", "nan", "3,3", "1/2", "0x10%", "--1", "p5"}) {
        SNumber number;
        EXPECT_EQ(ReadNumber(text, number), ENumber::NoNumber) << text;
    }
    SNumber number;
    EXPECT_EQ(ReadNumber("1e999", number), ENumber::OutOfRange);
}

TEST(Values, EqualsTheExactReaderOnRandomDecimals)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int i = 0; i < 20000; ++i) {
        std::string text = std::to_string(random() % 1000) + "." + std::to_string(random());
        text.resize(1 + random() % text.size());
        if (random() % 2 == 0) {
            text += "e-" + std::to_string(random() % 30);
        }
        SNumber number;
        ASSERT_EQ(ReadNumber(text, number), ENumber::Good) << text;
        EXPECT_EQ(number.value, ParseDouble(text)) << text;
    }
}

TEST(Values, RowTellsCountsNaAndBadWords)
{
    SRow row;
    ScanRow("-3.3  1.5e-3\tNA 2mA", row);
    EXPECT_EQ(row.count, 4U);
    EXPECT_EQ(row.naMask, 4);
    EXPECT_EQ(row.value[0], -3.3);
    EXPECT_EQ(row.value[3], 2e-3);
    EXPECT_TRUE(std::isnan(row.value[2]));
    EXPECT_TRUE(row.Clean(4));

    ScanRow("1 x2 3n4", row);
    EXPECT_EQ(row.count, 3U);
    EXPECT_EQ(row.badMask, 2);
    EXPECT_EQ(row.token[1], "x2");
    EXPECT_FALSE(row.Clean(3));

    ScanRow("1 2 3 4 5 6", row);
    EXPECT_EQ(row.count, 5U);
}

} // namespace

} // namespace zov::ibischk
