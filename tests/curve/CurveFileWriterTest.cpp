// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Text.h"
#include "curve/CurveFile.h"
#include "curve/CurveNumber.h"
#include "curve/JournalSupport.h"
#include "support/TempFolder.h"

#include <array>
#include <bit>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace zov::curve {
namespace {

/// Takes a number of writes, then fails.
class CFailingStream final : public CCurveStream
{
public:
    explicit CFailingStream(int good)
        : m_good(good)
    {
    }
    [[nodiscard]] bool Write(std::string_view) override { return m_good-- > 0; }

private:
    int m_good;
};

TCurvePtr MakeCurve(SCurveHeader header, std::initializer_list<SCurvePoint> points)
{
    auto curve = std::make_shared<CCurve>();
    curve->Header() = std::move(header);
    for (const SCurvePoint& point : points) {
        curve->Points().Add(point);
    }
    return curve;
}

std::string TextOf(const TCurvePtr& curve, EKind kind, const SCurveWriteOptions& options = {})
{
    const auto text = CurveFileText(std::span(&curve, 1), kind, options);
    return text.Ok() ? *text : text.Error().text;
}

TEST(CurveFileWriter, WritesTheForm)
{
    SCurveHeader header{"port 1", "Z0_real_imag",    "", ELineStyle::Dash,
                        {},       "f\tReal(Ohm)\ti", {}, {}};
    header.attributes = {{"unit", "ohm"}, {"n", "2"}};
    header.attributeGroups = {{{"a", "1"}, {"b", ""}}};
    const TCurvePtr curve =
        MakeCurve(header, {{1e9, {{{0.5, -0.25}, {}, {}}}}, {2e9, {{{1.0, 0.0}, {}, {}}}}});
    EXPECT_EQ(TextOf(curve, EKind::FrequencyDomain),
              "*******Frequency Domain Parameters*********\n"
              "*[unit=ohm]\n*[n=2]\n*[a=1][b=]\n"
              "**************Curve***************\n"
              "port_1\tZ0_real_imag\tDASH\tport_1\n"
              "f\tReal(Ohm)\ti\n"
              "1.000000000000000e+09\t5.000000000000000e-01\t-2.500000000000000e-01\n"
              "2.000000000000000e+09\t1.000000000000000e+00\t0.000000000000000e+00\n"
              "**************End***************\n");
    SCurveWriteOptions pairs;
    pairs.entry = {1, 2};
    pairs.values = 2;
    pairs.pairsOnly = true;
    curve->Header() = {"Z", "Z", "l", ELineStyle::Solid, {}, {}, {}, {}};
    EXPECT_EQ(TextOf(curve, EKind::FrequencyDomain, pairs),
              "*******Voltage*********\n**************Curve***************\n"
              "Z(1,2)\tZ:imag\tREAL\tl\n"
              "1.000000000000000e+09\t-2.500000000000000e-01\n"
              "2.000000000000000e+09\t0.000000000000000e+00\n"
              "**************End***************\n");
    curve->Header() = {"", "", "", ELineStyle::Dot, {}, {}, {}, {}};
    EXPECT_NE(TextOf(curve, EKind::Erl)
                  .find("*******ERL*********\n**************Curve"
                        "***************\nDOT\n1.0"),
              std::string::npos);
    curve->Header().name = std::string(600, 'x');
    EXPECT_NE(TextOf(curve, EKind::Erl).find("a curve file holds 510"), std::string::npos);
}

TEST(CurveFileWriter, EveryFailedWriteGivesFalse)
{
    const TCurvePtr curve = MakeCurve({"a", "b", "c", {}, {}, {}, {}, {}}, {{1.0, {}}});
    EXPECT_FALSE(curve->Write(nullptr, {}, kFirstValue, false));
    int writes = 0;
    for (bool good = false; !good; ++writes) {
        CFailingStream stream(writes);
        good = curve->Write(&stream, {}, kFirstValue, false);
        ASSERT_LT(writes, 10);
    }
    EXPECT_EQ(writes - 1, 4) << "attributes, header, points, end";
}

TEST(CurveFileWriter, NumbersAreThoseOfPrintfAndReadBack)
{
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (value != value) {
            continue;
        }
        std::array<char, 64> buffer{};
        std::string written(buffer.data(), WriteExponentForm(buffer.data(), value, false));
        std::array<char, 64> expected{};
        std::snprintf(expected.data(), expected.size(), "%0.15le", value);
        EXPECT_EQ(written, expected.data());
        const std::size_t shorter = written.size();
        written.assign(buffer.data(), WriteExponentForm(buffer.data(), value, true));
        EXPECT_TRUE(written == expected.data() || written.size() == shorter + 1) << written;
        std::snprintf(expected.data(), expected.size(), "%.30e", value);
        EXPECT_EQ(LongNumberText(value), expected.data());
    }
}

/// A random curve as a reader can have made it.
TCurvePtr RandomCurve(std::mt19937_64& random, EKind kind)
{
    const auto below = [&](std::size_t limit) {
        return static_cast<std::size_t>(random() % limit);
    };
    const auto word = [&](const char* first) {
        std::string text(first);
        for (std::size_t i = below(12); i-- > 0;) {
            text += static_cast<char>('!' + below(90));
        }
        return ReplaceAll(ReplaceAll(ReplaceAll(text, "]", "c"), "[", "o"), "=", "e");
    };
    auto curve = std::make_shared<CCurve>();
    SCurveHeader& header = curve->Header();
    if (kind != EKind::Voltage) {
        header.name = word(kind == EKind::MixedMode ? "Diff(" : "n");
        header.valueName = word("v");
        header.modes = ModesOf(header.name, header.valueName);
    }
    header.legend = word("l");
    header.style = static_cast<ELineStyle>(below(5));
    for (std::size_t i = below(3); i-- > 0;) {
        TAttributeGroup group;
        for (std::size_t j = below(4) + 1; j-- > 0;) {
            group.push_back({word("k"), word("")});
        }
        header.attributeGroups.push_back(group);
    }
    const std::size_t numbers = HasComplexValues(kind) ? 3 + below(5) : 2;
    for (std::size_t i = below(40); i-- > 0;) {
        std::array<double, kPointNumbers> point{};
        for (std::size_t c = 0; c < numbers; ++c) {
            do {
                point[c] = std::bit_cast<double>(random());
            } while (point[c] != point[c]);
        }
        curve->Points().Add(std::span(point).first(numbers));
    }
    return curve;
}

TEST(CurveFileWriter, WhatIsWrittenReadsBackAsItWas)
{
    std::mt19937_64 random(5);
    for (int round = 0; round < 400; ++round) {
        static constexpr std::array kKinds = {
            EKind::FrequencyDomain,   EKind::MixedMode, EKind::Voltage,
            EKind::VoltageFullHeader, EKind::Erl,       EKind::Vswr};
        const EKind kind = kKinds[static_cast<std::size_t>(round) % kKinds.size()];
        const std::vector<TCurvePtr> curves = {RandomCurve(random, kind),
                                               RandomCurve(random, kind)};
        const auto text = CurveFileText(curves, kind);
        ASSERT_TRUE(text.Ok());
        const auto file = ReadCurveText(*text, "a.cur");
        ASSERT_TRUE(file.Ok()) << file.Error().text << '\n' << *text;
        EXPECT_EQ(file->kind, kind);
        EXPECT_EQ(file->skippedLines, 0U);
        ASSERT_EQ(file->curves.size(), curves.size());
        for (std::size_t i = 0; i < curves.size(); ++i) {
            EXPECT_EQ(file->curves[i]->Header(), curves[i]->Header()) << *text;
            EXPECT_EQ(file->curves[i]->Points(), curves[i]->Points()) << *text;
        }
        EXPECT_EQ(*CurveFileText(file->curves, file->kind), *text);
    }
}

TEST(CurveFileWriter, NumbersThatAreNoneReadBack)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const TCurvePtr curve =
        MakeCurve({}, {{1.0, {{{-kInfinity, kInfinity}, {}, {}}}},
                       {2.0, {{{std::numeric_limits<double>::quiet_NaN(), 5e-324}, {}, {}}}}});
    const auto file = ReadCurveText(TextOf(curve, EKind::FrequencyDomain), "a.cur");
    ASSERT_TRUE(file.Ok());
    const CCurvePoints& points = file->curves[0]->Points();
    EXPECT_EQ(points.At(0), curve->Points().At(0));
    EXPECT_NE(points.Column(1)[1], points.Column(1)[1]);
    EXPECT_EQ(points.Column(2)[1], 5e-324);
}

TEST(SaveCurveFile, JournalsWhatItWrote)
{
    const test::CTempFolder folder;
    const TCurvePtr curve = MakeCurve({"a", "b", "c", {}, {}, {}, {}, {}}, {{1.0, {}}});
    CRecordingJournal journal;
    SCurveWriteOptions options;
    options.curveGroup = "g";
    options.matrixType = "Z";
    ASSERT_TRUE(SaveCurveFile(folder.Path() / "o.cur", curve, EKind::Vswr, options, journal).Ok());
    EXPECT_EQ(folder.Read("o.cur"), TextOf(curve, EKind::Vswr));
    EXPECT_EQ(ReplaceAll(journal.told, PathText(folder.Path()), "@"),
              "tavrely::save Curve -Name {a} -FileName {@/o.cur} -CurveGroup {g} -CurveFileType "
              "{CUR} -MatrixTypeToSave {Z}\n"
              "save_curve: CurveName=a FileName=@/o.cur CurveGroup=g CurveFileType=CUR "
              "MatrixType=Z\n");
    CRecordingJournal nothing;
    EXPECT_FALSE(
        SaveCurveFile(folder.Path() / "no/o.cur", curve, EKind::Vswr, options, nothing).Ok());
    EXPECT_EQ(nothing.told, "");
}

} // namespace
} // namespace zov::curve
