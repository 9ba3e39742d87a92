// SPDX-License-Identifier: Apache-2.0
#include "app/curves/CurveExport.h"

#include "base/File.h"
#include "base/Text.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPdfWriter>
#include <QPrinter>
#include <QSvgGenerator>
#include <qwt_plot.h>
#include <qwt_plot_renderer.h>

namespace zov::app {
namespace {

constexpr double kScreenDpi = 96.0;
constexpr double kMmPerInch = 25.4;
constexpr int kPaperDpi = 300;

/// Paper is white, whatever theme is on; what is drawn follows.
class CPaperColors
{
public:
    explicit CPaperColors(QwtPlot& plot)
        : m_plot(plot)
        , m_before(plot.palette())
        , m_wasOwn(plot.testAttribute(Qt::WA_SetPalette))
    {
        QPalette paper(Qt::white);
        for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Window}) {
            paper.setColor(role, Qt::white);
        }
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText}) {
            paper.setColor(role, Qt::black);
        }
        plot.setPalette(paper);
    }
    ~CPaperColors() { m_plot.setPalette(m_wasOwn ? m_before : QPalette()); }
    CPaperColors(const CPaperColors&) = delete;
    CPaperColors& operator=(const CPaperColors&) = delete;

private:
    QwtPlot& m_plot;
    QPalette m_before;
    bool m_wasOwn;
};

QSizeF SizeMm(const QwtPlot& plot)
{
    return QSizeF(plot.size()) * kMmPerInch / kScreenDpi;
}

void DrawSvg(QwtPlot& plot, QBuffer& out)
{
    QSvgGenerator svg;
    svg.setOutputDevice(&out);
    svg.setSize(plot.size());
    svg.setViewBox(plot.rect());
    svg.setResolution(static_cast<int>(kScreenDpi));
    QPainter painter(&svg);
    QwtPlotRenderer().render(&plot, &painter, plot.rect());
}

void DrawPdf(QwtPlot& plot, QBuffer& out)
{
    QPdfWriter pdf(&out);
    pdf.setPageSize(QPageSize(SizeMm(plot), QPageSize::Millimeter));
    pdf.setPageMargins({});
    pdf.setResolution(kPaperDpi);
    QPainter painter(&pdf);
    QwtPlotRenderer().render(&plot, &painter,
                             QRectF({}, pdf.pageLayout().paintRectPixels(kPaperDpi).size()));
}

} // namespace

QImage PlotImage(QwtPlot& plot, double scale)
{
    const CPaperColors paper(plot);
    QImage image(plot.size() * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    const int perMeter = qRound(kScreenDpi * scale / kMmPerInch * 1000.0);
    image.setDotsPerMeterX(perMeter);
    image.setDotsPerMeterY(perMeter);
    QPainter painter(&image);
    QwtPlotRenderer().render(&plot, &painter, QRectF(image.rect()));
    return image;
}

CResult<void> ExportPlot(QwtPlot& plot, const std::filesystem::path& path)
{
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    const std::string ending = ExtensionOf(path);
    if (EqualsNoCase(ending, ".png")) {
        PlotImage(plot).save(&out, "PNG");
    } else if (EqualsNoCase(ending, ".svg")) {
        const CPaperColors paper(plot);
        DrawSvg(plot, out);
    } else if (EqualsNoCase(ending, ".pdf")) {
        const CPaperColors paper(plot);
        DrawPdf(plot, out);
    } else {
        return Fail(EErr::Argument,
                    "'" + PathText(path) + "' is no image file, expected .png, .svg or .pdf");
    }
    if (out.size() == 0) {
        return Fail(EErr::Io, "the image could not be made");
    }
    return WriteFileAtomic(path, {out.data().constData(), static_cast<std::size_t>(out.size())});
}

CResult<void> PrintPlot(QwtPlot& plot, QPrinter& printer)
{
    const CPaperColors paper(plot);
    QPainter painter;
    if (!painter.begin(&printer)) {
        const QString target = printer.outputFileName();
        return Fail(EErr::Io,
                    "cannot print to '" +
                        (target.isEmpty() ? printer.printerName() : target).toStdString() + "'");
    }
    QSizeF size = plot.size();
    size.scale(printer.pageRect(QPrinter::DevicePixel).size(), Qt::KeepAspectRatio);
    QwtPlotRenderer().render(&plot, &painter, QRectF({}, size));
    return {};
}

} // namespace zov::app
