// SPDX-License-Identifier: Apache-2.0
// The view's commands.
#include "app/BoxQuestions.h"
#include "app/RunBeside.h"
#include "app/assignment/AssignModelView.h"
#include "app/assignment/DiscreteGuess.h"
#include "app/assignment/DlgAssignModel.h"
#include "app/assignment/DlgCreateModel.h"
#include "app/assignment/DlgFindModel.h"
#include "base/File.h"
#include "base/Text.h"
#include "ui/Prompt.h"
#include "ui/ShownText.h"

#include <QFileInfo>

#include <algorithm>
#include <set>
#include <unordered_set>

namespace zov::app {
namespace {

const char* const kMapFilter = "ZOV Map File (*.csv)";

using ui::Shown;

/// Passes a question on and keeps its answer.
class CKeptAnswer final : public CQuestions
{
public:
    explicit CKeptAnswer(CQuestions& ask)
        : m_ask(ask)
    {
    }
    bool YesNo(std::string_view text) override
    {
        yes = m_ask.YesNo(text);
        return yes;
    }
    bool yes = true;

private:
    CQuestions& m_ask;
};

} // namespace

std::vector<AssignRow*> CAssignModelView::SelectedRows() const
{
    QModelIndexList indexes = selectionModel()->selectedRows();
    std::sort(indexes.begin(), indexes.end());
    std::vector<AssignRow*> rows;
    std::unordered_set<const AssignRow*> seen; // lines below a row stand for it, too
    for (const QModelIndex& index : indexes) {
        AssignRow* row = m_rows.RowAt(index);
        if (row != nullptr && seen.insert(row).second) {
            rows.push_back(row);
        }
    }
    return rows;
}

bool CAssignModelView::CanEdit() const
{
    return m_table && !m_job.IsRunning() && selectionModel()->hasSelection();
}

// --- giving and taking models ----------------------------------------------------------------

/// Rows that have the model though the design asks for another type.
std::unordered_set<const AssignRow*> CAssignModelView::OtherTypeRows(const SModelRef& model) const
{
    std::unordered_set<const AssignRow*> others;
    for (const AssignRow* row : m_table->Rows()) {
        const ERecordType required = m_table->ComponentOf(*row).requiredType;
        if (required == ERecordType::Any || required == model.type) {
            continue;
        }
        const std::vector<SModelRef> models = m_table->ModelsOf(*row);
        if (!models.empty() && models.front().record == model.record) {
            others.insert(row);
        }
    }
    return others;
}

/// Writes a line for each such row that was none before; returns what the status bar says of them.
QString CAssignModelView::TellOtherTypes(const SModelRef& model,
                                         const std::unordered_set<const AssignRow*>& known) const
{
    const std::unordered_set<const AssignRow*> others = OtherTypeRows(model);
    QString line;
    int count = 0;
    for (const AssignRow* row : m_table->Rows()) {
        if (!others.contains(row) || known.contains(row)) {
            continue;
        }
        ++count;
        line = tr("'%1': the design asks for a model of type %2, and '%3' is of type %4.")
                   .arg(Shown(row->Name()),
                        Shown(InfoOf(m_table->ComponentOf(*row).requiredType).name),
                        Shown(model.record->Name()), Shown(InfoOf(model.type).name));
        m_output.Write(line.toStdString());
    }
    return count < 2 ? line
                     : tr("Rows with a model of another type than the design asks for: %1; "
                          "\"Output\" names them.")
                           .arg(count);
}

void CAssignModelView::Assign(const std::vector<AssignRow*>& rows, const SModelRef& model)
{
    CBoxQuestions questions(*this);
    std::unordered_set<const AssignRow*> known = OtherTypeRows(model);
    for (const AssignRow* row : rows) {
        known.erase(row); // the user chose it for them just now
    }
    const std::size_t given = m_table->Assign(rows, model, questions, m_output);
    if (given > 0) {
        SetModified(true);
    }
    QString told = TellOtherTypes(model, known);
    if (given < rows.size()) {
        told = tr("Rows that were refused the model: %1; \"Output\" says why.")
                   .arg(rows.size() - given) +
               QLatin1Char(' ') + told;
    }
    RefreshStatus();
    if (!told.isEmpty()) {
        Q_EMIT Told(told.trimmed());
    }
}

void CAssignModelView::FindModel(EFindMode mode)
{
    const std::vector<AssignRow*> rows = SelectedRows();
    m_whyJob.Cancel();
    m_searchLent = true;
    CDlgFindModel dialog({&m_search, Active(), m_session.Settings().searchOptions,
                          Shown(rows.front()->component),
                          m_table->ComponentOf(*rows.front()).requiredType, mode},
                         this);
    const bool chosen = dialog.DoModal() == ui::EAnswer::Ok && dialog.Chosen();
    m_searchLent = false;
    m_findMode = dialog.Mode();
    SZovSettings settings = m_session.Settings();
    if (settings.searchOptions != dialog.Options()) {
        settings.searchOptions = dialog.Options();
        m_session.SetSettings(std::move(settings));
        m_session.StoreSettings();
    }
    if (chosen) {
        Assign(rows, dialog.Chosen());
    }
    m_whyDue.start();
}

void CAssignModelView::OnFindModel()
{
    FindModel(m_findMode);
}

void CAssignModelView::OnUpdateFindModel(ui::CCmdUI& ui)
{
    ui.Enable(CanEdit());
}

void CAssignModelView::OnFindModelByName()
{
    FindModel(EFindMode::ByKeys);
}

void CAssignModelView::OnUpdateFindModelByName(ui::CCmdUI& ui)
{
    ui.Enable(CanEdit());
    ui.SetCheck(m_findMode == EFindMode::ByKeys);
}

void CAssignModelView::OnFindModelBySchema()
{
    FindModel(EFindMode::BySchema);
}

void CAssignModelView::OnUpdateFindModelBySchema(ui::CCmdUI& ui)
{
    ui.Enable(CanEdit());
    ui.SetCheck(m_findMode == EFindMode::BySchema);
}

void CAssignModelView::OnBrowseModel()
{
    std::vector<AssignRow*> rows = SelectedRows();
    if (rows.size() == 1) {
        CDlgAssignModel dialog(&m_session, Shown(rows.front()->Name()),
                               m_table->ComponentOf(*rows.front()).requiredType, this);
        if (dialog.DoModal() == ui::EAnswer::Ok && dialog.Chosen()) {
            Assign(rows, dialog.Chosen());
        }
        return;
    }
    QStringList names;
    ERecordType required = m_table->ComponentOf(*rows.front()).requiredType;
    for (const AssignRow* row : rows) {
        names += Shown(row->Name());
        if (m_table->ComponentOf(*row).requiredType != required) {
            required = ERecordType::Any;
        }
    }
    CDlgAssignModelEx dialog(&m_session, names, required, this);
    if (dialog.DoModal() == ui::EAnswer::Ok && dialog.Chosen()) {
        std::vector<AssignRow*> checked;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (dialog.IsFor(static_cast<int>(i))) {
                checked.push_back(rows[i]);
            }
        }
        Assign(checked, dialog.Chosen());
    }
}

void CAssignModelView::OnUpdateBrowseModel(ui::CCmdUI& ui)
{
    ui.Enable(CanEdit());
}

void CAssignModelView::OnRemoveModel()
{
    CBoxQuestions ask(*this);
    std::set<std::string> kept; // upper-cased names of models that are not asked about again
    bool removed = false;
    for (AssignRow* row : SelectedRows()) {
        const std::vector<SModelRef> models = m_table->ModelsOf(*row);
        if (models.empty()) {
            continue; // an earlier answer took it
        }
        const std::string name = UpperCase(models.front().record->Name());
        if (kept.contains(name)) {
            continue;
        }
        CKeptAnswer questions(ask);
        removed = !m_table->Remove(*row, questions).empty() || removed;
        if (!questions.yes) {
            kept.insert(name);
        }
    }
    if (removed) {
        SetModified(true);
        RefreshStatus();
    }
}

void CAssignModelView::OnUpdateRemoveModel(ui::CCmdUI& ui)
{
    const AssignRow* row = m_table ? m_rows.RowAt(currentIndex()) : nullptr;
    const QItemSelection ranges = selectionModel()->selection();
    const bool several = ranges.size() > 1 || (!ranges.isEmpty() && ranges.first().height() > 1);
    ui.Enable(CanEdit() && row != nullptr && (several || !m_table->ModelsOf(*row).empty()));
}

// --- new models ------------------------------------------------------------------------------

void CAssignModelView::OnCreateModel()
{
    const std::vector<AssignRow*> rows = SelectedRows();
    const CZovSession::TLibrary library = m_session.ProjectLibrary();
    CDlgCreateModel dialog(library.get(), m_table->ComponentOf(*rows.front()), this);
    if (dialog.DoModal() != ui::EAnswer::Ok || !library) {
        return;
    }
    CLibraryChange change(library);
    dialog.Fill(change.Insert(dialog.Type()));
    const CZovRcdProps* record = m_session.Edits().Apply(change, tr("Create Model")).front();
    Assign(rows, {library, record, record->Type()});
}

void CAssignModelView::OnUpdateCreateModel(ui::CCmdUI& ui)
{
    ui.Enable(CanEdit());
}

/// The selected rows, or all when none or one is; each component once, those that have a model
/// left out.
std::vector<AssignRow*> CAssignModelView::RowsToGenerate() const
{
    std::vector<AssignRow*> rows = SelectedRows();
    if (rows.size() < 2) {
        rows = m_table->Rows();
    }
    std::set<std::size_t> places;
    std::erase_if(rows, [&](const AssignRow* row) {
        const AssignRow& component = m_table->ComponentRow(*row);
        return row->fixed || !m_table->ModelsOf(component).empty() ||
               !places.insert(row->place).second;
    });
    return rows;
}

void CAssignModelView::OnCreateDiscModel()
{
    const CZovSession::TLibrary library = m_session.ProjectLibrary();
    if (!library) {
        ui::CPrompt::Tell(this, tr("The models go to the project library, and none is open. Make "
                                   "or open one in the library manager."));
        return;
    }
    struct SNew
    {
        AssignRow* row;
        SDiscreteGuess guess;
        const CZovRcdProps* record; ///< null: it has to be made
    };
    std::vector<SNew> created;
    int open = 0;
    for (AssignRow* row : RowsToGenerate()) {
        const SDesignComponent& component = m_table->ComponentOf(*row);
        if (auto guess = GuessDiscrete(component)) {
            const CZovRcdProps* there = library->Find(guess->type, component.name);
            created.push_back({&m_table->ComponentRow(*row), std::move(*guess), there});
        } else {
            ++open;
            m_output.Write("'" + component.name + "': no value of a capacitor, inductor or " +
                           "resistor is in its name or value; no model was made");
        }
    }
    if (!created.empty()) {
        CLibraryChange change(library);
        for (const SNew& one : created) {
            if (one.record == nullptr) {
                FillDiscrete(change.Insert(one.guess.type), one.row->component, one.guess);
            }
        }
        const std::vector<CZovRcdProps*> made =
            m_session.Edits().Apply(change, tr("Auto Generate Discrete Models"));
        auto next = made.begin();
        for (const SNew& one : created) {
            const CZovRcdProps* record = one.record == nullptr ? *next++ : one.record;
            m_table->SetModel(*one.row, {library, record, one.guess.type});
        }
        SetModified(true);
    }
    Q_EMIT Told(
        tr("Models made: %1; components without a value: %2").arg(created.size()).arg(open));
    RefreshStatus();
}

void CAssignModelView::OnUpdateCreateDiscModel(ui::CCmdUI& ui)
{
    ui.Enable(m_table && !m_job.IsRunning());
}

// --- whole designs ---------------------------------------------------------------------------

void CAssignModelView::OnAutoMapping()
{
    Map();
}

void CAssignModelView::OnUpdateAutoMapping(ui::CCmdUI& ui)
{
    ui.Enable(m_table && !m_job.IsRunning());
}

void CAssignModelView::OnImportMapFile()
{
    const QString path =
        ui::CPrompt::OpenFile(this, tr("Import Map File"), QLatin1String(kMapFilter));
    if (!path.isEmpty()) {
        ImportMap(path);
    }
}

void CAssignModelView::OnUpdateImportMapFile(ui::CCmdUI& ui)
{
    ui.Enable(m_table && !m_job.IsRunning());
}

bool CAssignModelView::Export()
{
    const QString suggestion =
        m_storedFile.isEmpty() ? QFileInfo(m_title).completeBaseName() + QStringLiteral("_map.csv")
                               : m_storedFile;
    const QString path =
        ui::CPrompt::SaveFile(this, tr("Save Map File"), QLatin1String(kMapFilter), suggestion);
    if (path.isEmpty()) {
        return false;
    }
    const CZovMapFile map = ExportAssignments(*m_table, m_session.Set());
    TDataSetResult failed;
    RunBeside([&] { failed = map.Save(TextPath(path.toStdString())); });
    if (failed) {
        ui::CPrompt::TellUnder(this, QString::fromStdString(failed->caption),
                               QString::fromStdString(failed->Message()), ui::EIcon::Error);
        return false;
    }
    Remember(path);
    SetModified(false);
    Q_EMIT Told(tr("Assignments written: %1").arg(map.Rows().size()));
    return true;
}

void CAssignModelView::OnExportMapFile()
{
    Export();
}

void CAssignModelView::OnUpdateExportMapFile(ui::CCmdUI& ui)
{
    ui.Enable(m_table && !m_job.IsRunning());
}

bool CAssignModelView::MayLeave()
{
    if (!m_modified) {
        return true;
    }
    const ui::EAnswer answer = ui::CPrompt::Ask(
        this,
        tr("The assignments of '%1' are not exported as a map file. Export them?").arg(m_title),
        ui::EButtons::YesNoCancel);
    if (answer == ui::EAnswer::No) {
        SetModified(false); // given up, also for the next start
        return true;
    }
    return answer == ui::EAnswer::Yes && Export();
}

// --- what is shown ---------------------------------------------------------------------------

void CAssignModelView::OnRefreshStatus()
{
    m_table->ForgetCandidates();
    RefreshStatus();
}

void CAssignModelView::OnUpdateRefreshStatus(ui::CCmdUI& ui)
{
    ui.Enable(m_table && !m_job.IsRunning());
}

void CAssignModelView::OnEnableSubModels()
{
    m_subModels = !m_subModels;
    if (m_table) {
        m_table->EnableSubModels(m_subModels);
        m_rows.RowsChanged();
    }
}

void CAssignModelView::OnUpdateEnableSubModels(ui::CCmdUI& ui)
{
    ui.SetCheck(m_subModels);
}

void CAssignModelView::OnExpandModel()
{
    expandAll();
}

void CAssignModelView::OnUpdateExpandModel(ui::CCmdUI& ui)
{
    ui.Enable(m_table && m_table->View() == EAssignView::Component);
}

void CAssignModelView::OnCollapseModel()
{
    collapseAll();
}

void CAssignModelView::OnUpdateCollapseModel(ui::CCmdUI& ui)
{
    ui.Enable(m_table && m_table->View() == EAssignView::Component);
}

void CAssignModelView::OnSwitchView()
{
    if (!m_table) {
        return;
    }
    const AssignRow* current = m_rows.RowAt(currentIndex());
    const std::size_t place = current == nullptr ? 0 : current->place;
    // The rows that the job found things for are not those of the other view.
    const EWork interrupted = m_work;
    if (m_job.IsRunning() && m_work != EWork::Read) {
        m_job.Cancel();
    }
    m_whyJob.Cancel();
    m_rows.Show(nullptr);
    m_table->SwitchView();
    RowsShown();
    const auto& rows = m_table->Rows();
    const auto at = std::ranges::find(rows, place, [](const AssignRow* row) { return row->place; });
    ShowHit(at == rows.end() ? nullptr : *at);
    Q_EMIT ViewSwitched(m_table->View() == EAssignView::RefDes);
    if (interrupted == EWork::Import) {
        ImportMap(m_importing, m_importedAs);
    } else if (interrupted == EWork::Map) {
        Map();
    } else if (interrupted != EWork::Read) {
        RefreshStatus();
    }
}

void CAssignModelView::OnViewOrigin()
{
    const bool refDes = m_table && m_table->View() == EAssignView::RefDes;
    m_originOf[refDes ? 1 : 0] = !m_originOf[refDes ? 1 : 0];
    ShowColumns();
}

void CAssignModelView::OnUpdateViewOrigin(ui::CCmdUI& ui)
{
    ui.Enable(HasDesign());
    ui.SetCheck(m_rows.ShowsOrigin());
}

// --- find and filter -------------------------------------------------------------------------

void CAssignModelView::Find()
{
    const std::size_t count = m_table->FindAll(m_pattern.toStdString(), m_ambiguousOnly);
    m_rows.RowsChanged();
    ShowHint();
    Q_EMIT Told(tr("Rows found: %1").arg(count));
    if (count > 0) {
        ShowHit(m_table->FindNext());
    }
}

void CAssignModelView::OnZvMgrFindAll()
{
    if (!m_table) {
        return;
    }
    m_findWhenCounted = m_ambiguousOnly && !m_table->UncountedRows().rows.empty();
    if (!m_findWhenCounted) {
        Find();
    } else if (!IsBusy()) {
        RefreshStatus();
    }
}

void CAssignModelView::ShowHit(const AssignRow* row)
{
    if (row == nullptr) {
        return;
    }
    const QModelIndex index = m_rows.IndexOf(*row);
    setCurrentIndex(index);
    scrollTo(index);
}

void CAssignModelView::OnZvMgrFindNext()
{
    ShowHit(m_table ? m_table->FindNext() : nullptr);
}

void CAssignModelView::OnZvMgrFindPrev()
{
    ShowHit(m_table ? m_table->FindPrev() : nullptr);
}

void CAssignModelView::OnSelchangeFindPattern()
{
    OnZvMgrFindAll();
}

void CAssignModelView::OnAmbiguousOnly()
{
    m_ambiguousOnly = !m_ambiguousOnly;
    OnZvMgrFindAll();
}

void CAssignModelView::OnUpdateAmbiguousOnly(ui::CCmdUI& ui)
{
    ui.Enable(HasDesign());
    ui.SetCheck(m_ambiguousOnly);
}

void CAssignModelView::OnFoundOnly()
{
    m_foundOnly = !m_foundOnly;
    m_rows.ShowFoundOnly(m_foundOnly);
    ShowHint();
}

void CAssignModelView::OnUpdateFoundOnly(ui::CCmdUI& ui)
{
    ui.Enable(HasDesign());
    ui.SetCheck(m_foundOnly);
}

} // namespace zov::app
