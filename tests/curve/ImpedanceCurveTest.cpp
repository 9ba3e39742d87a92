// SPDX-License-Identifier: Apache-2.0
#include "curve/ImpedanceCurve.h"

#include "core/ZovLibrary.h"
#include "support/TempFolder.h"

#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <numbers>

namespace zov::curve {
namespace {

using std::numbers::pi;

/// What the impedance says, for one look: points, Z at the first and last, or the message.
std::string Told(const CZovRcdProps& record, const std::filesystem::path& folder = {})
{
    CNullDiag diag;
    const auto hz = SweepHz({1e3, 1e9, 7});
    const auto curves = ImpedancesOf(record, hz, folder, diag);
    if (!curves.Ok()) {
        return curves.Error().text;
    }
    std::string told;
    for (const TCurvePtr& curve : *curves) {
        const CCurvePoints& points = curve->Points();
        told += fmt::format("{} {}", curve->Header().name, points.Count());
        for (const std::size_t i : {std::size_t{0}, points.Count() - 1}) {
            told += fmt::format(" {:.4g}:{:.4g}{:+.4g}j", points.Column(0)[i], points.Column(1)[i],
                                points.Column(2)[i]);
        }
        told += ';';
    }
    return told;
}

CZovRcdProps& Add(CZovLibrary& library, ERecordType type, const char* name,
                  const SDiscreteModel& model)
{
    CZovRcdProps& record = library.Add(type);
    record.SetString(EPropId::ModelName, name);
    record.SetDiscreteModel(model);
    return record;
}

TEST(ImpedanceCurve, PlainValuesAreASeriesCircuit)
{
    CZovLibrary library;
    EXPECT_EQ(Told(Add(library, ERecordType::Capacitor, "c",
                       {false, "", "", 0.01, 1e-9 / (2 * pi), 1e-6 / (2 * pi)})),
              "c 7 1000:0.01-1000j 1e+09:0.01+0.999j;");
    EXPECT_EQ(
        Told(Add(library, ERecordType::Inductor, "l", {false, "", "", 0.5, 1e-6 / (2 * pi), {}})),
        "l 7 1000:0.5+0.001j 1e+09:0.5+1000j;");
    EXPECT_EQ(Told(Add(library, ERecordType::Resistor, "r", {false, "", "", 47.0, {}, {}})),
              "r 7 1000:47+0j 1e+09:47+0j;");
    EXPECT_EQ(Told(Add(library, ERecordType::Capacitor, "n", {false, "", "", 0.01, {}, {}})),
              "record 'n' has no capacitance");
    CZovRcdProps& vrm = library.Add(ERecordType::Vrm);
    vrm.SetString(EPropId::ModelName, "buck");
    EXPECT_EQ(Told(vrm), "record 'buck' has no rail with a pin resistance");
    SVrmModel model;
    model.rails.resize(3);
    model.rails[0].pinResistance = 0.001;
    model.rails[2].pinResistance = 0.002;
    vrm.SetComposite(model);
    EXPECT_EQ(Told(vrm), "buck.1 7 1000:0.001+0j 1e+09:0.001+0j;"
                         "buck.3 7 1000:0.002+0j 1e+09:0.002+0j;");
    EXPECT_EQ(Told(library.Add(ERecordType::Package)),
              "record '' is neither a discrete part nor a VRM");
}

/// Lines of a file that measures R + jwL between 50 ohm ports, in series, to ground, or alone.
std::string Measured(char how, double ohm, double henry)
{
    std::string text = "# Hz S RI R 50\n";
    for (const double hz : {1e6, 1e7, 1e8}) {
        const std::complex<double> z(ohm, 2 * pi * hz * henry);
        const std::complex<double> s11 = how == 's'   ? z / (z + 100.0)
                                         : how == 'p' ? -25.0 / (z + 25.0)
                                                      : (z - 50.0) / (z + 50.0);
        const std::complex<double> s21 = how == 's' ? 1.0 - s11 : 1.0 + s11;
        text += fmt::format("{} {:.17g} {:.17g}", hz, s11.real(), s11.imag());
        if (how != '1') {
            text += fmt::format(" {0:.17g} {1:.17g} {0:.17g} {1:.17g} {2:.17g} {3:.17g}",
                                s21.real(), s21.imag(), s11.real(), s11.imag());
        }
        text += '\n';
    }
    return text;
}

TEST(ImpedanceCurve, TouchstoneFilesGiveThePartInThem)
{
    const test::CTempFolder folder;
    folder.Write("s.s2p", Measured('s', 2.0, 1e-8));
    folder.Write("p.s2p", Measured('p', 2.0, 1e-8));
    folder.Write("sub/o.s1p", Measured('1', 2.0, 1e-8));
    folder.Write("bad.s2p", "# Hz S RI R 50\n1 2\n");
    CZovLibrary library;
    const auto told = [&](const SDiscreteModel& model) {
        return Told(Add(library, ERecordType::Capacitor, "c", model), folder.Path());
    };
    const std::string expected = "c 3 1e+06:2+0.06283j 1e+08:2+6.283j;";
    EXPECT_EQ(told({true, "s.s2p", "", {}, {}, {}}), expected);
    EXPECT_EQ(told({true, "p.s2p", "", {}, {}, {}}), expected);
    EXPECT_EQ(told({true, "o.s1p", "sub", {}, {}, {}}), expected);
    EXPECT_EQ(told({true, ".SUBCKT c 1 2\nS1 1 2 3 2 Model=p.s2p\nV 3 2 0\n.ENDS", "", {}, {}, {}}),
              expected)
        << "the data tells better than the wiring";
    EXPECT_EQ(told({true, "no.s2p", "", {}, {}, {}}), "file 'no.s2p' of record 'c' was not found");
    EXPECT_EQ(told({true, "c.sp", "", {}, {}, {}}),
              "the model of record 'c' is a SPICE circuit; its impedance can't be computed without "
              "a simulator");
    EXPECT_EQ(told({true, ".SUBCKT c 1 2\nC1 1 2 1n\n.ENDS", "", {}, {}, {}}).substr(0, 32),
              "the model of record 'c' is a SPI");
    EXPECT_EQ(told({true, "bad.s2p", "", {}, {}, {}}).substr(0, 1), "I") << "the reader's message";
}

TEST(ImpedanceCurve, SweepsKeepTheirEnds)
{
    const auto hz = SweepHz({1e3, 1e6, 4});
    ASSERT_EQ(hz.size(), 4U);
    EXPECT_EQ(hz.front(), 1e3);
    EXPECT_NEAR(hz[1], 1e4, 1e-8);
    EXPECT_EQ(hz.back(), 1e6);
    EXPECT_EQ(SweepHz({5.0, 9.0, 1}), std::vector<double>{5.0});
    EXPECT_TRUE(SweepHz({0.0, 1.0, 5}).empty());
    EXPECT_TRUE(SweepHz({2.0, 1.0, 5}).empty());
}

TEST(ImpedanceCurve, MagnitudeIsACurveOfRealValues)
{
    CCurve curve;
    curve.Header().legend = "c";
    curve.Points().Add(std::array{1.0, 3.0, -4.0});
    const TCurvePtr magnitude = MagnitudeOf(curve);
    EXPECT_EQ(magnitude->Header().legend, "|c|");
    EXPECT_EQ(magnitude->Points().Columns(), 2U);
    EXPECT_EQ(magnitude->Points().Column(1)[0], 5.0);
}

} // namespace
} // namespace zov::curve
