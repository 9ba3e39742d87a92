// SPDX-License-Identifier: Apache-2.0
#include "sheet/NumberFormat.h"

#include <gtest/gtest.h>

namespace zov::sheet {
namespace {

std::string Show(std::string_view code, double value, EText mode = EText::Shown,
                 bool date1904 = false)
{
    std::string out;
    CNumberFormat::Parse(code).AppendNumber(out, value, {mode, date1904});
    return out;
}

struct SCase
{
    std::string_view code;
    double value;
    std::string_view text;
};

void Check(const std::vector<SCase>& cases, EText mode = EText::Shown, bool date1904 = false)
{
    for (const SCase& one : cases) {
        EXPECT_EQ(Show(one.code, one.value, mode, date1904), one.text)
            << one.code << " with " << one.value;
    }
}

TEST(NumberFormat, ShowsGeneralInFifteenDigits)
{
    Check({{"General", 0.30000000000000004, "0.3"},
           {"General", 1e-07, "1E-07"},
           {"General", 4.7e-12, "4.7E-12"},
           {"General", 0.0001, "0.0001"},
           {"General", 0.00001, "1E-05"},
           {"General", -402, "-402"},
           {"General", 123456789012, "123456789012"},
           {"General", 1e15, "1E+15"},
           {"General", 1.0 / 3, "0.333333333333333"},
           {"General", 5e-324, "4.94065645841247E-324"},
           {"general", -0.0, "0"},
           {"", 2.5, "2.5"},
           {"@", 402, "402"}});
}

TEST(NumberFormat, ShowsPlaceholders)
{
    Check({{"0000", 402, "0402"},
           {"0000", -402, "-0402"},
           {"0", 2.5, "3"},
           {"0", -2.5, "-3"},
           {"0.00", 1.005, "1.01"},
           {"0.00", -0.001, "0.00"},
           {"0.0", 9.96, "10.0"},
           {"#,##0.00", 1234567.891, "1,234,567.89"},
           {"#,##0", 999, "999"},
           {"000,000", 1234, "001,234"},
           {"#.##", 5, "5."},
           {".00", 0.5, ".50"},
           {"0.0##", 1.5, "1.5"},
           {"0.0?", 1.5, "1.5"},
           {"0,", 12345, "12"},
           {"0.0,,", 12345678, "12.3"},
           {"00-00", 402, "04-02"},
           {"(000) 000-0000", 5551234567, "(555) 123-4567"},
           {"#", 0, ""},
           {"0.00", 1e20, "100000000000000000000.00"}});
}

TEST(NumberFormat, ShowsPercentExponentAndFraction)
{
    Check({{"0%", 0.1, "10%"},
           {"0.00%", 0.12345, "12.35%"},
           {"0.00E+00", 4.7e-9, "4.70E-09"},
           {"0.00E+00", 9.999, "1.00E+01"},
           {"0.0E-0", 12000, "1.2E4"},
           {"##0.0E+0", 12345, "12.3E+3"},
           {"##0.0E+0", 4.7e-8, "47.0E-9"},
           {"##0.0E+0", 999960, "1.0E+6"},
           {"# ?/?", 0.5, "1/2"},
           {"# ?/?", -2.25, "-2 1/4"},
           {"# ?\?/??", 5.25, "5  1/4"},
           {"# ?\?/??", 12.345, "12 10/29"},
           {"# ?/16", 0.0625, "1/16"},
           {"?/?", 1.5, "3/2"},
           {"# ?/?", 7, "7"},
           {"# ?/?", 0, "0"}});
}

TEST(NumberFormat, ShowsLiteralsSectionsAndConditions)
{
    Check({{R"(0.0"pF")", 4.7, "4.7pF"},
           {R"(0\ \k)", 10, "10 k"},
           {R"("R"0000)", 603, "R0603"},
           {"$#,##0.00", -5, "-$5.00"},
           {"[$€-407] 0.00", 5, "€ 5.00"},
           {"0.00[$ USD-409]", 5, "5.00 USD"},
           {"0;(0);\"none\"", -5, "(5)"},
           {"0;(0);\"none\"", 0, "none"},
           {"[Red]0.0;[Blue]-0.0", -1.25, "-1.3"},
           {"[>=1000]0.0,\"k\";0\"R\"", 4700, "4.7k"},
           {"[>=1000]0.0,\"k\";0\"R\"", 47, "47R"},
           {"[<0]\"neg \"0;0", -3, "neg 3"},
           {"_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"?\?_);_(@_)", 1234.5, "1,234.50"},
           {"_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"?\?_);_(@_)", 0, "-"},
           {"General\" ohm\"", -4.7, "-4.7 ohm"},
           {";;;", 5, ""},
           {"0 Ω", 5, "5 Ω"}});
}

TEST(NumberFormat, ShowsDatesAndTimes)
{
    Check({{"m/d/yyyy", 45356, "3/5/2024"},
           {"yyyy-mm-dd", 45356.75, "2024-03-05"},
           {"dd.mm.yy", 45356, "05.03.24"},
           {"d-mmm-yy", 45356, "5-Mar-24"},
           {"dddd, mmmm d", 45356, "Tuesday, March 5"},
           {"ddd mmmmm", 45356, "Tue M"},
           {"yyyy-mm-dd", 60, "1900-02-29"},
           {"yyyy-mm-dd", 59, "1900-02-28"},
           {"yyyy-mm-dd", 61, "1900-03-01"},
           {"yyyy-mm-dd", 2958465, "9999-12-31"},
           {"yyyy-mm-dd", 2958466, "2958466"},
           {"yyyy-mm-dd", -1, "-1"},
           {"h:mm", 0.5, "12:00"},
           {"h:mm AM/PM", 0.0, "12:00 AM"},
           {"hh:mm:ss A/P", 45356.75, "06:00:00 P"},
           {"yyyy-mm-dd hh:mm:ss", 45356.999999, "2024-03-06 00:00:00"},
           {"h:mm", 45356.999305, "23:58"},
           {"mm:ss.0", 0.00069502, "01:00.0"},
           {"hh:mm:ss.000", 0.123456789, "02:57:46.667"},
           {"[h]:mm", 1.5, "36:00"},
           {"[h]:mm:ss", -0.25, "-6:00:00"},
           {"[mm]:ss", 0.0625, "90:00"},
           {"[$-409]d-mmm-yyyy;@", 45356, "5-Mar-2024"},
           {"[$-F800]dd.mm.yyyy", 45356, "Tuesday, March 5, 2024"},
           {"m", 45356, "3"}});
    Check({{"yyyy-mm-dd", 43894, "2024-03-05"}, {"yyyy-mm-dd", 0, "1904-01-01"}}, EText::Shown,
          true);
}

TEST(NumberFormat, KeepsEveryDigitWhenAsked)
{
    Check({{"0.00", 1.23456e-7, "0.000000123456"},
           {"0000", 402, "0402"},
           {"0%", 0.12345, "12.345%"},
           {R"(0"pF")", 4.75, "4.75pF"},
           {"0.0E+00", 1.2345e-9, "1.2345E-09"},
           {"#,##0", 1234.5, "1,234.5"},
           {"0.0,\"k\"", 4751, "4.751k"},
           {"# ?/?", 0.1, "0.1"},
           {"# ?/?", 0.5, "1/2"},
           {"0.00", 1e-300, "1E-300"},
           {";;;", 5, "5"}},
          EText::Exact);
}

TEST(NumberFormat, ShowsTexts)
{
    const auto show = [](std::string_view code) {
        std::string out;
        CNumberFormat::Parse(code).AppendText(out, "x", {});
        return out;
    };
    EXPECT_EQ(show("0;-0;0;\"<\"@\">\""), "<x>");
    EXPECT_EQ(show("@\" pcs\""), "x pcs");
    EXPECT_EQ(show("0.00"), "x");
    EXPECT_EQ(show(";;;"), "");
}

TEST(NumberFormat, SurvivesAnyCode)
{
    for (std::string_view code : {"[",
                                  "[]",
                                  "\"",
                                  "\\",
                                  "_",
                                  "*",
                                  ";;;;;;",
                                  "E+",
                                  "0E+",
                                  "/",
                                  "0/",
                                  "0/0/0",
                                  "[h",
                                  "[$",
                                  "[$-",
                                  "[>x]0",
                                  "0..0",
                                  ",,,",
                                  "0,,,,,,,,,,,,,,,,,",
                                  "%%%%%%",
                                  "AM/PM",
                                  "[s].000",
                                  "\xFF\xFE"
                                  "0"}) {
        for (double value : {0.0, -1.5, 1e300, 1e-300, 45356.5}) {
            EXPECT_LT(Show(code, value).size(), 1000U) << code;
        }
    }
    EXPECT_EQ(Show(std::string(100000, '0'), 5), "5");
}

TEST(NumberText, RecognisesTextsThatGeneralWouldWriteTheSame)
{
    for (std::string_view text :
         {"0", "1", "-1", "402", "0.1", "-0.0001", "123456789012345", "12.5"}) {
        EXPECT_TRUE(IsGeneralText(text)) << text;
    }
    for (std::string_view text : {"", "-", "-0", "00", "01", "1.", ".5", "1.0", "1e5", "0.00001",
                                  "1234567890123456", "0.30000000000000004", "1 ", "x"}) {
        EXPECT_FALSE(IsGeneralText(text)) << text;
    }
}

} // namespace
} // namespace zov::sheet
