// SPDX-License-Identifier: Apache-2.0
/// The generator dialog: a tab per component type; what has a part list is generated. A library
/// that is open gets the models as one step that can be undone; any other is written and opened.
#pragma once

#include "app/BackgroundJob.h"
#include "app/OutputPane.h"
#include "app/Session.h"
#include "batch/DialogRun.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_DLG_ZOVGENMAIN.h"

#include <array>
#include <atomic>

namespace zov::app {

class CGeneratorPage;

class CDlgZovGenMain : public ui::CqtDialogRes<Ui::dlg_IDD_DLG_ZOVGENMAIN>
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param session null: nothing is opened
    CDlgZovGenMain(CZovSession* session, QWidget* parent);
    ~CDlgZovGenMain() override;

    [[nodiscard]] CGeneratorPage& Page(ERecordType type) const;
    void ShowPage(ERecordType type);
    [[nodiscard]] bool IsRunning() const { return m_job.IsRunning(); }

    void reject() override;

private:
    void OnGenerate();
    void OnUpdateGenerate(ui::CCmdUI& ui);
    void OnStop();
    void OnUpdateStop(ui::CCmdUI& ui);

    /// A tab that is generated, and what became of it.
    struct SRun
    {
        batch::SDialogTab tab;
        CZovSession::TLibrary library; ///< the destination, when it is open
        batch::SImportReport report;
        bool done = false;
    };
    using TRuns = std::vector<SRun>;

    [[nodiscard]] std::shared_ptr<TRuns> RunsOfTabs() const;
    bool Check(const TRuns& runs);
    void Run(TRuns& runs, CJobState& state);
    void RunOne(SRun& run, batch::CGeneratorQuestions& questions, CLogSink& log, CJobState& state);
    [[nodiscard]] batch::SOpenDestination OpenDestinationOf(SRun& run, CLogSink& log,
                                                            CJobState& state);
    CResult<void> PutInto(const SRun& run, const CZovLibrary& library, CLogSink& log,
                          CJobState& state);
    void Finish(const TRuns& runs);
    void Restore();
    void Remember() const;
    /// Which tabs "Generate" would run.
    void ShowWhatRuns();
    void ShowState();
    void Write(std::string_view text);

    CZovSession* m_session;
    COutputPane* m_log;
    std::array<CGeneratorPage*, 3> m_pages{};
    std::atomic<std::uint32_t> m_row{0};
    bool m_closing = false;
    CBackgroundJob m_job;
};

} // namespace zov::app
