// SPDX-License-Identifier: Apache-2.0
// The curve frame's files: loading and saving of curves, images, the calculator's results.
#include "app/RunBeside.h"
#include "app/curves/CalcDlg.h"
#include "app/curves/CurveExport.h"
#include "app/curves/GeneralCurveFrm.h"
#include "app/curves/TouchstoneDlg.h"
#include "base/File.h"
#include "core/ZovLibrary.h"
#include "curve/CurveCsv.h"
#include "curve/CurveMessages.h"
#include "curve/ImpedanceCurve.h"
#include "network/TouchstonePorts.h"
#include "network/TouchstoneReader.h"
#include "ui/Prompt.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QTabWidget>

#include <algorithm>
#include <functional>
#include <optional>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

const char* const kTouchstoneFilter =
    "Touchstone files (*.s?p *.s??p *.ts *.S?P *.S??P *.TS);;All files (*)";
const char* const kImageFilter = "PNG image (*.png);;SVG image (*.svg);;PDF document (*.pdf)";

fs::path PathOf(const QString& path)
{
    return TextPath(path.toStdString());
}

QString Text(const SError& error)
{
    QString text = QString::fromStdString(error.Full());
    for (const std::string& note : error.notes) {
        text += QLatin1Char('\n') + QString::fromStdString(note);
    }
    return text;
}

bool IsTouchstone(const QString& path)
{
    return network::PortCountOfName(PathOf(path)) > 0 ||
           path.endsWith(QStringLiteral(".ts"), Qt::CaseInsensitive);
}

CResult<void> WriteCsvFile(const fs::path& path, const std::vector<curve::TCurvePtr>& curves)
{
    ASSIGN_OR_RETURN(const std::unique_ptr<CAtomicFile> file, CAtomicFile::Create(path));
    curve::WriteCurveCsv(curves, *file);
    return file->Commit();
}

bool IsComplex(const curve::TCurvePtr& curve)
{
    return !curve->Points().Column(2).empty();
}

/// A file has values of one kind. In one of real values complex ones would lose a part, and real
/// ones alone would come back as complex.
curve::EKind KindToSave(const std::vector<curve::TCurvePtr>& curves, curve::EKind ofSet)
{
    if (std::ranges::any_of(curves, IsComplex)) {
        return HasComplexValues(ofSet) ? ofSet : curve::EKind::FrequencyDomain;
    }
    const bool isReal = !HasComplexValues(ofSet) && ofSet != curve::EKind::Fixed;
    return isReal ? ofSet : curve::EKind::Voltage;
}

/// The system's own dialog, which tests answer like the program's.
bool IsAccepted(QDialog& dialog)
{
    if (ui::CScriptedAnswers* scripted = ui::CScriptedAnswers::Active()) {
        scripted->DriveDialog(dialog);
        return dialog.result() == QDialog::Accepted;
    }
    return dialog.exec() == QDialog::Accepted;
}

/// A curve's title, an expression for example, without what a file name can't have.
QString FileNameOf(QString title)
{
    for (QChar& letter : title) {
        if (letter < QLatin1Char(' ') || QStringLiteral("/\\:*?\"<>|").contains(letter)) {
            letter = QLatin1Char('_');
        }
    }
    return title;
}

/// "Freq(Hz) Value": what the columns of a computed curve are, so that a saved one tells it.
std::string TitlesOf(const SPlotAxes& axes)
{
    if (axes.xUnit.isEmpty()) {
        return {};
    }
    QString name = axes.xName;
    name.replace(QLatin1Char(' '), QLatin1Char('_'));
    return QStringLiteral("%1(%2)\tValue").arg(name, axes.xUnit).toStdString();
}

/// What is saved as one file.
struct SSaving
{
    fs::path path;
    std::vector<curve::TCurvePtr> curves;
    std::string group;
    curve::EKind kind;
};

CResult<void> Save(const SSaving& saving, curve::CCurveJournal& journal)
{
    curve::SCurveWriteOptions options;
    options.curveGroup = saving.group;
    if (saving.curves.size() == 1) {
        options.matrixType = saving.curves.front()->Header().valueName;
        return SaveCurveFile(saving.path, saving.curves.front(), saving.kind, options, journal);
    }
    RETURN_IF_ERROR(SaveCurves(saving.path, saving.curves, saving.kind, options));
    for (const curve::TCurvePtr& curve : saving.curves) {
        const curve::SCurveHeader& header = curve->Header();
        JournalSave(journal, {header.name.empty() ? header.legend : header.name,
                              PathText(saving.path), saving.group, header.valueName});
    }
    return {};
}

class CTextWriter final : public CByteWriter
{
public:
    void Append(std::string_view bytes) override { m_text += bytes; }
    [[nodiscard]] const std::string& Bytes() const { return m_text; }

private:
    std::string m_text;
};

} // namespace

/// Files on their way into a set.
struct CUiGeneralCurveFrm::SOpened
{
    struct SFile
    {
        QString path;
        std::optional<CResult<curve::SCurveFile>> curves;
        std::optional<CResult<network::CNetworkData>> network;
        std::vector<SDiag> remarks;
    };
    CCurvePage* page = nullptr;
    curve::CCurveSet set; ///< of the page, with what the files before have brought
    std::vector<SFile> files;

    void Read(SFile& file)
    {
        const fs::path path = PathOf(file.path);
        if (IsTouchstone(file.path)) {
            CVectorDiag diag;
            file.network = network::ReadTouchstone(path, diag);
            file.remarks = diag.Diags();
            return;
        }
        file.curves = curve::ReadCurveFile(path, set);
        if (file.curves->Ok()) {
            curve::CCurveJournal quiet;
            AddCurveFile(path, **file.curves, set, quiet);
        }
    }
};

bool CUiGeneralCurveFrm::IsCurveFile(const QString& path)
{
    return path.endsWith(QLatin1String(curve::kCurveExtension.data()), Qt::CaseInsensitive) ||
           IsTouchstone(path);
}

void CUiGeneralCurveFrm::OnCurveOpen()
{
    const QString filter = QLatin1String(curve::kCurveFileFilter.data()) + QStringLiteral(";;") +
                           tr(kTouchstoneFilter);
    const QStringList paths = ui::CPrompt::OpenFiles(this, tr("Open Curves"), filter);
    if (!paths.isEmpty()) {
        OpenFiles(paths);
    }
}

void CUiGeneralCurveFrm::OpenFiles(const QStringList& paths)
{
    RunWhenIdle([this, paths, page = &Page()] { StartOpening(paths, *page); });
}

void CUiGeneralCurveFrm::StartOpening(const QStringList& paths, CCurvePage& page)
{
    auto opened = std::make_shared<SOpened>();
    opened->page = &page;
    opened->set = page.Set();
    opened->set.onChanged = {};
    for (const QString& path : paths) {
        opened->files.push_back({path, {}, {}, {}});
    }
    m_job.Start(tr("Loading %1").arg(QFileInfo(paths.value(0)).fileName()),
                [this, opened](CJobState& state) -> CBackgroundJob::Deliver {
                    double done = 0;
                    for (SOpened::SFile& file : opened->files) {
                        if (state.Cancelled()) {
                            return {};
                        }
                        opened->Read(file);
                        state.SetFraction(++done / static_cast<double>(opened->files.size()));
                    }
                    return [this, opened] { TakeOpened(*opened); };
                });
}

void CUiGeneralCurveFrm::TakeOpened(SOpened& opened)
{
    // A set can't be closed while files come into it, so the page is there.
    m_tabs->setCurrentWidget(opened.page);
    for (SOpened::SFile& file : opened.files) {
        for (const SDiag& remark : file.remarks) {
            m_log.Write(SError{{}, remark.text, remark.pos, {}}.Full());
        }
        if (file.curves && *file.curves) {
            opened.page->Take(PathOf(file.path), **file.curves, *m_journal);
            m_tabs->setTabToolTip(m_tabs->indexOf(opened.page),
                                  QString::fromStdString(opened.page->Set().description));
            if ((*file.curves)->skippedLines > 0) {
                m_log.Write(tr("%1: %2 lines are no points, the first is line %3")
                                .arg(file.path)
                                .arg((*file.curves)->skippedLines)
                                .arg((*file.curves)->firstSkippedLine)
                                .toStdString());
            }
        } else if (file.curves) {
            TellFault(QString::fromStdString(file.curves->Error().text));
        } else if (file.network && *file.network) {
            TakeTouchstone(file.path, **file.network);
        } else if (file.network) {
            TellFault(Text(file.network->Error()));
        }
    }
    OnIdleUpdateCmdUI();
}

void CUiGeneralCurveFrm::TakeTouchstone(const QString& path, const network::CNetworkData& matrices)
{
    CTouchstoneDlg dialog(this, QFileInfo(path).fileName(), matrices);
    if (dialog.DoModal() != ui::EAnswer::Ok) {
        return;
    }
    CResult<SNetworkCurves> made = SNetworkCurves();
    RunBeside(
        [&, choice = dialog.Choice(), origin = QFileInfo(path).completeBaseName().toStdString()] {
            made = CurvesOf(matrices, choice, origin);
        });
    if (!made) {
        TellFault(Text(made.Error()));
        return;
    }
    CCurvePage& page = Page();
    if (page.Curves().rowCount() == 0) {
        page.Set().TakeKind(made->kind);
        page.Set().unitClass = made->unit;
    }
    page.Add(made->curves, made->unit, path);
    if (!made->note.empty()) {
        TellFault(QString::fromStdString(made->note), ui::EIcon::Warning);
    }
}

void CUiGeneralCurveFrm::TellFault(const QString& text, ui::EIcon icon)
{
    m_log.Write(text.toStdString());
    ui::CPrompt::Tell(this, text, icon);
}

/// Records on their way to curves.
struct CUiGeneralCurveFrm::SImpedances
{
    CZovLibrary copies;
    std::vector<fs::path> folders;
    std::vector<curve::TCurvePtr> curves;
    std::vector<std::string> faults;

    void Compute(CJobState& state)
    {
        const std::vector<double> hz = curve::SweepHz({});
        CNullDiag quiet;
        for (std::size_t i = 0; i < folders.size() && !state.Cancelled(); ++i) {
            auto made = curve::ImpedancesOf(*copies.Records()[i], hz, folders[i], quiet);
            if (made) {
                curves.insert(curves.end(), made->begin(), made->end());
            } else {
                faults.push_back(made.Error().Full());
            }
            state.SetFraction(static_cast<double>(i + 1) / static_cast<double>(folders.size()));
        }
    }
};

void CUiGeneralCurveFrm::ShowImpedances(const std::vector<SImpedanceOf>& records)
{
    auto work = std::make_shared<SImpedances>();
    for (const SImpedanceOf& record : records) {
        work->copies.AddCopy(*record.record);
        work->folders.push_back(record.folder);
    }
    RunWhenIdle([this, work] {
        m_job.Start(tr("Computing impedances"),
                    [this, work](CJobState& state) -> CBackgroundJob::Deliver {
                        work->Compute(state);
                        return [this, work] { TakeImpedances(*work); };
                    });
    });
}

void CUiGeneralCurveFrm::TakeImpedances(const SImpedances& work)
{
    if (!work.curves.empty()) {
        CCurvePage& page = Page().Curves().rowCount() == 0 ? Page() : AddPage(tr("Impedance"));
        page.Set().name = "Impedance";
        page.Set().unitClass = curve::EUnitClass::Ohm;
        m_tabs->setTabText(m_tabs->indexOf(&page), tr("Impedance"));
        page.Add(work.curves, curve::EUnitClass::Ohm, tr("library"));
        page.Plot().SetLogX(true);
        page.Plot().SetLogY(true);
    }
    for (const std::string& fault : work.faults) {
        m_log.Write(fault);
    }
    if (!work.faults.empty()) {
        QString text = QString::fromStdString(work.faults.front());
        if (work.faults.size() > 1) {
            text += tr("\n%1 more records have no impedance; the \"Output\" pane lists them.")
                        .arg(work.faults.size() - 1);
        }
        ui::CPrompt::Tell(this, text, ui::EIcon::Warning);
    }
}

void CUiGeneralCurveFrm::OnCurveSaveAs()
{
    const std::vector<curve::TCurvePtr> curves = CurvesOfRows(SelectedOrAll());
    const QString path = ui::CPrompt::SaveFile(
        this, tr("Save Curves"), QLatin1String(curve::kCurveFileFilter.data()),
        FileNameOf(CurveTitle(*curves.front())) + QStringLiteral(".cur"));
    if (path.isEmpty()) {
        return;
    }
    const SSaving saving{PathOf(path), curves, Page().Set().name,
                         KindToSave(curves, Page().Set().kind)};
    CResult<void> saved;
    RunBeside([&] { saved = Save(saving, *m_journal); });
    if (!saved) {
        TellFault(Text(saved.Error()));
        return;
    }
    const auto real = std::ranges::count_if(curves, std::not_fn(IsComplex));
    if (real > 0 && std::ranges::any_of(curves, IsComplex)) {
        m_log.Write(tr("%1: %2 curves of real values are saved as complex ones with an imaginary "
                       "part of 0, because a curve file has values of one kind")
                        .arg(QString::fromStdString(PathText(saving.path)))
                        .arg(real)
                        .toStdString());
    }
}

/// After its only curve, or the set.
QString CUiGeneralCurveFrm::PlotFileName() const
{
    const auto& curves = Page().Set().Curves();
    return FileNameOf(curves.size() == 1 ? CurveTitle(*curves.front())
                                         : QString::fromStdString(Page().Set().name));
}

void CUiGeneralCurveFrm::OnCurveExportImage()
{
    const QString path = ui::CPrompt::SaveFile(this, tr("Export Image"), tr(kImageFilter),
                                               PlotFileName() + QStringLiteral(".png"));
    if (!path.isEmpty()) {
        Page().Plot().WaitPrepared();
        if (const CResult<void> done = ExportPlot(Page().Plot(), PathOf(path)); !done) {
            TellFault(Text(done.Error()));
        }
    }
}

void CUiGeneralCurveFrm::OnCurveExportCsv()
{
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Export CSV"), tr("Comma-separated values (*.csv)"),
                              PlotFileName() + QStringLiteral(".csv"));
    if (path.isEmpty()) {
        return;
    }
    CResult<void> done;
    RunBeside(
        [&, curves = CurvesOfRows(SelectedOrAll())] { done = WriteCsvFile(PathOf(path), curves); });
    if (!done) {
        TellFault(Text(done.Error()));
    }
}

void CUiGeneralCurveFrm::OnCurvePrint()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName(QStringLiteral("PrintDialog"));
    if (!IsAccepted(dialog)) {
        return;
    }
    Page().Plot().WaitPrepared();
    if (const CResult<void> done = PrintPlot(Page().Plot(), printer); !done) {
        TellFault(Text(done.Error()));
    }
}

void CUiGeneralCurveFrm::OnCurveCopyImage()
{
    Page().Plot().WaitPrepared();
    QApplication::clipboard()->setImage(PlotImage(Page().Plot()));
}

void CUiGeneralCurveFrm::OnCurveCopyData()
{
    QString text;
    RunBeside([&text, curves = CurvesOfRows(SelectedOrAll())] {
        CTextWriter writer;
        curve::WriteCurveCsv(curves, writer);
        text = QString::fromStdString(writer.Bytes());
    });
    QApplication::clipboard()->setText(text);
}

void CUiGeneralCurveFrm::OnCurveCopyMarkers()
{
    QApplication::clipboard()->setText(Page().Markers().AsText());
}

void CUiGeneralCurveFrm::OnCurveCalculate()
{
    CCalcDlg dialog(this, Page().Set(), Page().Plot().Axes(), m_parameters);
    const bool taken = dialog.DoModal() == ui::EAnswer::Ok;
    m_parameters = dialog.Parameters();
    if (taken && dialog.Result()) {
        dialog.Result()->Header().columnTitles = TitlesOf(Page().Plot().Axes());
        Page().Add({dialog.Result()}, curve::EUnitClass::None, dialog.Expression());
    }
}

void CUiGeneralCurveFrm::dragEnterEvent(QDragEnterEvent* event)
{
    if (std::ranges::any_of(event->mimeData()->urls(), &QUrl::isLocalFile)) {
        event->acceptProposedAction();
    }
}

void CUiGeneralCurveFrm::dropEvent(QDropEvent* event)
{
    QStringList paths;
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths += url.toLocalFile();
        }
    }
    if (!paths.isEmpty()) {
        event->acceptProposedAction();
        OpenFiles(paths);
    }
}

} // namespace zov::app
