// SPDX-License-Identifier: Apache-2.0
#include "CurveFrameFixture.h"
#include "app/curves/CalcDlg.h"
#include "app/curves/EngineeringText.h"
#include "base/Number.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace zov::app {
namespace {

using TComplex = std::complex<double>;

constexpr double kReferenceOhm = 50.0;
const std::vector<double> kHz = {1e6, 2e7, 3e8, 1e10};

TComplex Omega(double hz)
{
    return {0.0, 2.0 * std::numbers::pi * hz};
}

struct CurveFilesTest : SCurveFrameFixture
{
    /// A Touchstone file of what `s` gives for a frequency, a row and a column from 0.
    std::filesystem::path
    Touchstone(const std::string& name, std::size_t ports,
               const std::function<TComplex(double, std::size_t, std::size_t)>& s) const
    {
        std::string text = "# Hz S RI R 50\n";
        for (const double hz : kHz) {
            text += FormatShortest(hz);
            for (std::size_t i = 0; i < ports * ports; ++i) {
                // The standard's order of two-ports is 11, 21, 12, 22.
                const TComplex value =
                    ports == 2 ? s(hz, i % ports, i / ports) : s(hz, i / ports, i % ports);
                text += ' ' + FormatShortest(value.real()) + ' ' + FormatShortest(value.imag());
                text += ports > 2 && i % ports + 1 == ports ? "\n" : "";
            }
            text += '\n';
        }
        return folder.Write(name, text);
    }
    /// Opens it with these parameters, ports ("As in the file", ...) and all elements.
    void OpenAll(const std::filesystem::path& path, const char* parameter, int modes)
    {
        answers.ThenDialog([=](QDialog& dialog) {
            auto* box = dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_PARAMETER"));
            box->setCurrentIndex(box->findText(QLatin1String(parameter)));
            dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_MODES"))->setCurrentIndex(modes);
            dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_ALL"))->click();
            dialog.accept();
        });
        Open(path);
    }
    [[nodiscard]] const curve::CCurve& Shown(const std::string& name) const
    {
        for (const SShownCurve& entry : frame.Page().Curves().Entries()) {
            if (entry.curve->Header().name == name) {
                return *entry.curve;
            }
        }
        ADD_FAILURE() << "no curve " << name;
        static const curve::CCurve none;
        return none;
    }
    void ExpectValues(const std::string& name, const std::function<TComplex(double)>& expected)
    {
        const curve::CCurve& curve = Shown(name);
        ASSERT_EQ(curve.Points().Count(), kHz.size()) << name;
        for (std::size_t i = 0; i < kHz.size(); ++i) {
            const TComplex value = curve.Points().At(i).values[0];
            EXPECT_EQ(curve.Points().At(i).x, kHz[i]);
            EXPECT_LT(std::abs(value - expected(kHz[i])), 1e-9 * (1 + std::abs(expected(kHz[i]))))
                << name << " at " << kHz[i];
        }
    }
    void SaveAll(const char* name)
    {
        List().clearSelection();
        answers.ThenPath(Text(folder.Path() / name));
        Trigger(ID_CURVE_SAVE_AS);
        WaitIdle();
    }
};

TEST_F(CurveFilesTest, ImpedancesAreThoseOfTheCircuit)
{
    const auto z = [](double hz) { return 3.0 + Omega(hz) * 1e-9; };
    // A shunt element: Z11 = Z21 = Z12 = Z22 = its impedance.
    OpenAll(Touchstone("shunt.s2p", 2,
                       [&](double hz, std::size_t row, std::size_t column) {
                           const TComplex s11 = -kReferenceOhm / (2.0 * z(hz) + kReferenceOhm);
                           return row == column ? s11 : 1.0 + s11;
                       }),
            "Z", 0);
    for (const char* name : {"Z11", "Z21", "Z12", "Z22"}) {
        ExpectValues(name, z);
    }
    EXPECT_EQ(frame.Page().Plot().Axes().yUnit, QStringLiteral("\u03a9"));

    Trigger(ID_CURVE_NEW_SET);
    const auto reflection = [&](double hz, std::size_t, std::size_t) {
        return (z(hz) - kReferenceOhm) / (z(hz) + kReferenceOhm);
    };
    OpenAll(Touchstone("one.s1p", 1, reflection), "Y", 0);
    ExpectValues("Y11", [&](double hz) { return 1.0 / z(hz); });
    EXPECT_EQ(frame.Page().Plot().Axes().yUnit, QStringLiteral("S"));
}

TEST_F(CurveFilesTest, MixedModesAreThoseOfAPairOfLines)
{
    // Lines of different loss and delay for the two modes; a symmetrical pair does not mix them.
    const auto mode = [](double hz, double loss, double delay, bool isThrough) {
        return isThrough ? loss * std::exp(-Omega(hz) * delay) : TComplex(0.1 * loss, 0.05);
    };
    const auto dd = [&](double hz, bool through) { return mode(hz, 0.9, 1e-11, through); };
    const auto cc = [&](double hz, bool through) { return mode(hz, 0.7, 2e-11, through); };
    const auto path =
        Touchstone("pair.s4p", 4, [&](double hz, std::size_t row, std::size_t column) {
            const bool through = row / 2 != column / 2;
            const double sign = row % 2 == column % 2 ? 1.0 : -1.0;
            return (cc(hz, through) + sign * dd(hz, through)) / 2.0;
        });
    OpenAll(path, "S", 2);
    ASSERT_EQ(frame.Page().Set().Curves().size(), 16U);
    ExpectValues("Sdd21_Diff(2)", [&](double hz) { return dd(hz, true); });
    ExpectValues("Sdd11_Diff(1)", [&](double hz) { return dd(hz, false); });
    ExpectValues("Scc43_Comm(4)", [&](double hz) { return cc(hz, true); });
    ExpectValues("Scd31_Comm(3)", [](double) { return TComplex(); });
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::MixedMode);

    SaveAll("modes.cur");
    Trigger(ID_CURVE_NEW_SET);
    Open(folder.Path() / "modes.cur");
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::MixedMode);
    EXPECT_EQ(Shown("Scd31_Comm(3)").Header().modes, curve::EModePair::CommDiff);
    ExpectValues("Sdd21_Diff(2)", [&](double hz) { return dd(hz, true); });
}

TEST_F(CurveFilesTest, FrequenciesWithoutImpedanceAreToldAndLeftOut)
{
    // Open at the first frequency, where it has none.
    OpenAll(Touchstone("open.s1p", 1,
                       [](double hz, std::size_t, std::size_t) {
                           return hz == kHz[0] ? TComplex(1.0) : TComplex(0.5);
                       }),
            "Z", 0);
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("The derived Z-parameters are singular at frequencies: "
                             "1000000.000000."));
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Warning);
    EXPECT_EQ(Shown("Z11").Points().Count(), kHz.size() - 1);
    EXPECT_NEAR(Shown("Z11").Points().At(0).values[0].real(), 150.0, 1e-9);
}

TEST_F(CurveFilesTest, MarkersReadClosedForms)
{
    constexpr double kOhm = 0.02;
    constexpr double kHenry = 1e-9;
    constexpr double kFarad = 1e-7;
    const double resonance = 1 / (2 * std::numbers::pi * std::sqrt(kHenry * kFarad));
    const auto z = [&](double hz) {
        return kOhm + Omega(hz) * kHenry + 1.0 / (Omega(hz) * kFarad);
    };
    std::string points = "Freq(Hz) Real(Ohm) Imag(Ohm)\n";
    const double hz[] = {resonance / 10, resonance, resonance * 10};
    for (const double at : hz) {
        points += FormatShortest(at) + ' ' + FormatShortest(z(at).real()) + ' ' +
                  FormatShortest(z(at).imag()) + '\n';
    }
    Open(folder.Write("c.cur", kHead + Block("C Z_real_imag REAL C", points)));
    CCurvePage& page = frame.Page();
    page.Markers().Add({page.Set().Curves()[0], 0});
    page.Markers().Add({page.Set().Curves()[0], 1});

    const auto magnitude = [&](int i) { return std::abs(z(hz[i])); };
    const auto decibel = [&](int i) { return 20 * std::log10(magnitude(i)); };
    const auto degrees = [&](int i) { return std::arg(z(hz[i])) * 180 / std::numbers::pi; };
    struct SCase
    {
        unsigned command;
        std::function<double(int)> value;
        const char16_t* unit;
    };
    const SCase cases[] = {
        {ID_CURVE_VIEW_MAGNITUDE, magnitude, u"\u03a9"},
        {ID_CURVE_VIEW_DB, decibel, u"dB\u03a9"},
        {ID_CURVE_VIEW_PHASE, degrees, u"\u00b0"},
        {ID_CURVE_VIEW_REAL, [&](int) { return kOhm; }, u"\u03a9"},
        {ID_CURVE_VIEW_SMITH, magnitude, u"\u03a9"},
    };
    const auto shown = [&](int row, int column) {
        return page.Markers().data(page.Markers().index(row, column), Qt::DisplayRole).toString();
    };
    const QString none;
    for (const SCase& one : cases) {
        Trigger(one.command);
        const QString unit = QString::fromUtf16(one.unit);
        EXPECT_EQ(shown(0, CMarkerModel::kY), EngineeringText(one.value(0), unit));
        EXPECT_EQ(shown(0, CMarkerModel::kDeltaY), none);
        if (one.command != ID_CURVE_VIEW_PHASE) { // 0 but for rounding there
            EXPECT_EQ(shown(1, CMarkerModel::kY), EngineeringText(one.value(1), unit));
        }
        EXPECT_EQ(shown(1, CMarkerModel::kDeltaX),
                  EngineeringText(resonance * 0.9, QStringLiteral("Hz"), 7));
        EXPECT_EQ(shown(1, CMarkerModel::kDeltaY),
                  EngineeringText(one.value(1) - one.value(0), unit));
    }
    // At a tenth of the resonance the reactance is -9.9 times that of L at the resonance.
    EXPECT_TRUE(shown(0, CMarkerModel::kValue).startsWith(QStringLiteral("20 m\u03a9 - j ")));
}

TEST_F(CurveFilesTest, CurvesOfDifferentUnitsKeepTheirOwn)
{
    Open(Impedance());
    OpenAll(TwoPort(), "S", 0);
    CCurvePage& page = frame.Page();
    EXPECT_EQ(page.Plot().Axes().yUnit, QString());
    page.Markers().Add({page.Set().Curves()[0], 0});
    page.Markers().Add({page.Set().Curves()[1], 0});
    const QStringList rows = page.Markers().AsText().split(QLatin1Char('\n'));
    EXPECT_EQ(rows[1].section(QLatin1Char('\t'), 3, 3), QStringLiteral("5 \u03a9"));
    EXPECT_EQ(rows[2].section(QLatin1Char('\t'), 3, 3), QStringLiteral("500 m"));
    EXPECT_EQ(rows[2].section(QLatin1Char('\t'), 5, 5), QString()) << "no difference";
    for (int row = 1; row < page.Curves().rowCount(); ++row) {
        page.Curves().SetShown(row, false);
    }
    EXPECT_EQ(page.Plot().Axes().yUnit, QStringLiteral("\u03a9")) << "of what is shown";
}

TEST_F(CurveFilesTest, SavedSetsComeBack)
{
    struct SCase
    {
        const char* banner;
        const char* header;
        const char* points;
        curve::EKind kind;
    };
    const SCase cases[] = {
        {"*******Frequency Domain Parameters*********\n", "A kz_real_imag DOT name",
         "1e6 1 -2 3 4 5 6\n2e6 0.1 1e-300\n", curve::EKind::FrequencyDomain},
        {"*******Voltage*********\n", "DASH vdd", "1e-9 -1.2\n2e-9 nan\n3e-9 inf\n",
         curve::EKind::Voltage},
        {"*******Voltage*********\n", "n1 V DASHDOTDOT vdd", "0 0.1\n",
         curve::EKind::VoltageFullHeader},
        {"*******ERL*********\n", "REAL e", "1 -20\n2 -21\n", curve::EKind::Erl},
        {"*******VSWR*********\n", "REAL w", "1 1.5\n", curve::EKind::Vswr},
    };
    int number = 0;
    for (const SCase& one : cases) {
        const std::string name = std::to_string(number++);
        Trigger(ID_CURVE_NEW_SET);
        Open(folder.Write(name + ".cur", one.banner + Block(one.header, one.points)));
        ASSERT_EQ(frame.Page().Set().Curves().size(), 1U) << name;
        const curve::CCurve before = *frame.Page().Set().Curves()[0];
        SaveAll((name + "-saved.cur").c_str());
        Trigger(ID_CURVE_NEW_SET);
        Open(folder.Path() / (name + "-saved.cur"));
        ASSERT_EQ(frame.Page().Set().Curves().size(), 1U) << name;
        const curve::CCurve& after = *frame.Page().Set().Curves()[0];
        EXPECT_EQ(frame.Page().Set().kind, one.kind) << name;
        EXPECT_EQ(after.Header(), before.Header()) << name;
        ASSERT_EQ(after.Points().Count(), before.Points().Count()) << name;
        for (std::size_t column = 0; column < curve::kPointNumbers; ++column) {
            const auto a = before.Points().Column(column);
            const auto b = after.Points().Column(column);
            ASSERT_EQ(a.size(), b.size()) << name;
            for (std::size_t i = 0; i < a.size(); ++i) {
                EXPECT_TRUE(a[i] == b[i] || (std::isnan(a[i]) && std::isnan(b[i]))) << name;
            }
        }
    }
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CurveFilesTest, NoSaveLosesAPartOrASign)
{
    Open(Impedance());
    Open(
        folder.Write("v.cur", "*******Voltage*********\n" + Block("n V REAL v", "1e6 1\n1e7 2\n")));
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::VoltageFullHeader);
    List().selectRow(0);
    answers.ThenPath(Text(folder.Path() / "z-again.cur"));
    Trigger(ID_CURVE_SAVE_AS);
    SaveAll("both.cur");
    EXPECT_TRUE(std::ranges::any_of(log.Lines(), [](const std::string& line) {
        return line.find("both.cur: 1 curves of real values are saved as complex ones") !=
               line.npos;
    }));

    answers.ThenDialog([](QDialog& shown) {
        auto& dialog = dynamic_cast<CCalcDlg&>(shown);
        dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_EXPRESSION"))
            ->setText(QStringLiteral("0-db(Z)"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.IsComputing(); }));
        dialog.accept();
    });
    Trigger(ID_CURVE_NEW_SET);
    Open(folder.Path() / "z-again.cur");
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::FrequencyDomain);
    EXPECT_EQ(frame.Page().Set().Curves()[0]->Points().At(0).values[0], TComplex(3, 4));
    Trigger(ID_CURVE_CALCULATE);
    ASSERT_EQ(frame.Page().Set().Curves().size(), 2U);
    List().selectRow(1);
    answers.ThenPath(Text(folder.Path() / "db.cur"));
    Trigger(ID_CURVE_SAVE_AS);
    Trigger(ID_CURVE_NEW_SET);
    Open(folder.Path() / "db.cur");
    const curve::CCurve& saved = *frame.Page().Set().Curves()[0];
    EXPECT_NEAR(saved.Points().At(0).values[0].real(), -20 * std::log10(5.0), 1e-12);
    EXPECT_TRUE(saved.Points().Column(2).empty()) << "still real";
    const SPlotAxes axes{
        QStringLiteral("Frequency"), QStringLiteral("Hz"), QStringLiteral("Value"), {}};
    EXPECT_EQ(frame.Page().Plot().Axes(), axes) << "and no voltage";
}

TEST_F(CurveFilesTest, TouchstoneFaultsAreTold)
{
    const std::string two = "[Version] 2.0\n# Hz RI\n[Number of Ports] 2\n";
    const std::string data = "[Network Data]\n1 1 2 3 4 5 6 7 8\n";
    struct SCase
    {
        std::string text;
        const char* name;
        const char* message;
    };
    const SCase cases[] = {
        {"1 2 3\n", "a.s1p",
         "a.s1p:1: The Touchstone file's header contains an invalid character or line."},
        {"# Hz\n[Version] 2.0\n", "b.ts", "b.ts:2: [Version] should be the first keyword."},
        {"[Version] 2.0\n[Number of Ports] 1\n", "c.TS",
         "c.TS:2: Option line should follow keyword [Version]."},
        {"# Hz S X\n", "d.s1p", "d.s1p:1: Unknown word in option line."},
        {two + "[Ports] 2\n", "e.ts", "e.ts:4: Unknown keyword."},
        {two + "[Matrix Format] Half\n", "f.ts", "f.ts:4: Unknown matrix format."},
        {"# Hz R\n1 2 3", "g.S1P", "g.S1P:1: Incomplete reference impedance list."},
        {"# Hz R nan\n1 2 3", "h.s1p", "h.s1p:1: Incorrect reference impedance list."},
        {two + "[Mixed-Mode Order] D1,2 E1,2\n", "i.ts", "i.ts:4: Incorrect mixed-mode order."},
        {two + "[Reference] 50 75\n[Mixed-Mode Order] D1,2 C1,2\n" + data, "j.ts",
         "j.ts: The reference impedances are different for the mixed-mode S parameter."},
        {"[Version] 2.0\n# Hz G\n[Number of Ports] 2\n[Mixed-Mode Order] D1,2 C1,2\n" + data,
         "k.ts", "k.ts: The diff-channel touchstone should be S|Z|Y type"},
        {"# Hz RI\n1 2\n", "l.s1p", "l.s1p:2: Incomplete matrix data."},
        {"[Version] 2.0\n# Hz\n" + data, "m.ts", "m.ts: Fail to get port number."},
        {"# Hz RI\n-1 2 3\n", "n.s1p",
         "n.s1p:2: The Touchstone file contains an invalid frequency value."},
    };
    for (const SCase& one : cases) {
        Open(folder.Write(one.name, one.text));
        const ui::SShownPrompt& told = answers.Shown().back();
        EXPECT_TRUE(told.text.contains(QLatin1String(one.message))) << told.text.toStdString();
        EXPECT_EQ(told.icon, ui::EIcon::Error);
        EXPECT_EQ(log.Lines().back(), told.text.toStdString());
    }
    Open(folder.Path() / "gone.s2p");
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("Failed to open the file.")));
    EXPECT_EQ(frame.Page().Set().Curves().size(), 0U);
    EXPECT_EQ(answers.Unexpected(), 0) << "no dialog for a file that could not be read";
}

TEST_F(CurveFilesTest, LinesThatAreNoPointsAreListed)
{
    const auto path = folder.Write(
        "odd.cur", kHead + Block("Z Z_real_imag REAL z", "1e6 1 2\n1e9 0.5\nword 1 2\n2e9 1 1\n"));
    Open(path);
    EXPECT_EQ(frame.Page().Set().Curves()[0]->Points().Count(), 2U);
    EXPECT_EQ(log.Lines().back(), PathText(path) + ": 2 lines are no points, the first is line 5");
    EXPECT_EQ(answers.Shown().size(), 0U);
}

TEST_F(CurveFilesTest, WhatNoFileHoldsIsTold)
{
    Open(Impedance());
    CCurveListModel& curves = frame.Page().Curves();
    ASSERT_TRUE(curves.setData(curves.index(0, 0), QString(600, QLatin1Char('n')), Qt::EditRole));
    SaveAll("long.cur");
    EXPECT_TRUE(
        answers.Shown().back().text.startsWith(QStringLiteral("a line of the curve would have ")))
        << answers.Shown().back().text.toStdString();
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "long.cur"));
    EXPECT_EQ(log.Lines().size(), 2U) << "the load and the fault, no save";
}

TEST_F(CurveFilesTest, CancelledDialogsChangeNothing)
{
    Open(Impedance());
    const std::size_t lines = log.Lines().size();
    for (const unsigned command :
         {ID_CURVE_OPEN, ID_CURVE_SAVE_AS, ID_CURVE_EXPORT_IMAGE, ID_CURVE_EXPORT_CSV}) {
        answers.ThenPaths({});
        Trigger(command);
        WaitIdle();
    }
    for (int i = 0; i < 2; ++i) {
        answers.ThenDialog([](QDialog& dialog) { dialog.reject(); });
    }
    Open(TwoPort());
    Trigger(ID_CURVE_CALCULATE);
    EXPECT_EQ(answers.Shown().size(), 6U);
    EXPECT_EQ(frame.Page().Set().Curves().size(), 1U);
    EXPECT_EQ(log.Lines().size(), lines);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 2)
        << "the two files that were opened";
    EXPECT_TRUE(answers.AllUsed());
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CurveFilesTest, SeveralFilesJoinOneSetInTheirOrder)
{
    const auto first = Impedance("a.cur");
    const auto second = Impedance("b.cur");
    answers.ThenDialog([](QDialog& dialog) { dialog.accept(); });
    frame.OpenFiles({Text(first), Text(folder.Path() / "gone.cur"), Text(TwoPort()), Text(second),
                     Text(folder.Path() / "A.CUR")});
    frame.OpenFiles({Text(Impedance("c.cur"))}); // waits for its turn
    WaitIdle();
    const auto entries = frame.Page().Curves().Entries();
    ASSERT_EQ(entries.size(), 7U);
    EXPECT_EQ(entries[0].source, Text(first));
    EXPECT_EQ(entries[5].source, Text(second));
    EXPECT_TRUE(entries[6].source.endsWith(QStringLiteral("c.cur")));
    std::vector<QString> told;
    for (const ui::SShownPrompt& prompt : answers.Shown()) {
        told.push_back(prompt.text);
    }
    EXPECT_NE(std::ranges::find(told, Text(folder.Path() / "gone.cur") +
                                          QStringLiteral(" cannot be opened.")),
              told.end());
    EXPECT_EQ(frame.findChild<QTabWidget*>(QStringLiteral("CurveSets"))->tabToolTip(0),
              QStringLiteral("(Load from file: %1)").arg(Text(folder.Path() / "c.cur")));
}

} // namespace
} // namespace zov::app
