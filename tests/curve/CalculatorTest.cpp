// SPDX-License-Identifier: Apache-2.0
#include "curve/Calculator.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace zov::curve {
namespace {

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : " ") + text;
    }
    return joined;
}

CParameterTable SomeTable()
{
    CParameterTable table;
    for (const auto& [name, value] :
         {std::pair{"a", 2.0}, {"b", 3.0}, {"c", 5.0}, {"d", 7.0}, {"e", 11.0}, {"$1", 13.0}}) {
        table.Set(name, value);
    }
    EXPECT_TRUE(table.Define({"Half", {"x"}, "x/2"}).Ok());
    EXPECT_TRUE(table.Define({"mix", {"x", "y", "a"}, "x+10*y+100*a"}).Ok());
    EXPECT_TRUE(table.Define({"seven", {}, "7"}).Ok());
    table.variables = [](const SCircuitVariable& v) -> std::optional<double> {
        if (v.first == "gone") {
            return std::nullopt;
        }
        return (v.kind == 'v' ? 100.0 : 200.0) + static_cast<double>(v.second.size());
    };
    return table;
}

std::string Postfix(std::string_view text)
{
    const auto list = Guarded([&] { return Joined(ParseExpression(text, SomeTable()).Texts()); });
    return list.Ok() ? *list : list.Error().text;
}

/// The value as text, or the message. Walks the list, its texts, and the compiled form, which have
/// to agree.
std::string Value(std::string_view text, const CParameterTable& table = SomeTable())
{
    const auto told = [](const CResult<double>& value) {
        return value.Ok() ? fmt::format("{:.15g}", *value) : value.Error().text;
    };
    const std::string walked = told(Calculate(text, table));
    const auto again =
        Guarded([&] { return EvaluatePostfix(ParseExpression(text, table).Texts(), table); });
    EXPECT_EQ(told(again), walked) << text;
    const auto compiled = Guarded([&] {
        double value = 0.0;
        CCompiledExpression(ParseExpression(text, table), table, {}).Evaluate({}, 1, &value);
        return value;
    });
    EXPECT_EQ(told(compiled), walked) << text;
    return walked;
}

TEST(Calculator, PostfixListFollowsTheGrammar)
{
    struct SCase
    {
        const char* text;
        const char* postfix;
    };
    for (const SCase& c : {
             SCase{"a ? b : c", "a b c :"},
             SCase{"a?b:c?d:e", "a b c : d e :"},
             SCase{"a?b?c:d:e", "a b c d : e :"},
             SCase{"a||b&&c>d+e*2^3", "a b c d e 2 3 ^ * + > && ||"},
             SCase{"a^b*c-d<=e&&a||b", "a b ^ c * d - e <= a && b ||"},
             SCase{"a-b+c", "a b - c +"},
             SCase{"a<b==c!=d", "a b < c == d !="},
             SCase{"2^3**2", "2 3 ^ 2 ^"},
             SCase{"-2^2*3", "2 2 ^ -@ 3 *"},
             SCase{"2*-a^b", "2 a b ^ -@ *"},
             SCase{"+a-(-b)", "a +@ b -@ -"},
             SCase{"2^(-1)", "2 1 -@ ^"},
             SCase{"!a==b", "a ! b =="},
             SCase{"!!-a", "a -@ ! !"},
             SCase{"SIN(a)+Atan2(b,c)", "a sin b c atan2 +"},
             SCase{"max(a,min(b,c)*2)", "a b c min 2 * max"},
             SCase{"half(a)+MIX(1,(2),3)", "a half( 1 2 3 MIX( +"},
             SCase{"seven()", "seven("},
             SCase{"v(n1)+V ( n1 , 0 )-i(l)", "v( n1 ) V( n1 0 ) + i( l ) -"},
             SCase{"$12+$1", "$12 $1 +"},
             SCase{"v+i", "v i +"},
             SCase{"1.5e-3+.5\t", "1.5e-3 .5 +"},
         }) {
        EXPECT_EQ(Postfix(c.text), c.postfix) << c.text;
    }
}

TEST(Calculator, TextsThatAreNoExpressionSayWhy)
{
    const std::string syntax = "syntax error!";
    const std::string complete = "This expression can't be parse completely.";
    const std::string number = "illegal number format.";
    struct SCase
    {
        const char* text;
        std::string message;
    };
    for (const SCase& c : {
             SCase{"", syntax},
             SCase{"--2", syntax},
             SCase{"+ -2", syntax},
             SCase{"2^-1", syntax},
             SCase{"2**+1", syntax},
             SCase{"-!a", syntax},
             SCase{"a+", syntax},
             SCase{"*a", syntax},
             SCase{"(a", syntax},
             SCase{"(a,b)", syntax},
             SCase{"()", syntax},
             SCase{"sin a", syntax},
             SCase{"sin(a,b)", syntax},
             SCase{"max(a,b,c)", syntax},
             SCase{"sin()", syntax},
             SCase{"v()", syntax},
             SCase{"v(a,b,c)", syntax},
             SCase{"i(a,b)", syntax},
             SCase{"seven(1)", syntax},
             SCase{"exp", syntax},
             SCase{"1 2", complete},
             SCase{"a b", complete},
             SCase{"a)", complete},
             SCase{"a,b", complete},
             SCase{"a!", complete},
             SCase{"1.2.3", number},
             SCase{".", number},
             SCase{"1e999", number},
             SCase{"2x", number},
             SCase{"1e+", number},
             SCase{"a & b", "illegal operator: &"},
             SCase{"a | b", "illegal operator: |"},
             SCase{"a = b", "illegal operator: ="},
             SCase{"a # b", "illegal operator: #"},
             SCase{"a;", "illegal operator: ;"},
             SCase{"$", "illegal operator: $"},
             SCase{"_a", "illegal operator: _"},
             SCase{"2*\xCE\xA9", "illegal operator: \xCE\xA9"},
             SCase{"mix(1,2)", "',' is expected."},
             SCase{"mix(1 2,3)", "',' is expected."},
             SCase{"max(1)", "',' is expected."},
             SCase{"none(1)", "Function none...) not found"},
         }) {
        EXPECT_EQ(Postfix(c.text), c.message) << c.text;
    }
}

TEST(Calculator, ValuesOfOperatorsAndFunctions)
{
    struct SCase
    {
        const char* text;
        const char* value;
    };
    for (const SCase& c : {
             SCase{"2^3^2", "64"},
             SCase{"-2^2", "-4"},
             SCase{"1--2", "3"},
             SCase{"7/2-3*2", "-2.5"},
             SCase{"(1<2)+(2<=2)+(3>2)+(2>=3)+(1==1)+(1!=1)", "4"},
             SCase{"(5&&0)+(5||0)+!3+!0", "2"},
             SCase{"0.1?2:3", "2"},
             SCase{"0?2:3", "3"},
             SCase{"log(0)", "-inf"},
             SCase{"log10(1000)", "3"},
             SCase{"exp(0)", "1"},
             SCase{"sqrt(2)^2-2<1e-9", "1"},
             SCase{"abs(-3)+int(-2.5)+int(2.9)", "3"},
             SCase{"int(3e9)", "-2147483648"},
             SCase{"nint(-2.5)", "-2"},
             SCase{"nint(-2.7)", "-2"},
             SCase{"nint(2.5)", "3"},
             SCase{"db(-10)", "20"},
             SCase{"db(0)", "-inf"},
             SCase{"sgn(-4)*10+sgn(0)+sgn(3)", "-9"},
             SCase{"pow(0,0)", "1"},
             SCase{"pow(-8,3)", "-512"},
             SCase{"pwr(-8,1/3)", "-2"},
             SCase{"pwrs(-2,2)", "-4"},
             SCase{"atan2(0,-1)-acos(-1)", "0"},
             SCase{"asin(1)-2*atan(1)", "0"},
             SCase{"max(2,3)+min(2,3)*10", "23"},
             SCase{"1/max(0,-1*0)", "divide by 0."},
             SCase{"sign(-3,2)", "3"},
             SCase{"sign(3,-0.5)", "-3"},
             SCase{"sin(0)+cos(0)+tan(0)+sinh(0)+cosh(0)+tanh(0)", "2"},
             SCase{"half(a+b)*$1", "32.5"},
             SCase{"mix(a,b,1)+seven()", "139"},
             SCase{"v(n1,n22)+i(l1)", "303"},
         }) {
        EXPECT_EQ(Value(c.text), c.value) << c.text;
    }
    EXPECT_EQ(Value("sign(3,log(0)-log(0))"), "-3") << "a sign that is no number counts as minus";
}

TEST(Calculator, EvaluationsThatFailSayWhy)
{
    struct SCase
    {
        const char* text;
        const char* message;
    };
    for (const SCase& c : {
             SCase{"1/(a-2)", "divide by 0."},
             SCase{"0?1/0:2", "divide by 0."},
             SCase{"log(-1)", "<log> operand is negative."},
             SCase{"log10(-1)", "<log10> operand is negative."},
             SCase{"sqrt(-1)", "<sqrt> operand is negative."},
             SCase{"asin(1.5)", "<asin> operand's absolute value > 1."},
             SCase{"acos(-1.5)", "<acos> operand's absolute value > 1."},
             SCase{"pow(0,-1)", "pow value is infinite."},
             SCase{"0^(-1)", "pow value is infinite."},
             SCase{"a:b", "<:> usage is wrong: three operands are expected."},
             SCase{"a?b", "This expression can't be evaluated."},
             SCase{"nobody+1", "Parameter \"nobody\" is not defined."},
             SCase{"v(gone)", "Parameter \"v(gone)\" is not defined."},
             SCase{"i(gone)", "Parameter \"i(gone)\" is not defined."},
         }) {
        EXPECT_EQ(Value(c.text), c.message) << c.text;
    }
}

TEST(Calculator, ListsThatHoldTogetherBadlySayWhy)
{
    struct SCase
    {
        std::vector<std::string> list;
        const char* message;
    };
    for (const SCase& c : {
             SCase{{"1", "+"}, "<+> usage is wrong: two operands are expected."},
             SCase{{"-@"}, "<-@> usage is wrong: one operand is expected."},
             SCase{{"sin"}, "<sin> usage is wrong: one operand is expected."},
             SCase{{"1", "2", ":"}, "<:> usage is wrong: three operands are expected."},
             SCase{{"half("}, "<half> usage is wrong: one operand is expected."},
             SCase{{"1", "2", "mix("}, "<mix> usage is wrong: three operands are expected."},
             SCase{{"1", "four("}, "<four> usage is wrong: 4 operands are expected."},
             SCase{{}, "This expression can't be evaluated."},
             SCase{{"1", "2"}, "This expression can't be evaluated."},
             SCase{{"1", "#"}, "syntax error"},
             SCase{{"v(", "a"}, "syntax error"},
             SCase{{"none("}, "Function none...) not found"},
         }) {
        CParameterTable table = SomeTable();
        ASSERT_TRUE(table.Define({"four", {"p", "q", "r", "s"}, "p"}).Ok());
        const auto value = Guarded([&] { return EvaluatePostfix(c.list, table); });
        ASSERT_FALSE(value.Ok());
        EXPECT_EQ(value.Error().text, c.message);
    }
}

TEST(Calculator, ParametersMayNameEachOther)
{
    CParameterTable table;
    table.Set("area", "width*height");
    table.Set("width", "2*height");
    table.Set("height", 3.0);
    EXPECT_EQ(*Calculate("area+width", table), 24.0);
    EXPECT_EQ(table.TextOf("area"), "width*height");
    EXPECT_EQ(table.TextOf("height"), "3.000000000000000000000000000000e+00");

    table.Set("loop", "1+pool");
    table.Set("pool", "loop*2");
    table.Set("self", "self");
    table.Set("bad", "1/(height-3)");
    table.Set("worse", "bad+1");
    table.Set("open", "lost+1");
    struct SCase
    {
        const char* text;
        const char* message;
        std::vector<std::string> notes;
    };
    for (const SCase& c : {
             SCase{"loop",
                   "Parameter \"loop\" can't be evalutated.",
                   {"loop: Parameter \"pool\" can't be evalutated.",
                    "pool: Parameter \"loop\" can't be evalutated.",
                    "loop: its expression names itself"}},
             SCase{"1+self",
                   "Parameter \"self\" can't be evalutated.",
                   {"self: Parameter \"self\" can't be evalutated.",
                    "self: its expression names itself"}},
             SCase{"worse",
                   "Parameter \"worse\" can't be evalutated.",
                   {"worse: Parameter \"bad\" can't be evalutated.", "bad: divide by 0."}},
             SCase{"open",
                   "Parameter \"open\" can't be evalutated.",
                   {"open: Parameter \"lost\" is not defined."}},
         }) {
        const auto value = Calculate(c.text, table);
        ASSERT_FALSE(value.Ok());
        EXPECT_EQ(value.Error().text, c.message);
        EXPECT_EQ(value.Error().notes, c.notes);
    }
}

TEST(Calculator, UserFunctionsMustHaveUsableNames)
{
    CParameterTable table;
    for (const char* name : {"sin", "V", "1a", "", "a b"}) {
        EXPECT_FALSE(table.Define({name, {}, "1"}).Ok()) << name;
    }
    EXPECT_FALSE(table.Define({"f", {"x", "2"}, "1"}).Ok());
}

TEST(Calculator, DepthIsAnErrorOrAnAnswerAndCallsAreBounded)
{
    CParameterTable table;
    const std::size_t deep = 100000;
    const std::string open(deep, '(');
    const std::string close(deep, ')');
    EXPECT_EQ(*Calculate(open + "1" + close, table), 1.0);
    EXPECT_EQ(Calculate(open, table).Error().text, "syntax error!");
    std::string nested;
    std::string sums;
    for (std::size_t i = 0; i < deep; ++i) {
        nested += "-(";
        sums += "1+(";
    }
    EXPECT_EQ(*Calculate(nested + "1" + close, table), 1.0);
    double value = 0.0;
    const CPostfix postfix = ParseExpression(sums + "x" + close, table);
    const double x = 1.0;
    const double* column = &x;
    CCompiledExpression(postfix, table, [](const SColumnRequest&) {
        return 0;
    }).Evaluate(std::span(&column, 1), 1, &value);
    EXPECT_EQ(value, static_cast<double>(deep + 1));
    EXPECT_EQ(*Calculate(std::string(deep, '!') + "0", table), 0.0);

    for (int i = 0; i < 300; ++i) {
        table.Set("p" + std::to_string(i + 1), "p" + std::to_string(i) + "+1");
        ASSERT_TRUE(
            table.Define({"f" + std::to_string(i + 1), {"x"}, fmt::format("f{}(x)+f{}(x)", i, i)})
                .Ok());
    }
    table.Set("p0", 0.0);
    ASSERT_TRUE(table.Define({"f0", {"x"}, "x"}).Ok());
    EXPECT_EQ(*Calculate("p150", table), 150.0);
    EXPECT_EQ(Calculate("p300", table).Error().text, "Parameter \"p300\" can't be evalutated.");
    EXPECT_EQ(*Calculate("f10(1)", table), 1024.0);
    for (const char* text : {"f60(1)", "f300(1)"}) {
        EXPECT_EQ(Value(text, table), "This expression can't be evaluated.");
    }
}

} // namespace
} // namespace zov::curve
