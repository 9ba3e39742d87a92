// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveExport.h"

#include "CurveFrameFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <set>

namespace zov::app {
namespace {

struct CurveExportTest : SCurveFrameFixture
{
    CurveExportTest()
    {
        frame.resize(900, 600);
        frame.show();
    }
    void ExportImage(const char* name)
    {
        answers.ThenPath(Text(folder.Path() / name));
        Trigger(ID_CURVE_EXPORT_IMAGE);
    }
    std::string Csv(const char* name)
    {
        answers.ThenPath(Text(folder.Path() / name));
        Trigger(ID_CURVE_EXPORT_CSV);
        WaitIdle();
        return folder.Read(std::string(name) + ".csv");
    }
};

std::size_t CountOf(const std::string& bytes, const std::string& what)
{
    std::size_t count = 0;
    for (std::size_t at = bytes.find(what); at != bytes.npos; at = bytes.find(what, at + 1)) {
        ++count;
    }
    return count;
}

TEST_F(CurveExportTest, CsvHasThePointsOfAllOrOfTheSelectedCurves)
{
    Open(Impedance());
    Open(folder.Write(
        "odd.cur", kHead + Block("A,\"b\" V_real_imag REAL second", "1 0.1 -0\n2 1e-320 inf\n")));
    const std::string first = "Z,1e+06,3,4\nZ,1e+07,6,8\nZ,1e+09,0.3,0.4\n";
    EXPECT_EQ(Csv("all"), "curve,x,real,imag\n" + first +
                              "\"A,\"\"b\"\"\",1,0.1,-0\n\"A,\"\"b\"\"\",2,1e-320,inf\n");
    List().selectRow(0);
    EXPECT_EQ(Csv("one"), "curve,x,real,imag\n" + first);
    Trigger(ID_CURVE_COPY_DATA);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "curve,x,real,imag\n" + first);

    Trigger(ID_CURVE_NEW_SET);
    for (const char* legend : {"one", "other"}) {
        Open(folder.Write(std::string(legend) + ".cur",
                          kHead + Block(std::string("S21 V_real_imag REAL ") + legend, "1 2 3\n")));
    }
    EXPECT_EQ(Csv("same"), "curve,x,real,imag\none,1,2,3\nother,1,2,3\n");

    Trigger(ID_CURVE_NEW_SET);
    Open(folder.Write("v.cur", "*******VSWR*********\n" + Block("REAL w", "1e9 1.5\n2e9 1.25\n")));
    EXPECT_EQ(Csv("real"), "curve,x,value\nw,1e+09,1.5\nw,2e+09,1.25\n");
}

TEST_F(CurveExportTest, ImagesShowThePlotInItsSize)
{
    Open(Impedance());
    const QSize size = frame.Page().Plot().size();
    ExportImage("plot.png");
    const QImage png(Text(folder.Path() / "plot.png"));
    EXPECT_EQ(png.size(), size * 2);
    EXPECT_EQ(png.pixelColor(1, 1), QColor(Qt::white));
    const QColor line = frame.Page().Curves().At(0).color;
    int ofLine = 0;
    for (int x = 0; x < png.width(); ++x) {
        for (int y = 0; y < png.height(); ++y) {
            ofLine += png.pixelColor(x, y) == line ? 1 : 0;
        }
    }
    EXPECT_GT(ofLine, png.width() / 4) << "the curve is drawn in its colour";

    ExportImage("plot.svg");
    QXmlStreamReader svg(QString::fromStdString(folder.Read("plot.svg")));
    std::set<QString> elements;
    QString box;
    QString texts;
    while (!svg.atEnd()) {
        svg.readNext();
        if (svg.isStartElement()) {
            elements.insert(svg.name().toString());
            box =
                box.isEmpty() ? svg.attributes().value(QStringLiteral("viewBox")).toString() : box;
        }
        texts += svg.isCharacters() ? svg.text().toString() : QString();
    }
    EXPECT_FALSE(svg.hasError()) << svg.errorString().toStdString();
    EXPECT_EQ(box, QStringLiteral("0 0 %1 %2").arg(size.width()).arg(size.height()));
    EXPECT_TRUE(elements.count(QStringLiteral("polyline")) > 0);
    EXPECT_TRUE(texts.contains(QStringLiteral("Frequency [Hz]"))) << texts.toStdString();

    ExportImage("plot.PDF");
    const std::string pdf = folder.Read("plot.PDF");
    EXPECT_TRUE(pdf.starts_with("%PDF-1."));
    EXPECT_NE(pdf.rfind("%%EOF"), pdf.npos);
    EXPECT_EQ(CountOf(pdf, "/Type /Page\n"), 1U);
    const auto media = QRegularExpression(QStringLiteral("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]"))
                           .match(QString::fromLatin1(pdf.data(), static_cast<int>(pdf.size())));
    ASSERT_TRUE(media.hasMatch());
    EXPECT_NEAR(media.captured(1).toDouble(), size.width() * 0.75, 1.0) << "points of 1/72 inch";
    EXPECT_NEAR(media.captured(2).toDouble(), size.height() * 0.75, 1.0);

    Trigger(ID_CURVE_COPY_IMAGE);
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), png.size());
}

TEST_F(CurveExportTest, PaperIsWhiteInADarkTheme)
{
    QPalette dark;
    for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Window}) {
        dark.setColor(role, QColor(30, 30, 30));
    }
    dark.setColor(QPalette::Text, Qt::white);
    frame.setPalette(dark);
    Open(Impedance());
    const QPalette before = frame.Page().Plot().palette();
    EXPECT_EQ(PlotImage(frame.Page().Plot()).pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(frame.Page().Plot().palette(), before);
}

TEST_F(CurveExportTest, ImagesThatCantBeWrittenAreTold)
{
    Open(Impedance());
    ExportImage("no/such/folder.png");
    EXPECT_TRUE(answers.Shown().back().text.contains(QStringLiteral("folder.png")))
        << answers.Shown().back().text.toStdString();
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
    const CResult<void> other = ExportPlot(frame.Page().Plot(), folder.Path() / "plot.bmp");
    ASSERT_FALSE(other);
    EXPECT_NE(other.Error().text.find("expected .png, .svg or .pdf"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "plot.bmp"));
    answers.ThenPath(Text(folder.Path() / "no" / "such.csv"));
    Trigger(ID_CURVE_EXPORT_CSV);
    EXPECT_EQ(answers.Shown().back().icon, ui::EIcon::Error);
}

TEST_F(CurveExportTest, PrintsOnOnePage)
{
    Open(Impedance());
    const auto print = [this](const std::string& name, QDialog::DialogCode code) {
        answers.ThenDialog([&, path = Text(folder.Path() / name)](QDialog& dialog) {
            QPrinter& printer = *dynamic_cast<QPrintDialog&>(dialog).printer();
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(path);
            EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
            dialog.QDialog::done(code);
        });
        Trigger(ID_CURVE_PRINT);
    };
    print("printed.pdf", QDialog::Accepted);
    EXPECT_EQ(CountOf(folder.Read("printed.pdf"), "/Type /Page\n"), 1U);
    print("cancelled.pdf", QDialog::Rejected);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "cancelled.pdf"));
    print("no/such.pdf", QDialog::Accepted);
    EXPECT_TRUE(answers.Shown().back().text.startsWith(QStringLiteral("cannot print to '")))
        << answers.Shown().back().text.toStdString();
}

} // namespace
} // namespace zov::app
