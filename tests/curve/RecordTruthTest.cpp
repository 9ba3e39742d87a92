// SPDX-License-Identifier: Apache-2.0
#include "curve/RecordTruth.h"

#include "core/ZovLibrary.h"
#include "curve/ImpedanceCurve.h"
#include "network/TouchstoneReader.h"
#include "support/TempFolder.h"

#include <cmath>
#include <fmt/format.h>
#include <gtest/gtest.h>

namespace zov::curve {
namespace {

enum class EHow
{
    OnePort,
    Series,
    Shunt
};

/// A Touchstone file of a series R-L-C between 50 ohm ports, from 1 kHz to 1 GHz.
std::string Measured(EHow how, const SSeriesRlc& part, double fromHz = 1e3)
{
    std::string text = "# Hz S RI R 50\n";
    for (const double hz : SweepHz({fromHz, 1e9, 241})) {
        const std::complex<double> z = ImpedanceOf(part, hz);
        const std::complex<double> s11 = how == EHow::Series  ? z / (z + 100.0)
                                         : how == EHow::Shunt ? -25.0 / (z + 25.0)
                                                              : (z - 50.0) / (z + 50.0);
        const std::complex<double> s21 = how == EHow::Series ? 1.0 - s11 : 1.0 + s11;
        text += fmt::format("{:.17g} {:.17g} {:.17g}", hz, s11.real(), s11.imag());
        if (how != EHow::OnePort) {
            text += fmt::format(" {0:.17g} {1:.17g} {0:.17g} {1:.17g} {2:.17g} {3:.17g}",
                                s21.real(), s21.imag(), s11.real(), s11.imag());
        }
        text += '\n';
    }
    return text;
}

struct RecordTruthTest : testing::Test
{
    CZovRcdProps& Add(ERecordType type, const char* cktDef)
    {
        CZovRcdProps& record = library.Add(type);
        record.SetString(EPropId::ModelName, "m");
        if (*cktDef != '\0') {
            record.SetDiscreteModel({true, cktDef, "", {}, {}, {}});
        }
        return record;
    }
    CZovRcdProps& Capacitor(const char* cktDef, double cnom)
    {
        CZovRcdProps& record = Add(ERecordType::Capacitor, cktDef);
        record.SetDouble(EPropId::Cnom, cnom);
        return record;
    }
    SRecordTruth Check(const CZovRcdProps& record) { return checker.Check(record); }
    /// The word and the text, for one look.
    std::string Told(const CZovRcdProps& record)
    {
        const SRecordTruth truth = Check(record);
        return std::string(WordOf(truth.verdict)) + (truth.text.empty() ? "" : ": " + truth.text);
    }

    const SSeriesRlc part{0.012, 0.5e-9, 98e-9};
    test::CTempFolder folder;
    CZovLibrary library;
    CTruthChecker checker{folder.Path(), {}};
};

TEST_F(RecordTruthTest, KnownPartsAreFoundInEveryConnection)
{
    folder.Write("o.s1p", Measured(EHow::OnePort, part));
    folder.Write("s.s2p", Measured(EHow::Series, part));
    folder.Write("p.s2p", Measured(EHow::Shunt, part));
    struct
    {
        const char* file;
        network::EConnection connection;
    } const cases[] = {{"o.s1p", network::EConnection::OnePort},
                       {"s.s2p", network::EConnection::Series},
                       {"p.s2p", network::EConnection::Shunt}};
    const double f0 = 1 / (2 * std::acos(-1.0) * std::sqrt(part.henry * part.farad));
    for (const auto& test : cases) {
        SCOPED_TRACE(test.file);
        const SRecordTruth truth = Check(Capacitor(test.file, 100e-9));
        EXPECT_EQ(truth.verdict, ETruth::Agrees);
        EXPECT_EQ(truth.connection, test.connection);
        EXPECT_EQ(truth.text, "");
        EXPECT_NEAR(*truth.Find("C")->model, part.farad, part.farad * 1e-6);
        EXPECT_NEAR(*truth.Find("ESR")->model, part.ohm, part.ohm * 1e-6);
        EXPECT_NEAR(*truth.Find("resonance")->model, f0, f0 * 1e-3);
        EXPECT_NEAR(*truth.Find("ESL")->model, part.henry, part.henry * 2e-3);
        EXPECT_FALSE(truth.Find("ESR")->stated);
    }
    const SSeriesRlc coil{0.05, 1e-6, 0.0};
    folder.Write("l.s2p", Measured(EHow::Series, coil));
    CZovRcdProps& inductor = Add(ERecordType::Inductor, "l.s2p");
    inductor.SetDouble(EPropId::Inductance, 1.1e-6);
    inductor.SetDouble(EPropId::Resistance, 0.05);
    const SRecordTruth truth = Check(inductor);
    EXPECT_EQ(truth.verdict, ETruth::Agrees);
    EXPECT_NEAR(*truth.Find("L")->model, 1e-6, 1e-12);
    EXPECT_NEAR(*truth.Find("R")->model, 0.05, 1e-9);
}

TEST_F(RecordTruthTest, FactorsDecideWhatIsAsked)
{
    struct
    {
        double ratio; ///< model by stated
        ETruth verdict;
    } const cases[] = {{1.0, ETruth::Agrees},     {1.99, ETruth::Agrees},
                       {0.51, ETruth::Agrees},    {2.01, ETruth::Differs},
                       {0.49, ETruth::Differs},   {5.0, ETruth::Differs},
                       {10.0, ETruth::AskUnit},   {1.2e-3, ETruth::AskUnit},
                       {0.98e6, ETruth::AskUnit}, {30.0, ETruth::Differs}};
    for (const auto& test : cases) {
        EXPECT_EQ(Compare(1e-7, 1e-7 * test.ratio), test.verdict) << test.ratio;
    }
    EXPECT_EQ(Compare({}, 1.0), ETruth::Unjudged);
    EXPECT_EQ(Compare(1.0, -1.0), ETruth::Unjudged);
    EXPECT_EQ(Compare(0.0, 1.0), ETruth::Unjudged);

    folder.Write("s.s2p", Measured(EHow::Series, part));
    EXPECT_EQ(Told(Capacitor("s.s2p", 100e-12)),
              "unit?: C is 98nF in 's.s2p', the record says 0.1nF: a factor of 980; is the unit "
              "right?");
    CZovRcdProps& both = Capacitor("s.s2p", 330e-9);
    both.SetDouble(EPropId::Rv, 12.0);
    EXPECT_EQ(Told(both),
              "unit?: C is 98nF in 's.s2p', the record says 330nF: a factor of 3.37; ESR is 12mOhm "
              "in 's.s2p', the record says 12000mOhm: a factor of 1e+03; is the unit right?");
    CZovRcdProps& plain = Capacitor("", 100e-9);
    plain.SetDiscreteModel({false, "", "", 0.01, 1e-9, 100e-12});
    EXPECT_EQ(Told(plain), "unit?: C is 0.1nF by the plain values of the model, the record says "
                           "100nF: a factor of 1e+03; is the unit right?");
    plain.SetDouble(EPropId::Cv, 100e-9);
    EXPECT_EQ(Told(plain), "agrees");
}

TEST_F(RecordTruthTest, TheOtherConnectionIsAskedAbout)
{
    folder.Write("s.s2p", Measured(EHow::Series, part));
    EXPECT_EQ(Told(Capacitor(".SUBCKT c 1 2\nS1 1 2 3 2 Model=s.s2p\n.ENDS", 100e-9)),
              "series or shunt?: 's.s2p' holds the data of a series element, the sub-circuit wires "
              "it as a shunt element: is it Series or Shunt?");
    EXPECT_EQ(Told(Capacitor(".SUBCKT c 1 2\nS1 1 2 3 2 Model=s.s2p\nV1 3 2 0\n.ENDS", 100e-9)),
              "agrees");

    // A record that states what the file gives when it is taken the other way.
    CNullDiag diag;
    const auto data = network::ReadTouchstone(folder.Path() / "s.s2p", diag);
    const auto asShunt = network::TwoTerminalOf(*data, network::EConnection::Shunt);
    const auto wrong = network::PartValuesOf(*asShunt, network::EPartKind::Capacitor).capacitanceF;
    const std::string told = Told(Capacitor("s.s2p", wrong.value()));
    EXPECT_EQ(told.substr(0, 86), "series or shunt?: C is 98nF in 's.s2p' taken as a series "
                                  "element, which its data looks");
    EXPECT_NE(told.find("as a shunt element; the record says"), std::string::npos);
}

TEST_F(RecordTruthTest, WhatCannotBeJudgedIsToldWithTheReason)
{
    folder.Write("bad.s2p", "# Hz S RI R 50\n1 2\n");
    folder.Write("high.s2p", Measured(EHow::Series, {0.01, 1e-9, 100e-9}, 1e8));
    folder.Write("filter.s2p", "# Hz S RI R 50\n1e6 0.5 0 0.1 0 0.1 0 0.5 0\n"
                               "1e7 0.5 0 0.1 0 0.1 0 0.5 0\n");
    folder.Write("s.s2p", Measured(EHow::Series, part));
    struct
    {
        const CZovRcdProps& record;
        const char* text;
    } const cases[] = {
        {Capacitor("gone.s2p", 1e-7), "file 'gone.s2p' of record 'm' was not found"},
        {Capacitor("c.sp", 1e-7), "is a SPICE circuit"},
        {Capacitor("bad.s2p", 1e-7), "'bad.s2p': "},
        {Capacitor("filter.s2p", 1e-7), "neither a series nor a shunt element"},
        {Capacitor("high.s2p", 1e-7),
         "no C can be derived from 'high.s2p': from 100MHz to 1000MHz it looks like an inductor"},
        {Add(ERecordType::Capacitor, "s.s2p"), "the record states no C to compare"},
        {Add(ERecordType::Capacitor, ""), "the record has no model"},
        {library.Add(ERecordType::Ic), "only capacitors, inductors and resistors are compared"},
    };
    for (const auto& test : cases) {
        const SRecordTruth truth = Check(test.record);
        EXPECT_EQ(truth.verdict, ETruth::Unjudged) << test.text;
        EXPECT_NE(truth.text.find(test.text), std::string::npos) << truth.text;
    }
    CZovRcdProps& resistor = Add(ERecordType::Resistor, "");
    resistor.SetDiscreteModel({false, "", "", 47.0, {}, {}});
    EXPECT_EQ(Told(resistor), "can't be judged: its values are its model; there is nothing to "
                              "compare them with");
}

TEST_F(RecordTruthTest, AFileThatChangesIsReadAgain)
{
    const std::filesystem::path file = folder.Write("s.s2p", Measured(EHow::Series, part));
    const CZovRcdProps& record = Capacitor("s.s2p", 100e-9);
    EXPECT_EQ(Check(record).verdict, ETruth::Agrees);
    folder.Write("s.s2p", Measured(EHow::Series, {0.01, 1e-9, 1e-6}));
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) +
                                               std::chrono::seconds(2));
    EXPECT_EQ(Check(record).verdict, ETruth::AskUnit);
}

} // namespace
} // namespace zov::curve
