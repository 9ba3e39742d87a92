// SPDX-License-Identifier: Apache-2.0
// The view's making, what it shows, and the work beside the window.
#include "app/assignment/AssignModelView.h"

#include "app/assignment/AssignCommands.h"
#include "app/assignment/WhyText.h"
#include "base/File.h"
#include "ui/Prompt.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace zov::app {
namespace {

constexpr int kResumeAfterMs = 100;
constexpr int kWhyAfterMs = 80;
constexpr int kKeepAfterMs = 2000;
constexpr std::size_t kRunnersUp = 8;
constexpr const char* kMapsKey = "Assignment/Maps";

/// Findings of a design file as lines of the output pane.
class COutputDiag final : public CDiagSink
{
public:
    explicit COutputDiag(CLogSink& output)
        : m_output(output)
    {
    }
    void Report(const SDiag& diag) override
    {
        m_output.Write("[WARNING] " + diag.pos.file + ":" + std::to_string(diag.pos.line) + ": " +
                       diag.text);
    }

private:
    CLogSink& m_output;
};

FSearchProgress ProgressOf(CJobState& state)
{
    return [&state](double done) {
        state.SetFraction(done);
        return !state.Cancelled();
    };
}

} // namespace

/// A map file on its way into the rows.
struct CAssignModelView::SImport
{
    CZovMapFile map;
    TDataSetResult failed;
    std::unique_ptr<CMapImport> import;
};

ZOV_BEGIN_MESSAGE_MAP(CAssignModelView, ui::CCmdTargetBase)
ZOV_ON_COMMAND_UPDATE(ID_FIND_MODEL, FindModel)
ZOV_ON_COMMAND_UPDATE(ID_FIND_MODEL_BY_NAME, FindModelByName)
ZOV_ON_COMMAND_UPDATE(ID_FIND_MODEL_BY_SCHEMA, FindModelBySchema)
ZOV_ON_COMMAND_UPDATE(ID_REFRESH_STATUS, RefreshStatus)
ZOV_ON_COMMAND_UPDATE(ID_ENABLE_SUB_MODELS, EnableSubModels)
ZOV_ON_COMMAND_UPDATE(ID_BROWSE_MODEL, BrowseModel)
ZOV_ON_COMMAND_UPDATE(ID_REMOVE_MODEL, RemoveModel)
ZOV_ON_COMMAND_UPDATE(ID_CREATE_MODEL, CreateModel)
ZOV_ON_COMMAND_UPDATE(ID_CREATE_DISC_MODEL, CreateDiscModel)
ZOV_ON_COMMAND_UPDATE(ID_AUTO_MAPPING, AutoMapping)
ZOV_ON_COMMAND_UPDATE(ID_IMPORT_MAP_FILE, ImportMapFile)
ZOV_ON_COMMAND_UPDATE(ID_EXPORT_MAP_FILE, ExportMapFile)
ZOV_ON_COMMAND_UPDATE(ID_EXPAND_MODEL, ExpandModel)
ZOV_ON_COMMAND_UPDATE(ID_COLLAPSE_MODEL, CollapseModel)
ZOV_ON_COMMAND(ID_SWITCH_VIEW, SwitchView)
ZOV_ON_COMMAND(ID_ZVMGR_FIND_ALL, ZvMgrFindAll)
ZOV_ON_COMMAND(ID_ZVMGR_FIND_NEXT, ZvMgrFindNext)
ZOV_ON_COMMAND(ID_ZVMGR_FIND_PREV, ZvMgrFindPrev)
ZOV_ON_COMMAND(ID_SELCHANGE_FIND_PATTERN, SelchangeFindPattern)
ZOV_ON_COMMAND_UPDATE(ID_AMBIGUOUS_ONLY, AmbiguousOnly)
ZOV_ON_COMMAND_UPDATE(ID_FOUND_ONLY, FoundOnly)
ZOV_ON_COMMAND_UPDATE(ID_VIEW_ORIGIN, ViewOrigin)
ZOV_END_MESSAGE_MAP()

CAssignModelView::CAssignModelView(CZovSession& session, CLogSink& output, QSettings& layout,
                                   FEnvironment environment, QWidget* parent)
    : CUiHandyObjListCtrl(parent)
    , m_session(session)
    , m_output(output)
    , m_layout(layout)
    , m_environment(std::move(environment))
    , m_search(m_environment)
    , m_rows(nullptr)
{
    setObjectName(QStringLiteral("AssignView"));
    setAccessibleName(tr("Components and their models"));
    setModel(&m_rows);
    m_rows.SetTip([this](const AssignRow& row) { return TipOf(row); });
    m_resume.setSingleShot(true);
    m_resume.setInterval(kResumeAfterMs);
    m_whyDue.setSingleShot(true);
    m_whyDue.setInterval(kWhyAfterMs);
    m_keepDue.setSingleShot(true);
    m_keepDue.setInterval(kKeepAfterMs);
    connect(&m_keepDue, &QTimer::timeout, this, &CAssignModelView::KeepForRecovery);
    m_active = m_session.Set().ActiveLibraries();
    ConnectSession();
    ShowColumns();
    ShowHint();
}

CAssignModelView::~CAssignModelView()
{
    m_whyJob.Cancel();
    m_job.Cancel();
    setModel(nullptr);
}

void CAssignModelView::ConnectSession()
{
    connect(&m_session, &CZovSession::LibraryAboutToChange, this,
            [this](CZovLibrary* library) { LibraryAboutToChange(*library); });
    connect(&m_session, &CZovSession::LibraryChanged, this,
            [this](CZovLibrary* library) { LibraryChanged(*library); });
    connect(&m_session, &CZovSession::LibrariesChanged, this, &CAssignModelView::SetChanged);
    connect(&m_resume, &QTimer::timeout, this, [this] {
        if (m_searchLent) {
            m_resume.start();
        } else if (m_table && !m_job.IsRunning()) {
            std::exchange(m_mapDue, false) ? MapOrRefresh() : RefreshStatus();
        }
    });
    connect(&m_whyDue, &QTimer::timeout, this, &CAssignModelView::AskWhy);
    connect(&m_job, &CBackgroundJob::Finished, this, [this] {
        m_work = EWork::None;
        if (std::exchange(m_stopped, false) && m_table) { // what is known without a search
            m_table->TakeCounts({}, {});
            m_rows.RowsChanged();
            Q_EMIT Told(tr("Stopped."));
        }
        m_whyDue.start();
        ShowHint();
    });
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { m_whyDue.start(); });
    connect(this, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pos) { Q_EMIT ContextMenuAsked(viewport()->mapToGlobal(pos)); });
    connect(this, &QAbstractItemView::doubleClicked, this, [this] {
        if (CanEdit()) {
            OnFindModel();
        }
    });
}

bool CAssignModelView::IsBusy() const
{
    return m_job.IsRunning() || m_resume.isActive();
}

void CAssignModelView::StopWork()
{
    m_stopped = m_job.IsRunning();
    m_job.RequestCancel();
}

std::vector<std::shared_ptr<CZovLibrary>> CAssignModelView::Active() const
{
    return m_session.Set().ActiveLibraries();
}

void CAssignModelView::Begin()
{
    m_whyJob.Cancel(); // both would search in the same index
}

void CAssignModelView::OpenDesign(const QString& path)
{
    Begin();
    m_resume.stop();
    m_work = EWork::Read;
    m_job.Start(tr("Reading %1").arg(QFileInfo(path).fileName()), [this, path](CJobState&) {
        COutputDiag diag(m_output);
        auto file = std::make_shared<CResult<SDesignFile>>(
            ReadDesignFile(TextPath(path.toStdString()), {}, diag));
        std::shared_ptr<CAssignTable> table;
        if (*file) {
            table = std::make_shared<CAssignTable>((*file)->design, m_session.Set(), m_search);
        }
        return [this, path, file, table] {
            if (!*file) {
                ui::CPrompt::Tell(this, QString::fromStdString(file->Error().Full()),
                                  ui::EIcon::Error);
                return;
            }
            const QVariantMap maps = m_layout.value(QLatin1String(kMapsKey)).toMap();
            TakeDesign(table, QFileInfo(path).fileName(), path,
                       maps.value(QFileInfo(path).absoluteFilePath()).toString());
        };
    });
}

void CAssignModelView::SetDesign(SDesign design, const QString& title, const QString& storedFile)
{
    Begin();
    m_job.Cancel();
    TakeDesign(std::make_shared<CAssignTable>(design, m_session.Set(), m_search), title, {},
               storedFile);
}

void CAssignModelView::TakeDesign(std::shared_ptr<CAssignTable> table, const QString& title,
                                  const QString& path, const QString& storedFile)
{
    m_whyJob.Cancel();
    m_rows.Show(nullptr);
    m_origins.clear();
    m_table = std::move(table);
    m_table->EnableSubModels(m_subModels);
    m_title = title;
    m_designPath = path;
    m_storedFile = storedFile;
    m_foundOnly = false;
    m_rows.ShowFoundOnly(false);
    const std::vector<AssignRow*>& rows = m_table->Rows();
    m_originOf[0] =
        std::ranges::any_of(rows, [](const AssignRow* row) { return !row->originalModel.empty(); });
    m_originOf[1] = true;
    m_modified = false;
    m_keepDue.stop();
    Q_EMIT ModifiedChanged();
    RowsShown();
    m_active = Active();
    Q_EMIT DesignChanged();
    Q_EMIT ViewSwitched(false);
    const QString kept = RecoveryFile();
    const bool isKept = !kept.isEmpty() && QFileInfo::exists(kept);
    if (isKept && ui::CPrompt::Ask(this,
                                   tr("The program ended before assignments of '%1' were exported. "
                                      "Take them over?")
                                       .arg(m_title),
                                   ui::EButtons::YesNo) == ui::EAnswer::Yes) {
        ImportMap(kept, EMap::Recovered);
        return;
    }
    if (isKept) {
        QFile::remove(kept);
    }
    if (!m_storedFile.isEmpty() && QFileInfo::exists(m_storedFile)) {
        ImportMap(m_storedFile);
    } else {
        MapOrRefresh();
    }
}

void CAssignModelView::RowsShown()
{
    m_rows.Show(m_table.get());
    ShowColumns();
    ShowHint();
    if (m_rows.rowCount() > 0) {
        setCurrentIndex(m_rows.index(0, 0));
    }
}

void CAssignModelView::ShowColumns()
{
    const bool refDes = m_table && m_table->View() == EAssignView::RefDes;
    m_rows.ShowOrigin(m_originOf[refDes ? 1 : 0]);
    std::vector<int> widths;
    for (const SAssignColumn& column : m_rows.Columns()) {
        widths.push_back(column.width);
    }
    setRootIsDecorated(!refDes);
    SetColumnWidths(std::move(widths));
}

void CAssignModelView::ShowHint()
{
    SetHint(m_work == EWork::Read ? tr("The design is being read.")
            : !m_table    ? tr("No design is open. Open a component list (.csv, .xlsx, .xls) or a "
                                  "KiCad netlist with Ctrl+O.")
            : m_foundOnly ? tr("Nothing was found. Change the pattern, or show all rows again.")
                          : tr("The design has no components."));
}

void CAssignModelView::MapOrRefresh()
{
    if (!m_table) {
        return;
    }
    const std::string stored = m_storedFile.toStdString();
    if (CAssignTable::MapsOnOpening(TextPath(stored), m_environment)) {
        Map();
    } else {
        RefreshStatus();
    }
}

void CAssignModelView::Map()
{
    Begin();
    const auto names = std::make_shared<CAssignTable::SNames>(m_table->OpenRows());
    if (names->rows.empty()) {
        RefreshStatus();
        return;
    }
    m_work = EWork::Map;
    m_job.Start(tr("Looking for %Ln models", nullptr, static_cast<int>(names->rows.size())),
                [this, names, libraries = Active(),
                 keys = m_session.Settings().searchOptions.EnabledKeys()](CJobState& state) {
                    auto found = std::make_shared<std::vector<SFound>>(
                        m_search.FindAll(libraries, keys, names->wanted, ProgressOf(state)));
                    return [this, names, found] {
                        m_table->TakeFound(*names, *found);
                        int count = 0;
                        for (std::size_t i = 0; i < found->size(); ++i) {
                            const SFound& one = (*found)[i];
                            if (one.model) {
                                m_origins[names->rows[i]] = {one, false, one.model};
                                ++count;
                            }
                        }
                        Q_EMIT Told(tr("Rows that were given a model: %1 of %2")
                                        .arg(count)
                                        .arg(names->rows.size()));
                        RefreshStatus();
                    };
                });
    m_rows.RowsChanged();
}

void CAssignModelView::RefreshStatus()
{
    Begin();
    const auto names = std::make_shared<CAssignTable::SNames>(m_table->UncountedRows());
    if (names->rows.empty()) {
        m_table->TakeCounts({}, {});
        ShowStatus();
        return;
    }
    m_work = EWork::Count;
    m_job.Start(tr("Checking %Ln rows", nullptr, static_cast<int>(names->rows.size())),
                [this, names, libraries = Active()](CJobState& state) {
                    auto counts = std::make_shared<std::vector<std::size_t>>(
                        m_search.CountCandidates(libraries, names->wanted,
                                                 CAssignTable::kCandidateLimit, ProgressOf(state)));
                    return [this, names, counts] {
                        m_table->TakeCounts(*names, *counts);
                        ShowStatus();
                    };
                });
    m_rows.RowsChanged();
}

void CAssignModelView::ShowStatus()
{
    m_rows.RowsChanged();
    m_whyDue.start();
    if (m_findWhenCounted) {
        m_findWhenCounted = false;
        Find();
    }
}

void CAssignModelView::ImportMap(const QString& path, EMap map)
{
    Begin();
    m_importing = path;
    m_importedAs = map;
    m_work = EWork::Import;
    const auto import = std::make_shared<SImport>();
    m_job.Start(tr("Reading %1").arg(QFileInfo(path).fileName()), [this, path, import](CJobState&) {
        import->failed = import->map.Load(TextPath(path.toStdString()));
        return [this, import] { TakeImport(import); };
    });
}

void CAssignModelView::TakeImport(const std::shared_ptr<SImport>& import)
{
    if (import->failed) {
        ui::CPrompt::TellUnder(this, QString::fromStdString(import->failed->caption),
                               QString::fromStdString(import->failed->Message()), ui::EIcon::Error);
        RefreshStatus();
        return;
    }
    import->import = std::make_unique<CMapImport>(import->map, *m_table, m_session.Set());
    m_work = EWork::Import;
    m_job.Start(tr("Looking for the models of %1").arg(QFileInfo(m_importing).fileName()),
                [this, import](CJobState& state) {
                    import->import->Search(ProgressOf(state));
                    return [this, import] {
                        const std::vector<AssignRow*> rows = import->import->Apply();
                        for (const AssignRow* row : rows) {
                            m_origins[row] = {{}, true, row->assigned.front()};
                        }
                        if (m_importedAs == EMap::Stored) {
                            Remember(m_importing);
                        }
                        SetModified(m_importedAs == EMap::Recovered);
                        m_keepDue.stop(); // what was kept may name libraries that are closed now
                        Q_EMIT Told(tr("Rows that the map file gave a model: %1").arg(rows.size()));
                        RefreshStatus();
                    };
                });
}

void CAssignModelView::Remember(const QString& mapFile)
{
    m_storedFile = QFileInfo(mapFile).absoluteFilePath();
    if (m_designPath.isEmpty()) {
        return;
    }
    QVariantMap maps = m_layout.value(QLatin1String(kMapsKey)).toMap();
    maps[QFileInfo(m_designPath).absoluteFilePath()] = m_storedFile;
    m_layout.setValue(QLatin1String(kMapsKey), maps);
}

void CAssignModelView::SetModified(bool modified)
{
    m_modified = modified;
    if (modified) {
        m_keepDue.start();
    } else {
        m_keepDue.stop();
        m_keepJob.Cancel(); // it would come back
        QFile::remove(RecoveryFile());
    }
    Q_EMIT ModifiedChanged();
}

/// Beside the design, so that it is found again; empty for a design without a file.
QString CAssignModelView::RecoveryFile() const
{
    const QFileInfo design(m_designPath);
    return m_designPath.isEmpty() ? QString()
                                  : design.absolutePath() + QStringLiteral("/.") +
                                        design.fileName() + QStringLiteral(".zovra-map");
}

void CAssignModelView::KeepForRecovery()
{
    if (!m_table || m_designPath.isEmpty()) {
        return;
    }
    const auto map = std::make_shared<CZovMapFile>(ExportAssignments(*m_table, m_session.Set()));
    m_keepJob.Start(tr("Autosave"), [this, map, path = RecoveryFile().toStdString()](CJobState&) {
        const auto failed = std::make_shared<TDataSetResult>(map->Save(TextPath(path)));
        return [this, failed] {
            if (*failed) {
                m_output.Write("[WARNING] assignments can't be kept for the case of a crash: " +
                               (*failed)->Message());
            }
        };
    });
}

void CAssignModelView::LibraryAboutToChange(const CZovLibrary& library)
{
    m_whyJob.Cancel();
    const EWork work = m_work;
    if (m_job.IsRunning() && work != EWork::Read) { // reading a design needs no library
        m_job.Cancel();
        m_work = work; // MapOrRefresh and ImportMap do it again
    }
    if (m_table) {
        m_table->BeforeChange(library);
    }
}

void CAssignModelView::LibraryChanged(CZovLibrary& library)
{
    if (!m_table) {
        return;
    }
    const std::size_t lost = m_table->AfterChange(library);
    if (lost > 0) {
        Q_EMIT Told(tr("Rows whose model is not in its library any more: %1").arg(lost));
    }
    m_table->ForgetCandidates();
    m_rows.RowsChanged();
    if (m_job.IsRunning()) {
        return; // a design is being read, which replaces the table
    }
    const EWork interrupted = std::exchange(m_work, EWork::None);
    if (interrupted == EWork::Import) {
        ImportMap(m_importing, m_importedAs);
    } else {
        m_mapDue = m_mapDue || interrupted == EWork::Map;
        m_resume.start(); // many changes in a row are one
    }
}

void CAssignModelView::SetChanged()
{
    std::vector<std::shared_ptr<CZovLibrary>> active = Active();
    if (active == m_active) {
        return;
    }
    m_active = std::move(active);
    if (!m_table) {
        return;
    }
    m_whyJob.Cancel();
    const EWork interrupted = m_work;
    if (m_job.IsRunning() && m_work != EWork::Read) {
        m_job.Cancel();
    }
    m_table->DropGoneModels();
    m_table->ForgetCandidates();
    m_rows.RowsChanged();
    if (m_job.IsRunning()) {
        return;
    }
    m_work = EWork::None;
    if (interrupted == EWork::Import) {
        ImportMap(m_importing, m_importedAs);
    } else {
        m_mapDue = true;
        m_resume.start();
    }
}

void CAssignModelView::AskWhy()
{
    if (IsBusy() || m_searchLent) { // asked again when it is done
        return;
    }
    if (m_whyJob.IsRunning()) { // waiting for it would hold up the keys that move on
        m_whyJob.RequestCancel();
        m_whyDue.start();
        return;
    }
    const AssignRow* row = m_rows.RowAt(currentIndex());
    if (row == nullptr) {
        Q_EMIT WhyChanged({});
        return;
    }
    SWhy why;
    why.name = row->Name();
    why.how = HowOf(*row).toStdString();
    for (const SModelRef& model : m_table->ModelsOf(*row)) {
        why.models.push_back(model);
    }
    const auto origin = m_origins.find(row);
    SFound found = origin == m_origins.end() ? SFound() : origin->second.found;
    if (found.model && (why.models.empty() || found.model != why.models.front())) {
        found = {};
    }
    const SWanted wanted{row->component, m_table->ComponentOf(*row).requiredType};
    m_whyJob.Start(tr("Searching"), [this, why, found, wanted, libraries = Active(),
                                     options =
                                         m_session.Settings().searchOptions](CJobState& state) {
        const auto goOn = [&state] { return !state.Cancelled(); };
        auto text = std::make_shared<QString>(WhyHtml(
            why, found, Explain(m_search, libraries, options, wanted, found, kRunnersUp, goOn)));
        return [this, text] { Q_EMIT WhyChanged(*text); };
    });
}

QString CAssignModelView::HowOf(const AssignRow& row) const
{
    const std::vector<SModelRef> models = m_table->ModelsOf(row);
    if (models.empty()) {
        return {};
    }
    const AssignRow& own =
        row.refdes.empty() || !row.assigned.empty() ? row : m_table->ComponentRow(row);
    const auto origin = m_origins.find(&own);
    if (origin == m_origins.end() || origin->second.model != models.front()) {
        return tr("chosen by the user");
    }
    if (origin->second.byMap) {
        return tr("found in the map file");
    }
    return QString::fromStdString(HowFound(origin->second.found, own.component));
}

QString CAssignModelView::TipOf(const AssignRow& row) const
{
    const QString status = QString::fromStdString(m_table->CellText(row, EAssignColumn::Status));
    const QString how = HowOf(row);
    return how.isEmpty() || status.isEmpty() ? status + how : status + QLatin1Char('\n') + how;
}

} // namespace zov::app
