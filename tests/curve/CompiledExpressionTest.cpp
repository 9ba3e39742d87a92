// SPDX-License-Identifier: Apache-2.0
#include "curve/Calculator.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace zov::curve {
namespace {

/// Equal as bits; all that are no numbers count as equal, since no standard says which one it is.
bool Same(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

/// Values that are special to some operator, and others.
std::vector<double> Values(std::size_t count)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::vector<double> values = {
        0.0,          -0.0,         1.0,
        -1.0,         0.5,          -0.5,
        2.0,          2.5,          -2.5,
        1e10,         -3e9,         1e-300,
        5e-324,       1e308,        -1e308,
        kInfinity,    -kInfinity,   std::numeric_limits<double>::quiet_NaN(),
        2147483647.5, -2147483648.5};
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> usual(-4.0, 4.0);
    while (values.size() < count) {
        values.push_back(usual(random));
    }
    return values;
}

TEST(CalcKernels, EverySetGivesTheScalarResults)
{
    const std::vector<double> values = Values(37);
    for (std::size_t set = 0; set < KernelSets(); ++set) {
        for (std::size_t index = 0; index < kOpCount; ++index) {
            const auto op = static_cast<EOp>(index);
            if (op == EOp::Then) {
                continue;
            }
            for (std::size_t shift = 0; shift < values.size(); ++shift) {
                // Each block holds one first operand and all second ones, so that a domain error
                // of one operand does not hide the others.
                const std::vector<double> a(values.size(), values[shift]);
                std::vector<double> out(values.size());
                for (std::size_t i = 0; i < values.size(); ++i) {
                    const std::array<double, 3> operands = {a[i], values[i], values[shift]};
                    const auto expected = Guarded([&] { return Apply(op, operands.data()); });
                    out[i] = a[i];
                    const bool good = KernelOf(op, set)(out.data() + i, out.data() + i,
                                                        values.data() + i, a.data() + i, 1);
                    ASSERT_EQ(good, expected.Ok())
                        << InfoOf(op).text << ' ' << a[i] << ' ' << values[i];
                    if (good) {
                        ASSERT_TRUE(Same(out[i], *expected))
                            << InfoOf(op).text << ' ' << a[i] << ' ' << values[i];
                    }
                }
            }
        }
        // Whole blocks, where the loops run in vectors.
        for (const EOp op : {EOp::Add, EOp::Multiply, EOp::Divide, EOp::Sqrt, EOp::Max, EOp::Sign,
                             EOp::And, EOp::Sgn, EOp::Choose}) {
            std::vector<double> a(101);
            std::vector<double> b(101);
            for (std::size_t i = 0; i < a.size(); ++i) {
                a[i] = std::abs(values[i % values.size()]);
                b[i] = values[(i * 7 + 3) % values.size()] == 0.0 ? 1.0 : values[(i * 7 + 3) % 37];
            }
            std::vector<double> out(a);
            ASSERT_TRUE(KernelOf(op, set)(out.data(), out.data(), b.data(), a.data(), a.size()));
            for (std::size_t i = 0; i < a.size(); ++i) {
                const std::array<double, 3> operands = {a[i], b[i], a[i]};
                ASSERT_TRUE(Same(out[i], Apply(op, operands.data()))) << InfoOf(op).text;
            }
        }
    }
}

/// Angles are computed in an order of the kernel's choosing when they come in none.
TEST(CalcKernels, AnglesInAnyOrderGiveTheScalarResults)
{
    std::vector<double> angles = Values(613);
    std::vector<double> sorted(angles);
    sorted.erase(std::remove_if(sorted.begin(), sorted.end(), [](double a) { return a != a; }),
                 sorted.end());
    std::sort(sorted.begin(), sorted.end());
    for (const std::vector<double>& column : {angles, sorted}) {
        for (const EOp op : {EOp::Sin, EOp::Cos, EOp::Tan}) {
            for (const std::size_t count : {std::size_t{3}, std::size_t{300}, column.size()}) {
                std::vector<double> out(column);
                ASSERT_TRUE(KernelOf(op)(out.data(), out.data(), nullptr, nullptr, count));
                for (std::size_t i = 0; i < count; ++i) {
                    ASSERT_TRUE(Same(out[i], Apply(op, &column[i])))
                        << InfoOf(op).text << ' ' << column[i];
                }
            }
        }
    }
}

/// A random expression of names, numbers, operators and functions.
std::string RandomText(std::mt19937_64& random, int depth)
{
    static constexpr std::array kNames = {"x", "y", "p", "q", "2", "0.5", "x", "y"};
    static constexpr std::array kBinary = {"+", "-", "*",  "+",  "-",  "*",  "/",
                                           "<", ">", "<=", "==", "!=", "&&", "||"};
    static constexpr std::array kUnary = {"sin", "cos",  "abs", "-",   "!",    "int",  "nint",
                                          "exp", "atan", "db",  "sgn", "tanh", "twice"};
    static constexpr std::array kTwo = {"max", "min", "sign", "atan2", "pwr", "pow"};
    const auto below = [&](std::size_t limit) {
        return static_cast<std::size_t>(random() % limit);
    };
    if (depth == 0) {
        return kNames[below(kNames.size())];
    }
    const std::string a = RandomText(random, depth - 1);
    switch (below(6)) {
    case 0:
        return fmt::format("{}({})", kUnary[below(kUnary.size())], a);
    case 1:
        return fmt::format("{}({},{})", kTwo[below(kTwo.size())], a, RandomText(random, depth - 1));
    case 2:
        return fmt::format("({} ? {} : {})", a, RandomText(random, depth - 1),
                           RandomText(random, depth - 1));
    case 3:
        return fmt::format("({})^2", a);
    default:
        return fmt::format("({}{}{})", a, kBinary[below(kBinary.size())],
                           RandomText(random, depth - 1));
    }
}

CParameterTable TableFor(double x, double y)
{
    CParameterTable table;
    table.Set("x", x);
    table.Set("y", y);
    table.Set("p", 1.5);
    table.Set("q", "x-p*y/(2+abs(x))");
    EXPECT_TRUE(table.Define({"twice", {"z"}, "z+z*(x==x)"}).Ok());
    return table;
}

std::optional<std::size_t> XAndY(const SColumnRequest& request)
{
    return request.name == "x"   ? std::optional<std::size_t>(0)
           : request.name == "y" ? std::optional<std::size_t>(1)
                                 : std::nullopt;
}

/// What evaluating point after point gives: the values before the first that fails, then its
/// message.
struct SExpected
{
    std::vector<double> values;
    std::string message;
};
SExpected PointByPoint(const CPostfix& expression, std::span<const double> x,
                       std::span<const double> y)
{
    SExpected expected;
    for (std::size_t i = 0; i < x.size() && expected.message.empty(); ++i) {
        const auto value = Guarded([&] { return Evaluate(expression, TableFor(x[i], y[i])); });
        if (value.Ok()) {
            expected.values.push_back(*value);
        } else {
            expected.message = value.Error().text;
        }
    }
    return expected;
}

TEST(CompiledExpression, GivesTheBitsOfEachPointAlone)
{
    std::mt19937_64 random(11);
    const std::vector<double> x = Values(60);
    std::vector<double> y(x.rbegin(), x.rend());
    const std::array<const double*, 2> columns = {x.data(), y.data()};
    int failed = 0;
    for (int round = 0; round < 500; ++round) {
        const std::string text = RandomText(random, static_cast<int>(random() % 5));
        const CParameterTable table = TableFor(0.0, 0.0);
        const CPostfix expression = ParseExpression(text, table);
        const SExpected expected = PointByPoint(expression, x, y);
        std::vector<double> out(x.size());
        const auto done = Guarded([&] {
            CCompiledExpression(expression, table, XAndY).Evaluate(columns, x.size(), out.data());
            return 0;
        });
        ASSERT_EQ(done.Ok() ? "" : done.Error().text, expected.message) << text;
        if (!done.Ok()) {
            ++failed;
            EXPECT_EQ(done.Error().notes.back(),
                      fmt::format("at point {}", expected.values.size() + 1));
            continue;
        }
        for (std::size_t i = 0; i < out.size(); ++i) {
            ASSERT_TRUE(Same(out[i], expected.values[i]))
                << text << " x " << x[i] << " y " << y[i] << ": " << out[i] << ", expected "
                << expected.values[i];
        }
    }
    EXPECT_GT(failed, 20);
    EXPECT_LT(failed, 350);
}

TEST(CompiledExpression, CrossesBlocksAndNamesTheFirstPointThatFails)
{
    std::vector<double> x(2000);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = static_cast<double>(i);
    }
    const double* column = x.data();
    std::vector<double> out(x.size());
    const CParameterTable table = TableFor(0.0, 0.0);
    const auto run = [&](std::string_view text) {
        return Guarded([&] {
            CCompiledExpression(ParseExpression(text, table), table,
                                [](const SColumnRequest& request) {
                                    return request.name == "x" ? std::optional<std::size_t>(0)
                                                               : std::nullopt;
                                })
                .Evaluate(std::span(&column, 1), x.size(), out.data());
            return 0;
        });
    };
    ASSERT_TRUE(run("3*x+1").Ok());
    EXPECT_EQ(out[1999], 5998.0);
    ASSERT_TRUE(run("x").Ok());
    EXPECT_EQ(out, x);
    ASSERT_TRUE(run("p").Ok());
    EXPECT_EQ(out, std::vector<double>(2000, 1.5));
    // Wherever the result begins in memory.
    for (std::size_t shift = 0; shift < 9; ++shift) {
        std::vector<double> shifted(2000 + shift, -1.0);
        CCompiledExpression(ParseExpression("x*0+3.75", table), table, XAndY)
            .Evaluate(std::span(&column, 1), 2000, shifted.data() + shift);
        EXPECT_EQ(shifted.front(), shift == 0 ? 3.75 : -1.0);
        EXPECT_EQ(std::count(shifted.begin(), shifted.end(), 3.75), 2000) << shift;
    }
    const auto failed = run("1/(1500-x)+log(1600-x)");
    ASSERT_FALSE(failed.Ok());
    EXPECT_EQ(failed.Error().text, "divide by 0.");
    EXPECT_EQ(failed.Error().notes, std::vector<std::string>{"at point 1501"});
}

} // namespace
} // namespace zov::curve
