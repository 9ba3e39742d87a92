// SPDX-License-Identifier: Apache-2.0
#include "CurveFrameFixture.h"
#include "app/curves/CalcDlg.h"
#include "app/curves/EngineeringText.h"
#include "app/curves/TouchstoneDlg.h"
#include "core/ZovLibrary.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QWheelEvent>
#include <qwt_text.h>
#include <qwt_transform.h>

#include <gtest/gtest.h>

namespace zov::app {
namespace {

using CurveFrameTest = SCurveFrameFixture;

TEST_F(CurveFrameTest, ReadersFaultsAreTold)
{
    struct SCase
    {
        const char* file;
        std::string bytes;
        const char* before;
        const char* behind;
    };
    const SCase cases[] = {
        {"empty.cur", "", "File ", " is not a valid curve file."},
        {"other.cur", "hello\n", "File ", " is not a valid Plenvo format curve file."},
        {"none.cur", kHead, "No valid curve found in the file :\n", ""},
        {"z.cur", "", "Cannot load the file ", " because it is already loaded."},
        {"missing.cur", "", "", " cannot be opened."},
    };
    Open(Impedance());
    ASSERT_EQ(answers.Shown().size(), 0U);
    for (const SCase& one : cases) {
        const std::filesystem::path path = folder.Path() / one.file;
        if (!one.bytes.empty() || std::string(one.file) == "empty.cur") {
            folder.Write(one.file, one.bytes);
        }
        Open(path);
        EXPECT_EQ(answers.Shown().back().text,
                  QLatin1String(one.before) + Text(path) + QLatin1String(one.behind));
        EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
        EXPECT_EQ(log.Lines().back(), answers.Shown().back().text.toStdString());
    }
    EXPECT_EQ(frame.Page().Set().Curves().size(), 1U);

    Open(folder.Write("k.cur", kHead + Block("K kz_real_imag REAL k", "1e6 1 2\n")));
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Cannot load the propagation curve because the impedance curves have "
                             "already been loaded."));
    Trigger(ID_CURVE_NEW_SET);
    Open(folder.Path() / "k.cur");
    EXPECT_EQ(frame.Page().Set().Curves().size(), 1U) << "a set of its own takes it";
    Open(Impedance());
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("Cannot load the impedance curve because the propagation curves have "
                             "already been loaded."));
}

TEST_F(CurveFrameTest, LoadsAndSavesAreJournaled)
{
    const std::filesystem::path path = Impedance();
    answers.ThenPaths({Text(path)});
    Trigger(ID_CURVE_OPEN);
    WaitIdle();
    EXPECT_EQ(answers.Shown().back().text.section(QStringLiteral(";;"), 0, 0),
              QStringLiteral("Curve File(*.cur)"));
    EXPECT_EQ(log.Lines().back(), "tavrely::open CurveFile {" + PathText(path) + "}");
    EXPECT_EQ(frame.Page().Set().name, "Curve");
    EXPECT_EQ(frame.Page().Set().description, "(Load from file: " + PathText(path) + ")");

    const std::filesystem::path copy = folder.Path() / "copy.cur";
    answers.ThenPath(Text(folder.Path() / "copy"));
    Trigger(ID_CURVE_SAVE_AS);
    EXPECT_EQ(log.Lines().back(),
              "tavrely::save Curve -Name {Z} -FileName {" + PathText(copy) +
                  "} -CurveGroup {Curve} -CurveFileType {CUR} -MatrixTypeToSave {Z0_real_imag}");
    Open(copy);
    EXPECT_EQ(frame.Page().Set().Curves().size(), 2U);
    EXPECT_EQ(frame.Page().Set().Curves()[1]->Points(), frame.Page().Set().Curves()[0]->Points());

    answers.ThenPath(Text(folder.Path() / "no" / "such.cur"));
    Trigger(ID_CURVE_SAVE_AS);
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
}

TEST_F(CurveFrameTest, AxesSayWhatIsSeen)
{
    Open(Impedance());
    const SPlotAxes magnitude{QStringLiteral("Frequency"), QStringLiteral("Hz"),
                              QStringLiteral("Magnitude"), QStringLiteral("\u03a9")};
    EXPECT_EQ(frame.Page().Plot().Axes(), magnitude);
    Q_EMIT frame.Page().Plot().PointedAt(QStringLiteral("5 \u03a9"));
    Trigger(ID_CURVE_VIEW_PHASE);
    EXPECT_EQ(frame.statusBar()->currentMessage(), QString()) << "that was the magnitude";
    EXPECT_EQ(frame.Page().Plot().Axes().yUnit, QStringLiteral("\u00b0"));
    EXPECT_TRUE(frame.Actions().Action(ID_CURVE_VIEW_PHASE)->isChecked());
    EXPECT_FALSE(IsEnabled(ID_CURVE_LOG_Y));
    Trigger(ID_CURVE_VIEW_SMITH);
    EXPECT_FALSE(IsEnabled(ID_CURVE_LOG_X));

    Trigger(ID_CURVE_NEW_SET);
    EXPECT_FALSE(IsEnabled(ID_CURVE_SAVE_AS)) << "the set is empty";
    Open(folder.Write("v.cur",
                      "*******Voltage*********\n" + Block("REAL vdd", "1e-9 1.2\n2e-9 1.1\n")));
    EXPECT_FALSE(IsEnabled(ID_CURVE_VIEW_DB)) << "real values have one view";
    EXPECT_EQ(frame.Page().Plot().Axes().yName, QStringLiteral("Voltage"));
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::Voltage);
}

TEST(EngineeringScale, OneIsOneOnALogarithmicScale)
{
    CEngineeringScaleDraw draw;
    draw.setScaleDiv(QwtScaleDiv(-1e10, 1e10));
    EXPECT_EQ(draw.label(1.0).text(), QStringLiteral("0")) << "what is left of a sum";
    draw.setScaleDiv(QwtScaleDiv(1.0, 1e10));
    draw.setTransformation(new QwtLogTransform);
    EXPECT_EQ(draw.label(1.0).text(), QStringLiteral("1"));
}

TEST_F(CurveFrameTest, TouchstoneFilesBecomeChosenCurves)
{
    answers.ThenDialog([](QDialog& dialog) {
        EXPECT_EQ(
            dialog.findChild<QTableView*>(QStringLiteral("ui_IDC_ENTRIES"))->model()->rowCount(),
            2);
        dialog.accept();
    });
    Open(TwoPort());
    ASSERT_EQ(frame.Page().Set().Curves().size(), 4U);
    const curve::CCurve& s21 = *frame.Page().Set().Curves()[2];
    EXPECT_EQ(s21.Header().name, "S21");
    EXPECT_EQ(s21.Header().legend, "part S21");
    EXPECT_EQ(s21.Points().At(1).x, 1e7);
    EXPECT_EQ(s21.Points().At(1).values[0], std::complex<double>(0.75, 0));

    // Z of a series element of 100 ohm does not exist; of a shunt element it does.
    Trigger(ID_CURVE_NEW_SET);
    answers.ThenDialog([](QDialog& dialog) {
        auto* parameter = dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_PARAMETER"));
        parameter->setCurrentIndex(parameter->findText(QStringLiteral("Z")));
        dialog.accept();
    });
    Open(TwoPort());
    EXPECT_EQ(answers.Shown().back().text,
              QStringLiteral("The derived Z-parameters are singular at frequencies: "
                             "1000000.000000, 10000000.000000."));

    answers.ThenDialog([](QDialog& dialog) {
        auto* modes = dialog.findChild<QComboBox*>(QStringLiteral("ui_IDC_MODES"));
        modes->setCurrentIndex(2);
        auto* order = dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_ORDER"));
        auto* fault = dialog.findChild<QLabel*>(QStringLiteral("ui_IDC_FAULT"));
        auto* ok = dialog.findChild<QDialogButtonBox*>(QStringLiteral("ui_IDC_BUTTONS"))
                       ->button(QDialogButtonBox::Ok);
        EXPECT_EQ(order->text(), QStringLiteral("D1,2 C1,2"));
        const char* const unpaired =
            "Each of the 2 ports has to stand once as S, or once in a D and once in a C.";
        const std::pair<const char*, const char*> faults[] = {
            {"X1", "'X1' is no port: write D1,2 for a differential pair, C1,2 for its common mode, "
                   "S3 for a single-ended port."},
            {"D1,2 S1", unpaired},
            {"D1,2", unpaired}};
        for (const auto& [bad, message] : faults) {
            order->setText(QLatin1String(bad));
            EXPECT_FALSE(ok->isEnabled()) << bad;
            EXPECT_EQ(fault->text(), QLatin1String(message)) << bad;
        }
        order->setText(QStringLiteral("D1,2 C1,2"));
        dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_NONE"))->click();
        EXPECT_FALSE(ok->isEnabled()) << "nothing is chosen";
        EXPECT_EQ(fault->text(), QStringLiteral("Choose at least one element."));
        dialog.findChild<QPushButton*>(QStringLiteral("ui_IDC_DIAGONAL"))->click();
        dialog.accept();
    });
    Open(TwoPort());
    ASSERT_EQ(frame.Page().Set().Curves().size(), 2U);
    const curve::CCurve& sdd = *frame.Page().Set().Curves()[0];
    EXPECT_EQ(sdd.Header().name, "Sdd11_Diff(1)");
    EXPECT_EQ(sdd.Header().modes, curve::EModePair::DiffDiff);
    EXPECT_NEAR(sdd.Points().At(1).values[0].real(), -0.5, 1e-12);
    EXPECT_EQ(frame.Page().Set().kind, curve::EKind::MixedMode);
}

TEST_F(CurveFrameTest, TheMouseZoomsPansAndMarks)
{
    Open(Impedance());
    frame.show();
    CCurvePlot& plot = frame.Page().Plot();
    QWidget* canvas = plot.canvas();
    ASSERT_TRUE(QTest::qWaitFor([&] { return canvas->width() > 200; }));
    const SPlotWindow all = plot.Window();
    EXPECT_EQ(all.xLow, 1e6);
    EXPECT_EQ(all.xHigh, 1e9);
    EXPECT_GE(all.yHigh, 10.0);

    QTest::mousePress(canvas, Qt::LeftButton, {}, {20, 20});
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, {120, 100});
    const SPlotWindow zoomed = plot.Window();
    EXPECT_LT(zoomed.xHigh - zoomed.xLow, (all.xHigh - all.xLow) / 2);
    Trigger(ID_CURVE_MOUSE_PAN);
    QTest::mousePress(canvas, Qt::LeftButton, {}, {100, 100});
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, {60, 100});
    EXPECT_GT(plot.Window().xLow, zoomed.xLow);
    EXPECT_NEAR(plot.Window().xHigh - plot.Window().xLow, zoomed.xHigh - zoomed.xLow, 1.0);
    const QPoint middle = canvas->rect().center();
    QWheelEvent wheel(middle, canvas->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(canvas, &wheel);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(IsEnabled(ID_CURVE_ZOOM_BACK));
        Trigger(ID_CURVE_ZOOM_BACK);
    }
    EXPECT_EQ(plot.Window(), all);
    EXPECT_FALSE(IsEnabled(ID_CURVE_ZOOM_BACK));
    Trigger(ID_CURVE_ZOOM_FORWARD);
    EXPECT_EQ(plot.Window(), zoomed);
    QTest::keyClick(&plot, Qt::Key_Home);
    EXPECT_EQ(plot.Window(), all);

    Trigger(ID_CURVE_LOG_X);
    Trigger(ID_CURVE_MOUSE_MARKER);
    const auto pixelOf = [&](double x, double y) {
        return QPoint(qRound(plot.transform(QwtPlot::xBottom, x)),
                      qRound(plot.transform(QwtPlot::yLeft, y)));
    };
    QTest::mouseClick(canvas, Qt::LeftButton, {}, pixelOf(1e6, 5.0));
    QTest::mouseClick(canvas, Qt::LeftButton, {}, pixelOf(1.1e7, 10.0));
    CMarkerModel& markers = frame.Page().Markers();
    ASSERT_EQ(markers.rowCount(), 2);
    EXPECT_EQ(
        markers.AsText().split(QLatin1Char('\n'))[2],
        QStringLiteral("M2\tfirst\t10 MHz\t10 \u03a9\t9 MHz\t5 \u03a9\t6 \u03a9 + j 8 \u03a9"));
    QTest::mousePress(canvas, Qt::LeftButton, {}, pixelOf(1e7, 10.0));
    QTest::mouseRelease(canvas, Qt::LeftButton, {}, pixelOf(0.9e9, 3.0));
    EXPECT_EQ(markers.Markers()[1].point, 2U) << "dragged along its curve";
    Trigger(ID_CURVE_COPY_MARKERS);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), markers.AsText());
    List().selectRow(0);
    Trigger(ID_CURVE_REMOVE);
    EXPECT_EQ(markers.rowCount(), 0) << "gone with its curve";
    Open(Impedance());
    EXPECT_EQ(frame.Page().Set().Curves().size(), 1U) << "the file may be loaded again";
    EXPECT_EQ(answers.Unexpected(), 0);
}

TEST_F(CurveFrameTest, TheListShowsHidesAndStylesCurves)
{
    Open(Impedance("a.cur"));
    Open(Impedance("b.cur"));
    CCurveListModel& curves = frame.Page().Curves();
    EXPECT_NE(curves.At(0).color, curves.At(1).color);
    curves.setData(curves.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    EXPECT_EQ(curves.CountShown(), 1);
    EXPECT_FALSE(IsEnabled(ID_CURVE_HIDE_OTHERS));
    List().selectRow(0);
    EXPECT_TRUE(IsEnabled(ID_CURVE_HIDE_OTHERS));
    Trigger(ID_CURVE_HIDE_OTHERS);
    EXPECT_TRUE(curves.At(0).shown);
    EXPECT_FALSE(curves.At(1).shown);
    Trigger(ID_CURVE_SHOW_ALL);
    EXPECT_EQ(curves.CountShown(), 2);
    curves.SetStyle(0, curve::ELineStyle::DashDot);
    EXPECT_EQ(curves.PenOf(curves.At(0)).style(), Qt::DashDotLine);
    EXPECT_TRUE(curves.setData(curves.index(0, 0), QStringLiteral("new name"), Qt::EditRole));
    answers.ThenPath(Text(folder.Path() / "both.cur"));
    List().clearSelection();
    Trigger(ID_CURVE_SAVE_AS);
    const std::string saved = folder.Read("both.cur");
    EXPECT_NE(saved.find("Z\tZ0_real_imag\tDASHDOT\tnew_name"), std::string::npos) << saved;
    EXPECT_EQ(log.Lines().size(), 4U) << "two loads, a line for each saved curve";
}

TEST_F(CurveFrameTest, RecordsAreComparedByTheirImpedance)
{
    CZovLibrary library;
    for (const double farad : {1e-7, 1e-6}) {
        CZovRcdProps& record = library.Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, farad > 5e-7 ? "1u" : "100n");
        record.SetDouble(EPropId::Cnom, farad);
        SDiscreteModel model;
        model.resistance = 0.01;
        model.inductance = 1e-9;
        model.capacitance = farad;
        record.SetDiscreteModel(model);
    }
    library.Add(ERecordType::Connector).SetString(EPropId::ModelName, "plug");
    library.Add(ERecordType::Connector).SetString(EPropId::ModelName, "socket");
    std::vector<SImpedanceOf> records;
    for (const CZovRcdProps* record : library.Records()) {
        records.push_back({record, folder.Path()});
    }
    frame.ShowImpedances(records);
    library.Clear();
    WaitIdle();
    ASSERT_EQ(frame.Page().Set().Curves().size(), 2U);
    EXPECT_EQ(frame.Page().Set().Curves()[0]->Header().name, "100n");
    EXPECT_TRUE(frame.Page().Plot().IsLogX() && frame.Page().Plot().IsLogY());
    EXPECT_EQ(frame.Page().Plot().Axes().yUnit, QStringLiteral("\u03a9"));
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Warning) << "a connector has none";
    EXPECT_TRUE(answers.Shown().back().text.endsWith(
        QStringLiteral("\n1 more records have no impedance; the \"Output\" pane lists them.")))
        << answers.Shown().back().text.toStdString();
    EXPECT_EQ(log.Lines().size(), 2U);
}

TEST_F(CurveFrameTest, TheCalculatorMakesCurvesAndShowsFaultsAtTheirPlace)
{
    Open(Impedance());
    Open(folder.Write("v.cur",
                      kHead + Block("V V_real_imag REAL second", "1e6 1 0\n1e7 2 0\n1e9 4 0\n")));
    answers.ThenDialog([](QDialog& shown) {
        auto& dialog = dynamic_cast<CCalcDlg&>(shown);
        auto* expression = dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_EXPRESSION"));
        auto* caret = dialog.findChild<QLabel*>(QStringLiteral("ui_IDC_CARET"));
        auto* message = dialog.findChild<QLabel*>(QStringLiteral("ui_IDC_MESSAGE"));
        auto* ok = dialog.findChild<QDialogButtonBox*>(QStringLiteral("ui_IDC_BUTTONS"))
                       ->button(QDialogButtonBox::Ok);
        struct SCase
        {
            const char* expression;
            const char* message;
            int caret;
        };
        const SCase faults[] = {
            {"mag(Z) + * 2", "syntax error!", 9},
            {"mag(Z) & 2", "illegal operator: &", 7},
            {"mag(Z) 2", "This expression can't be parse completely.", 7},
            {"mag(Z)*1.2.3", "illegal number format.", 7},
            {"mag(Z)*k", "Parameter \"k\" is not defined.", 7},
            {"mag(Z)+none(2)", "Function none...) not found", 7},
            {"max(mag(Z))", "',' is expected.", 10},
            {"log(0 - mag(Z))", "<log> operand is negative.", 0},
            {"log10(0 - mag(Z))", "<log10> operand is negative.", 0},
            {"mag(Z) + sqrt(-1)", "<sqrt> operand is negative.", 9},
            {"asin(mag(Z))", "<asin> operand's absolute value > 1.", 0},
            {"acos(mag(Z))", "<acos> operand's absolute value > 1.", 0},
            {"pow(mag(Z)-mag(Z),-1)", "pow value is infinite.", 0},
            {"mag(Z):2", "<:> usage is wrong: three operands are expected.", 6},
            {"mag(Z)?2", "This expression can't be evaluated.", -1},
            {"mag(Z)/0", "divide by 0.", 6},
        };
        for (const SCase& one : faults) {
            expression->setText(QLatin1String(one.expression));
            ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.IsComputing(); }));
            EXPECT_TRUE(message->text().startsWith(QLatin1String(one.message)))
                << one.expression << ": " << message->text().toStdString();
            EXPECT_EQ(caret->text().section(QLatin1Char('\n'), 1),
                      one.caret < 0 ? QString()
                                    : QString(one.caret, QLatin1Char(' ')) + QLatin1Char('^'))
                << one.expression;
            EXPECT_FALSE(ok->isEnabled());
        }
        QAbstractItemModel* parameters =
            dialog.findChild<QTableView*>(QStringLiteral("ui_IDC_PARAMETERS"))->model();
        EXPECT_FALSE(parameters->setData(parameters->index(0, 0), QStringLiteral("2k")));
        EXPECT_TRUE(parameters->setData(parameters->index(0, 0), QStringLiteral("k")));
        EXPECT_TRUE(parameters->setData(parameters->index(0, 1), QStringLiteral("m*2")));
        EXPECT_TRUE(parameters->setData(parameters->index(1, 0), QStringLiteral("m")));
        EXPECT_TRUE(parameters->setData(parameters->index(1, 1), QStringLiteral("5")));
        expression->clear();
        Q_EMIT dialog.findChild<QListView*>(QStringLiteral("ui_IDC_CURVES"))
            ->activated(dialog.findChild<QListView*>(QStringLiteral("ui_IDC_CURVES"))
                            ->model()
                            ->index(0, 0));
        EXPECT_EQ(expression->text(), QStringLiteral("mag(Z)"));
        EXPECT_TRUE(parameters->setData(parameters->index(1, 1), QStringLiteral("1/0")));
        expression->setText(QStringLiteral("mag(Z)*k"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.IsComputing(); }));
        EXPECT_TRUE(
            message->text().startsWith(QStringLiteral("Parameter \"k\" can't be evalutated.")))
            << message->text().toStdString();
        EXPECT_TRUE(parameters->setData(parameters->index(1, 1), QStringLiteral("5")));
        expression->setText(QStringLiteral("mag(Z)*k/re($2)"));
        dialog.findChild<QLineEdit*>(QStringLiteral("ui_IDC_NAME"))
            ->setText(QStringLiteral("ratio"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.IsComputing(); }));
        EXPECT_EQ(message->text(), QStringLiteral("3 points"));
        EXPECT_TRUE(ok->isEnabled());
        expression->setText(QStringLiteral("mag(Z)*k/re($2) + "));
        EXPECT_FALSE(ok->isEnabled()) << "what is there belongs to another expression";
        QTest::keyClick(expression, Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.IsComputing(); }));
        EXPECT_TRUE(dialog.isVisible()) << "with a fault it stays";
        expression->setText(QStringLiteral("mag(Z)*k/re($2)"));
        QTest::keyClick(expression, Qt::Key_Return);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
    });
    Trigger(ID_CURVE_CALCULATE);
    ASSERT_EQ(frame.Page().Set().Curves().size(), 3U);
    const curve::CCurve& made = *frame.Page().Set().Curves()[2];
    EXPECT_EQ(made.Header().legend, "ratio");
    EXPECT_EQ(made.Points().At(1).values[0].real(), 50.0);
    answers.ThenDialog([](QDialog& shown) {
        EXPECT_EQ(dynamic_cast<CCalcDlg&>(shown).Parameters().size(), 2U)
            << "kept for the next time";
    });
    Trigger(ID_CURVE_CALCULATE);
    EXPECT_EQ(frame.Page().Set().Curves().size(), 3U);
}

TEST_F(CurveFrameTest, FilesAreDropped)
{
    const auto enters = [this](const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(&frame, &enter);
        return enter.isAccepted();
    };
    EXPECT_FALSE(enters({}));
    EXPECT_FALSE(enters({QUrl(QStringLiteral("https://example.org/z.cur"))}));
    for (const char* name : {"a.cur", "b.cur"}) { // the second while the first is being read
        const QList<QUrl> urls = {QUrl::fromLocalFile(Text(Impedance(name)))};
        EXPECT_TRUE(enters(urls));
        QMimeData data;
        data.setUrls(urls);
        QDropEvent drop({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&frame, &drop);
    }
    WaitIdle();
    EXPECT_EQ(frame.Page().Set().Curves().size(), 2U);
}

TEST_F(CurveFrameTest, EachCommandHasAHandler)
{
    for (const ui::SCommand& command : CurveCommands()) {
        EXPECT_NE(frame.FindTarget(command.id), nullptr) << command.name;
    }
    Open(Impedance());
    Trigger(ID_CURVE_CLOSE_SET);
    EXPECT_EQ(frame.Page().Curves().rowCount(), 0);
    EXPECT_EQ(frame.findChild<QTabWidget*>(QStringLiteral("CurveSets"))->count(), 1);
}

} // namespace
} // namespace zov::app
