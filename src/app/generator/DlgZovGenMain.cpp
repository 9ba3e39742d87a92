// SPDX-License-Identifier: Apache-2.0
#include "app/generator/DlgZovGenMain.h"

#include "app/generator/GeneratorMemory.h"
#include "app/generator/GeneratorPage.h"
#include "app/generator/GuiCall.h"
#include "base/File.h"
#include "base/Questions.h"
#include "batch/BatchLog.h"
#include "batch/Messages.h"
#include "ui/Prompt.h"
#include "ui/ShownText.h"

#include <algorithm>
#include <map>

namespace zov::app {
namespace {

namespace fs = std::filesystem;

using ui::Shown;

enum EGeneratorDialogId : unsigned
{
    ID_GENERATE = 1,
    ID_STOP
};

constexpr std::string_view kTabName = "Tab";

constexpr std::array<ERecordType, 3> kTypes = {ERecordType::Capacitor, ERecordType::Inductor,
                                               ERecordType::Resistor};

bool IsSameFile(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    return !a.empty() && !b.empty() &&
           fs::weakly_canonical(a, ignored) == fs::weakly_canonical(b, ignored);
}

/// Questions of a run, which goes on beside the window, as boxes in it. Each is asked once; the
/// answer holds for the tabs that follow.
class CRunQuestions final : public batch::CGeneratorQuestions
{
public:
    CRunQuestions(QWidget& parent, CJobState& state)
        : m_parent(parent)
        , m_state(state)
    {
    }
    /// @param madeByRun the destination is there since a tab of this run made it: nobody wants to
    ///                  have that replaced
    void BeginTab(bool madeByRun) { m_madeByRun = madeByRun; }
    bool Ask(std::string_view question) override
    {
        if (m_state.Cancelled() || (m_madeByRun && question == batch::msg::kAskReplaceFile)) {
            return false;
        }
        const auto known = m_answers.find(std::string(question));
        if (known != m_answers.end()) {
            return known->second;
        }
        bool& yes = m_answers[std::string(question)];
        CallInGui(m_parent, m_state, [&] {
            const bool isFile = question == batch::msg::kAskReplaceFile;
            const ui::EAnswer answer = ui::CPrompt::Ask(
                &m_parent, Shown(question),
                isFile ? ui::EButtons::YesNoCancel : ui::EButtons::YesNo, ui::EIcon::Warning);
            yes = answer == ui::EAnswer::Yes;
            if (answer == ui::EAnswer::Cancel) {
                m_state.Cancel();
            }
        });
        return yes;
    }

private:
    QWidget& m_parent;
    CJobState& m_state;
    std::map<std::string, bool> m_answers;
    bool m_madeByRun = false;
};

/// The log files of the runs, beside their destinations; runs into one folder share one.
class CLogFiles
{
public:
    batch::CBatchLog& For(const fs::path& destination)
    {
        const fs::path path = destination.parent_path() / TextPath(batch::kBatchLogName);
        const auto [at, isNew] = m_files.try_emplace(path);
        if (isNew) {
            at->second = std::make_unique<batch::CBatchLog>(path);
        }
        return *at->second;
    }

private:
    std::map<fs::path, std::unique_ptr<batch::CBatchLog>> m_files;
};

QString SummaryOf(const batch::SImportCounts& counts)
{
    return CDlgZovGenMain::tr("added %1, replaced %2, skipped %3, left out %4")
        .arg(counts.added)
        .arg(counts.replaced)
        .arg(counts.skippedDuplicate + counts.superseded + counts.skippedExisting)
        .arg(counts.failed);
}

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CDlgZovGenMain, ui::CUiDialog)
ZOV_ON_COMMAND_UPDATE(ID_GENERATE, Generate)
ZOV_ON_COMMAND_UPDATE(ID_STOP, Stop)
ZOV_END_MESSAGE_MAP()

CDlgZovGenMain::CDlgZovGenMain(CZovSession* session, QWidget* parent)
    : CqtDialogRes(parent)
    , m_session(session)
    , m_log(new COutputPane(this))
{
    const CDisplayUnits units = session == nullptr ? CDisplayUnits() : session->Settings().units;
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        m_pages[i] = new CGeneratorPage(kTypes[i], units, this);
        const std::string_view name = InfoOf(kTypes[i]).name;
        m_form.ui_IDC_TABS->addTab(m_pages[i], Shown(name));
        connect(m_pages[i], &CGeneratorPage::SourceChanged, this, &CDlgZovGenMain::ShowWhatRuns);
    }
    m_log->setObjectName(QStringLiteral("ui_IDC_LOG"));
    m_log->setPlaceholderText(tr("What a run has to say appears here."));
    m_form.ui_IDC_LOG_LAYOUT->addWidget(m_log);
    m_form.ui_IDC_SPLITTER->setStretchFactor(0, 4);
    m_form.ui_IDC_SPLITTER->setStretchFactor(1, 1);
    m_form.ui_IDC_SPLITTER->setSizes({600, 150});
    BindButton(*m_form.ui_IDC_GENERATE, ID_GENERATE);
    BindButton(*m_form.ui_IDC_STOP, ID_STOP);
    connect(m_form.ui_IDC_CLOSE, &QPushButton::clicked, this, &QDialog::reject);
    connect(&m_job, &CBackgroundJob::Progress, this, &CDlgZovGenMain::ShowState);
    connect(&m_job, &CBackgroundJob::Finished, this, [this] {
        ShowState();
        if (m_closing) {
            reject();
        }
    });
    ShowState();
    Restore();
}

CDlgZovGenMain::~CDlgZovGenMain()
{
    m_job.Cancel(); // before the log pane goes
}

void CDlgZovGenMain::Restore()
{
    if (m_session == nullptr) {
        return;
    }
    const ISettingsStore& store = m_session->Store();
    Page(ERecordType::Capacitor).OfferVendors(m_session->VendorLibraries());
    for (CGeneratorPage* page : m_pages) {
        if (const auto tab = RememberedTab(page->Type(), store)) {
            page->Restore(*tab);
        }
        const CZovSession::TLibrary project = m_session->ProjectLibrary();
        const batch::SDialogTab shown = page->Tab();
        if (project && (shown.destination.empty() || shown.sourceFile.empty())) {
            page->SetDestination(Shown(PathText(project->Path())));
        }
    }
    const std::int64_t tab = store.Integer(kGeneratorSection, kTabName).value_or(0);
    m_form.ui_IDC_TABS->setCurrentIndex(
        tab > 0 && tab < m_form.ui_IDC_TABS->count() ? static_cast<int>(tab) : 0);
}

void CDlgZovGenMain::Remember() const
{
    if (m_session == nullptr) {
        return;
    }
    ISettingsStore& store = m_session->Store();
    for (const CGeneratorPage* page : m_pages) {
        RememberTab(page->Tab(), store);
    }
    store.SetInteger(kGeneratorSection, kTabName, m_form.ui_IDC_TABS->currentIndex());
}

void CDlgZovGenMain::ShowWhatRuns()
{
    QStringList names;
    for (const CGeneratorPage* page : m_pages) {
        if (page->HasSource()) {
            names += Shown(InfoOf(page->Type()).name);
        }
    }
    m_form.ui_IDC_STATE->setText(
        names.isEmpty() ? QString() : tr("To be generated: %1").arg(names.join(tr(", "))));
}

CGeneratorPage& CDlgZovGenMain::Page(ERecordType type) const
{
    return *m_pages[static_cast<std::size_t>(std::ranges::find(kTypes, type) - kTypes.begin())];
}

void CDlgZovGenMain::ShowPage(ERecordType type)
{
    m_form.ui_IDC_TABS->setCurrentWidget(&Page(type));
}

void CDlgZovGenMain::reject()
{
    if (m_job.IsRunning()) { // it ends at its next row, then the dialog
        m_closing = true;
        m_job.RequestCancel();
        return;
    }
    Remember();
    QDialog::reject();
}

void CDlgZovGenMain::Write(std::string_view text)
{
    m_log->Write(text);
    if (m_session != nullptr) {
        m_session->Log().Write(text);
    }
}

void CDlgZovGenMain::ShowState()
{
    const bool running = m_job.IsRunning();
    m_form.ui_IDC_PROGRESS->setVisible(running);
    m_form.ui_IDC_TABS->setEnabled(!running);
    if (running) {
        m_form.ui_IDC_STATE->setText(tr("Row %L1").arg(m_row.load()));
    }
    OnIdleUpdateCmdUI();
}

/// The tabs with a part list; the current one when none has.
std::shared_ptr<CDlgZovGenMain::TRuns> CDlgZovGenMain::RunsOfTabs() const
{
    auto runs = std::make_shared<TRuns>();
    for (const CGeneratorPage* page : m_pages) {
        if (page->HasSource()) {
            runs->push_back({page->Tab(), {}, {}, false});
        }
    }
    if (runs->empty()) {
        const auto current = static_cast<std::size_t>(m_form.ui_IDC_TABS->currentIndex());
        runs->push_back({m_pages[current]->Tab(), {}, {}, false});
    }
    for (SRun& run : *runs) {
        if (m_session == nullptr) {
            continue;
        }
        for (const SLibraryEntry* entry : m_session->Set().Entries()) {
            if (IsSameFile(entry->path, TextPath(run.tab.destination))) {
                run.library = entry->library;
            }
        }
    }
    return runs;
}

bool CDlgZovGenMain::Check(const TRuns& runs)
{
    bool complete = true;
    for (const SRun& run : runs) {
        for (const std::string& line : batch::CheckTab(run.tab)) {
            Write(line);
            complete = false;
        }
    }
    if (!complete) {
        m_form.ui_IDC_STATE->setText(tr("Something is missing; the log says what."));
        return false;
    }
    for (const SRun& run : runs) {
        const auto& error = Page(run.tab.type).SourceError();
        if (!error) {
            continue;
        }
        const bool unreachable =
            error->code == EErr::NotFound || error->code == EErr::Access || error->code == EErr::Io;
        const std::string text = unreachable
                                     ? batch::Text(batch::msg::kOpenFailed, run.tab.sourceFile)
                                     : std::string(batch::SheetFailureText(error->code));
        Write("[ERROR] " + error->Full());
        ui::CPrompt::Tell(this, QString::fromStdString(text), ui::EIcon::Error);
        return false;
    }
    return true;
}

void CDlgZovGenMain::OnGenerate()
{
    const std::shared_ptr<TRuns> runs = RunsOfTabs();
    if (!Check(*runs)) {
        return;
    }
    Remember();
    m_row = 0;
    m_job.Start(tr("Generating models"), [this, runs](CJobState& state) {
        Run(*runs, state);
        return [this, runs] { Finish(*runs); };
    });
    ShowState();
}

void CDlgZovGenMain::OnUpdateGenerate(ui::CCmdUI& ui)
{
    ui.Enable(!m_job.IsRunning());
}

void CDlgZovGenMain::OnStop()
{
    m_job.RequestCancel();
}

void CDlgZovGenMain::OnUpdateStop(ui::CCmdUI& ui)
{
    ui.Enable(m_job.IsRunning());
}

// --- beside the window -----------------------------------------------------------------------

void CDlgZovGenMain::Run(TRuns& runs, CJobState& state)
{
    CLogFiles files;
    CRunQuestions questions(*this, state);
    std::vector<fs::path> made;
    for (SRun& run : runs) {
        if (&run != &runs.front() && state.Cancelled()) {
            return; // the tab before has told that it was stopped
        }
        batch::CBatchLog& file = files.For(TextPath(run.tab.destination));
        CFunctionLog log([&](std::string_view text) {
            file.Write(text);
            Write(text);
        });
        const fs::path destination = TextPath(run.tab.destination);
        questions.BeginTab(std::ranges::any_of(
            made, [&](const fs::path& one) { return IsSameFile(one, destination); }));
        RunOne(run, questions, log, state);
        if (run.done) {
            made.push_back(destination);
        }
    }
}

void CDlgZovGenMain::RunOne(SRun& run, batch::CGeneratorQuestions& questions, CLogSink& log,
                            CJobState& state)
{
    const auto progress = [&](std::uint32_t row) {
        m_row = row;
        return !state.Cancelled();
    };
    run.done = batch::RunTab(run.tab, LocalTimeNow, questions, progress, log, run.report,
                             OpenDestinationOf(run, log, state))
                   .Ok();
}

batch::SOpenDestination CDlgZovGenMain::OpenDestinationOf(SRun& run, CLogSink& log,
                                                          CJobState& state)
{
    if (!run.library) {
        return {};
    }
    // What is open counts, with the edits that are not saved yet.
    return {[&run]() -> CResult<CZovLibrary> {
                CZovLibrary copy;
                copy.SetPath(run.library->Path());
                copy.Reserve(run.library->Count());
                for (const CZovRcdProps* record : run.library->Records()) {
                    copy.AddCopy(*record);
                }
                return copy;
            },
            [this, &run, &log, &state](const CZovLibrary& library) {
                return PutInto(run, library, log, state);
            }};
}

CResult<void> CDlgZovGenMain::PutInto(const SRun& run, const CZovLibrary& library, CLogSink& log,
                                      CJobState& state)
{
    CLibraryChange change(run.library);
    change.ReplaceAllBy(library);
    CResult<void> saved;
    const bool called = CallInGui(*this, state, [&] {
        m_session->Edits().Apply(change, tr("Import Models"));
        saved = m_session->Save(run.library);
    });
    if (!called) {
        return Fail(EErr::Cancelled, "stopped by the user");
    }
    if (!saved) {
        log.Write(batch::Text(batch::msg::kSaveFailed, run.tab.destination));
        log.Write("    " + saved.Error().Full());
    }
    return saved;
}

void CDlgZovGenMain::Finish(const TRuns& runs)
{
    QStringList lines;
    std::vector<fs::path> written;
    for (const SRun& run : runs) {
        lines += Shown(InfoOf(run.tab.type).name) + QStringLiteral(": ") +
                 (run.done ? SummaryOf(run.report.counts) : tr("failed, see the log"));
        const fs::path path = TextPath(run.tab.destination);
        if (run.done && !run.library && std::ranges::find(written, path) == written.end()) {
            written.push_back(path);
        }
    }
    m_form.ui_IDC_STATE->setText(lines.join(QStringLiteral("; ")));
    if (m_session == nullptr || written.empty()) {
        return;
    }
    if (!m_session->ProjectLibrary()) {
        static CFixedAnswer keep(false); // loading outlives the dialog
        m_session->OpenProject(written.front(), keep);
        written.erase(written.begin());
    }
    if (!written.empty()) {
        m_session->AddExternals(written, CLibraryTree::kRoot);
    }
}

} // namespace zov::app
