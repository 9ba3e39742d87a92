// SPDX-License-Identifier: Apache-2.0
/// The assignment view: the components of a design, or their reference designators, with the models
/// they have. Searches run beside the window.
#pragma once

#include "app/BackgroundJob.h"
#include "app/Session.h"
#include "app/assignment/AssignRowModel.h"
#include "app/assignment/FindMode.h"
#include "assign/DesignFile.h"
#include "assign/ZovMapFile.h"
#include "base/Environment.h"
#include "ui/CmdTarget.h"
#include "ui/UiHandyObjListCtrl.h"

#include <QTimer>

#include <memory>
#include <unordered_map>
#include <unordered_set>

class QSettings;

namespace zov::app {

class CAssignModelView : public ui::CUiHandyObjListCtrl, public ui::CCmdTargetBase
{
    Q_OBJECT
    ZOV_DECLARE_MESSAGE_MAP()

public:
    /// @param output gets refusals and what a design file leaves open
    /// @param layout remembers the map file of each design; all outlive the view
    CAssignModelView(CZovSession& session, CLogSink& output, QSettings& layout,
                     FEnvironment environment, QWidget* parent);
    ~CAssignModelView() override;

    /// Reads a component list or a netlist beside the window, then shows it.
    void OpenDesign(const QString& path);
    /// A design from elsewhere. Without a stored assignment file it is mapped, see
    /// CAssignTable::MapsOnOpening; one that is there is imported instead.
    void SetDesign(SDesign design, const QString& title, const QString& storedFile);
    [[nodiscard]] bool HasDesign() const { return m_table != nullptr; }
    [[nodiscard]] const QString& Title() const { return m_title; }
    /// Assignments were made that no map file holds.
    [[nodiscard]] bool IsModified() const { return m_modified; }
    /// Asks whether such assignments are exported first; false when the user cancels.
    bool MayLeave();

    /// Null without a design.
    [[nodiscard]] CAssignTable* Table() const { return m_table.get(); }
    [[nodiscard]] CAssignRowModel& Rows() { return m_rows; }
    [[nodiscard]] CBackgroundJob& Job() { return m_job; }
    /// Something is searched, or will be in a moment.
    [[nodiscard]] bool IsBusy() const;
    /// Ends the work beside the window without waiting for it.
    void StopWork();

    void SetFindPattern(const QString& pattern) { m_pattern = pattern; }
    [[nodiscard]] bool AmbiguousOnly() const { return m_ambiguousOnly; }
    [[nodiscard]] bool FoundOnly() const { return m_foundOnly; }

Q_SIGNALS:
    void DesignChanged();
    void ModifiedChanged();
    /// A line for the status bar.
    void Told(const QString& text);
    /// Why the current row has its model, as rich text.
    void WhyChanged(const QString& html);
    /// The view shows components, or reference designators, now.
    void ViewSwitched(bool refDes);
    void ContextMenuAsked(const QPoint& globalPos);

private:
    // Commands, in the order of their menu.
    void OnFindModel();
    void OnUpdateFindModel(ui::CCmdUI& ui);
    void OnFindModelByName();
    void OnUpdateFindModelByName(ui::CCmdUI& ui);
    void OnFindModelBySchema();
    void OnUpdateFindModelBySchema(ui::CCmdUI& ui);
    void OnRefreshStatus();
    void OnUpdateRefreshStatus(ui::CCmdUI& ui);
    void OnEnableSubModels();
    void OnUpdateEnableSubModels(ui::CCmdUI& ui);
    void OnBrowseModel();
    void OnUpdateBrowseModel(ui::CCmdUI& ui);
    void OnRemoveModel();
    void OnUpdateRemoveModel(ui::CCmdUI& ui);
    void OnCreateModel();
    void OnUpdateCreateModel(ui::CCmdUI& ui);
    void OnCreateDiscModel();
    void OnUpdateCreateDiscModel(ui::CCmdUI& ui);
    void OnAutoMapping();
    void OnUpdateAutoMapping(ui::CCmdUI& ui);
    void OnImportMapFile();
    void OnUpdateImportMapFile(ui::CCmdUI& ui);
    void OnExportMapFile();
    void OnUpdateExportMapFile(ui::CCmdUI& ui);
    void OnExpandModel();
    void OnUpdateExpandModel(ui::CCmdUI& ui);
    void OnCollapseModel();
    void OnUpdateCollapseModel(ui::CCmdUI& ui);
    void OnSwitchView();
    void OnZvMgrFindAll();
    void OnZvMgrFindNext();
    void OnZvMgrFindPrev();
    void OnSelchangeFindPattern();
    void OnAmbiguousOnly();
    void OnUpdateAmbiguousOnly(ui::CCmdUI& ui);
    void OnFoundOnly();
    void OnUpdateFoundOnly(ui::CCmdUI& ui);
    void OnViewOrigin();
    void OnUpdateViewOrigin(ui::CCmdUI& ui);

    /// How a row came to its model, for its "why".
    struct SOrigin
    {
        SFound found; ///< by automatic mapping
        bool byMap = false;
        SModelRef model;
    };
    /// What the job does, for the case that a library changes meanwhile.
    enum class EWork
    {
        None,
        Read,
        Map,
        Import,
        Count
    };
    struct SImport;

    void ConnectSession();
    void TakeDesign(std::shared_ptr<CAssignTable> table, const QString& title, const QString& path,
                    const QString& storedFile);
    void Begin();
    void MapOrRefresh();
    void Map();
    /// Where a map file comes from.
    enum class EMap
    {
        Stored,   ///< the user's own
        Recovered ///< what was not exported when the program ended
    };
    void ImportMap(const QString& path, EMap map = EMap::Stored);
    [[nodiscard]] QString RecoveryFile() const;
    void KeepForRecovery();
    void TakeImport(const std::shared_ptr<SImport>& import);
    void RefreshStatus();
    void ShowStatus();
    void RowsShown();
    void LibraryAboutToChange(const CZovLibrary& library);
    void LibraryChanged(CZovLibrary& library);
    void SetChanged();
    [[nodiscard]] std::vector<std::shared_ptr<CZovLibrary>> Active() const;

    void FindModel(EFindMode mode);
    void Assign(const std::vector<AssignRow*>& rows, const SModelRef& model);
    [[nodiscard]] std::unordered_set<const AssignRow*> OtherTypeRows(const SModelRef& model) const;
    QString TellOtherTypes(const SModelRef& model,
                           const std::unordered_set<const AssignRow*>& known) const;
    std::vector<AssignRow*> RowsToGenerate() const;
    bool Export();
    void Remember(const QString& mapFile);
    void SetModified(bool modified);
    void Find();
    void ShowHit(const AssignRow* row);
    void ShowColumns();
    void ShowHint();
    void AskWhy();
    [[nodiscard]] QString HowOf(const AssignRow& row) const;
    [[nodiscard]] QString TipOf(const AssignRow& row) const;
    [[nodiscard]] std::vector<AssignRow*> SelectedRows() const;
    [[nodiscard]] bool CanEdit() const;

    CZovSession& m_session;
    CLogSink& m_output;
    QSettings& m_layout;
    FEnvironment m_environment;
    CModelSearch m_search; ///< used by one job or dialog at a time
    CAssignRowModel m_rows;
    std::shared_ptr<CAssignTable> m_table;
    std::unordered_map<const AssignRow*, SOrigin> m_origins;
    std::vector<std::shared_ptr<CZovLibrary>> m_active;
    QString m_title;
    QString m_designPath;
    QString m_storedFile;
    QString m_importing;
    EMap m_importedAs = EMap::Stored;
    QString m_pattern;
    EWork m_work = EWork::None;
    EFindMode m_findMode = EFindMode::ByKeys;
    bool m_subModels = true;
    bool m_modified = false;
    bool m_ambiguousOnly = false;
    bool m_foundOnly = false;
    bool m_findWhenCounted = false;
    bool m_stopped = false;
    bool m_searchLent = false;          ///< a dialog searches
    bool m_mapDue = false;              ///< the library set changed
    bool m_originOf[2] = {false, true}; ///< by view: with the original model, with the device
    QTimer m_resume;                    ///< what a change interrupted goes on when changes pause
    QTimer m_whyDue;
    QTimer m_keepDue; ///< assignments go into the recovery file
    CBackgroundJob m_job;
    CBackgroundJob m_whyJob;
    CBackgroundJob m_keepJob;
};

} // namespace zov::app
