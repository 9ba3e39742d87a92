// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveExpression.h"

#include "curve/Calculator.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace zov::curve {
namespace {

TCurvePtr MakeCurve(const char* name, std::initializer_list<std::array<double, 7>> points,
                    std::size_t numbers)
{
    auto curve = std::make_shared<CCurve>();
    curve->Header().name = name;
    for (const auto& point : points) {
        curve->Points().Add(std::span(point).first(numbers));
    }
    return curve;
}

CCurveSet SomeCurves()
{
    CCurveSet set;
    set.Add(MakeCurve("z", {{1, 3, 4}, {2, 0, -2}, {4, -1, 0}}, 3));
    set.Add(MakeCurve("v", {{1, 10}, {2, 20}, {4, 40}}, 2));
    set.Add(MakeCurve("wide", {{0, 100, 0, 1, 2, 3, 4}, {2, 300, 0, 3, 4, 5, 6}}, 7));
    set.Add(MakeCurve("far", {{50, 1}, {60, 2}}, 2));
    set.Add(MakeCurve("zigzag", {{3, 1}, {2, 2}, {1, 3}}, 2));
    set.Add(MakeCurve("twin", {{1, 1}}, 2));
    set.Add(MakeCurve("twin", {{1, 2}}, 2));
    set.Add(MakeCurve("max-1", {{1, 5}}, 2));
    return set;
}

/// Points as text, or the message; notes behind.
std::string Told(std::string_view expression)
{
    CParameterTable table;
    table.Set("k", 2.0);
    table.Set("v", 1e6);
    table.Set("sum", "v+re(z)");
    EXPECT_TRUE(table.Define({"half", {"c"}, "c/k"}).Ok());
    const auto computed = ComputeCurve(expression, SomeCurves(), table);
    if (!computed.Ok()) {
        return computed.Error().text;
    }
    std::string told;
    const CCurvePoints& points = computed->curve->Points();
    for (std::size_t i = 0; i < points.Count(); ++i) {
        told += fmt::format("{}{:g}:{:.4g}", i == 0 ? "" : " ", points.Column(0)[i],
                            points.Column(1)[i]);
    }
    for (const std::string& note : computed->notes) {
        told += "\n" + note;
    }
    return told;
}

TEST(CurveExpression, ReachesTheValuesOfCurves)
{
    struct SCase
    {
        const char* expression;
        const char* told;
    };
    for (const SCase& c : {
             SCase{"v*k", "1:20 2:40 4:80"},
             SCase{"re(z)+im(z)", "1:7 2:-2 4:-1"},
             SCase{"MAG(z)", "1:5 2:2 4:1"},
             SCase{"phase(z)", "1:53.13 2:-90 4:180"},
             SCase{"db(z)", "1:13.98 2:6.021 4:0"},
             SCase{"db(mag(z))-db(v)", "1:-6.021 2:-20 4:-32.04"},
             SCase{"db(v+0)", "1:20 2:26.02 4:32.04"},
             SCase{"im(z)*x+x", "1:5 2:-2 4:4"},
             SCase{"half(v)", "1:5 2:10 4:20"},
             SCase{"sum", "1:13 2:20 4:39"},
             SCase{"re($1)+$2", "1:13 2:20 4:39"},
             SCase{"re(wide,2)+im(wide,2)*10+re(wide,3)*100+im(wide,3)*1000", "0:4321 2:6543"},
             SCase{"max($2,$8*0+15)", "1:15"},
         }) {
        const std::string told = Told(c.expression);
        EXPECT_EQ(told.substr(0, told.find('\n')), c.told) << c.expression;
    }
}

TEST(CurveExpression, InterpolatesAndSaysSo)
{
    EXPECT_EQ(Told("v+wide"),
              "1:210 2:320\n'wide' is interpolated at the points of 'v', linearly in real and "
              "imaginary part\n1 of 3 points of 'v' are left out: they are outside 0 to 2, which "
              "is what all curves cover");
    EXPECT_EQ(Told("mag(z)*0+zigzag*0+1"),
              "curve 'zigzag' has other abscissas than 'z' and can't be interpolated: they don't "
              "ascend");
    EXPECT_EQ(Told("zigzag+0*mag(z)").substr(0, 15), "3:1 2:2 1:3\n'z'");
}

TEST(CurveExpression, SaysWhatDoesNotFit)
{
    struct SCase
    {
        const char* expression;
        const char* message;
    };
    for (const SCase& c : {
             SCase{"z+1", "curve 'z' is complex; say re(z), im(z), mag(z), phase(z) or db(z)"},
             SCase{"k+1", "the expression names no curve"},
             SCase{"v+far", "the curves have no range of x in common"},
             SCase{"twin", "several curves are named 'twin'; say $6 or $7"},
             SCase{"mag(k)", "'k' is no curve"},
             SCase{"re(z,4)", "'4' is no value of a curve, expected 1, 2 or 3"},
             SCase{"$9", "Parameter \"$9\" is not defined."},
             SCase{"nothing", "Parameter \"nothing\" is not defined."},
             SCase{"1/(v-20)", "divide by 0."},
             SCase{"re(z", "syntax error!"},
         }) {
        EXPECT_EQ(Told(c.expression), c.message) << c.expression;
    }
}

TEST(CurveExpression, AUserFunctionComesBeforeAPartOfCurves)
{
    CParameterTable table;
    ASSERT_TRUE(table.Define({"mag", {"a"}, "a*1000"}).Ok());
    const auto computed = ComputeCurve("mag(v)", SomeCurves(), table);
    ASSERT_TRUE(computed.Ok());
    EXPECT_EQ(computed->curve->Points().Column(1)[2], 40000.0);
    EXPECT_EQ(Calculate("mag(2)", table).Take(), 2000.0);
    EXPECT_EQ(Calculate("re(2)", table).Error().text, "Function re...) not found");
}

} // namespace
} // namespace zov::curve
