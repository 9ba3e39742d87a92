// SPDX-License-Identifier: Apache-2.0
/// The IBIS loader: a file is checked and read, a component chosen, its pins and bus definitions
/// seen and edited, and saved into a copy of the file.
#pragma once

#include "app/BackgroundJob.h"
#include "app/ibis/BusDefinitionView.h"
#include "app/ibis/PinListView.h"
#include "base/Sink.h"
#include "ibis/CheckReport.h"
#include "ibis/IbisLoader.h"
#include "ui/UiDialog.h"
#include "ui_dlg_IDD_ZOV_LOAD_IBIS.h"

#include <memory>

namespace zov::app {

class CIBISLoaderDlg : public ui::CqtDialogRes<Ui::dlg_IDD_ZOV_LOAD_IBIS>
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param log outlives the dialog; the "Output" pane
    CIBISLoaderDlg(QWidget* parent, CLogSink& log);
    ~CIBISLoaderDlg() override;

    void OpenFile(const QString& path);
    [[nodiscard]] bool IsIdle() const { return !m_job.IsRunning(); }
    [[nodiscard]] const ibis::CIBISLoader* Loader() const { return m_loader.get(); }
    /// Names of the components that were put on the sides of the interface; empty for none.
    [[nodiscard]] const QString& Controller() const { return m_controller; }
    [[nodiscard]] const QString& Memory() const { return m_memory; }
    /// The copy that was saved last; empty for none.
    [[nodiscard]] const QString& SavedCopy() const { return m_saved; }

    void reject() override;

Q_SIGNALS:
    /// The file is to be opened in the editor.
    void EditorAsked(const QString& path);

private:
    void OrderTabs();
    void OnBrowse();
    void OnShowReport();
    void OnShowModels();
    void OnAddSelected();
    void OnAssignController();
    void OnAssignMemory();
    void OnSaveCopy();
    void OnUpdateOfFile(ui::CCmdUI& ui);
    void OnUpdateOfComponent(ui::CCmdUI& ui);
    void OnUpdateAddSelected(ui::CCmdUI& ui);

    struct SLoaded;
    void Take(SLoaded& loaded);
    void SelectComponent(const QString& name);
    void ShowComponent();
    void ShowPins(const ibis::SPinList& list);
    void ShowVerdict(const ibis::SIPCheckInfo& check);
    /// A refusal: a line in the "Output" pane and below the tabs.
    void Refuse(const QString& text);
    void Tell(const SError& error);
    bool SaveCopy();
    /// Edited definitions are asked about; false: go on with them.
    bool MayLeave();

    class CRemarks;
    CLogSink& m_log;
    std::unique_ptr<CRemarks> m_remarks;
    IBISPinListEditorView* m_pins;
    IBISSeriesPinListEditorView* m_series;
    BusDefinitionEditorView* m_buses;
    std::shared_ptr<ibis::CIBISLoader> m_loader;
    QString m_path;
    QString m_controller;
    QString m_memory;
    QString m_saved;
    QString m_component;
    ibis::SIPCheckInfo m_check;
    CBackgroundJob m_job;
};

} // namespace zov::app

namespace ZOV {
using zov::app::BusDefinitionEditorView;
using zov::app::CIBISLoaderDlg;
using zov::app::IBISPinListEditorView;
using zov::app::IBISSeriesPinListEditorView;
} // namespace ZOV
