// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisLoaderDlg.h"

#include "app/ReleaseBeside.h"
#include "app/RunBeside.h"
#include "app/ibis/ModelBrowserDlg.h"
#include "app/ibis/ReportModel.h"
#include "base/File.h"
#include "ui/EventFilters.h"

#include <QCompleter>
#include <QFileInfo>
#include <QLineEdit>

#include <algorithm>
#include <utility>

namespace zov::app {
namespace {

enum ELoaderCommand : unsigned
{
    ID_LOADER_BROWSE = 2201,
    ID_LOADER_REPORT,
    ID_LOADER_MODELS,
    ID_LOADER_ADD_SELECTED,
    ID_LOADER_CONTROLLER,
    ID_LOADER_MEMORY,
    ID_LOADER_SAVE_COPY
};

const char* const kFilter = "IBIS files (*.ibs);;All files (*)";

QString Full(const SError& error)
{
    QString text = QString::fromStdString(error.Full());
    for (const std::string& note : error.notes) {
        text += QLatin1Char('\n') + QString::fromStdString(note);
    }
    return text;
}

} // namespace

/// What was odd in a block that was read. Gathered, since blocks are read beside the window.
class CIBISLoaderDlg::CRemarks final : public CDiagSink
{
public:
    void Report(const SDiag& diag) override
    {
        m_lines.push_back(SError{{}, diag.text, diag.pos, {}}.Full());
    }
    [[nodiscard]] std::vector<std::string> Take() { return std::exchange(m_lines, {}); }

private:
    std::vector<std::string> m_lines;
};

struct CIBISLoaderDlg::SLoaded
{
    QString path;
    ibis::SIPCheckInfo check;
    std::shared_ptr<ibis::CIBISLoader> loader;
    CResult<void> opened;

    void Read(CJobState& job)
    {
        constexpr double kCheckShare = 0.7;
        const auto part = [&job](double from, double share) {
            return [&job, from, share](double done) {
                job.SetFraction(from + share * done);
                return !job.Cancelled();
            };
        };
        const std::string file = path.toStdString();
        CheckIbisFile(file.c_str(), &check, {ibischk::EFileType::Ibs, {}, part(0.0, kCheckShare)});
        opened = loader->Open(TextPath(file), part(kCheckShare, 1.0 - kCheckShare));
    }
};

ZOV_BEGIN_MESSAGE_MAP(CIBISLoaderDlg, ui::CCmdTargetBase)
ZOV_ON_COMMAND(ID_LOADER_BROWSE, Browse)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_REPORT, ShowReport, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_MODELS, ShowModels, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE(ID_LOADER_ADD_SELECTED, AddSelected)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_CONTROLLER, AssignController, OnUpdateOfComponent)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_MEMORY, AssignMemory, OnUpdateOfComponent)
ZOV_ON_COMMAND_UPDATE_BY(ID_LOADER_SAVE_COPY, SaveCopy, OnUpdateOfComponent)
ZOV_END_MESSAGE_MAP()

CIBISLoaderDlg::CIBISLoaderDlg(QWidget* parent, CLogSink& log)
    : CqtDialogRes(parent)
    , m_log(log)
    , m_remarks(std::make_unique<CRemarks>())
    , m_pins(new IBISPinListEditorView(this))
    , m_series(new IBISSeriesPinListEditorView(this))
    , m_buses(new BusDefinitionEditorView(this))
{
    m_form.ui_IDC_PINS_LAYOUT->insertWidget(0, m_pins);
    m_form.ui_IDC_SERIES_LAYOUT->addWidget(m_series);
    m_form.ui_IDC_BUSES_LAYOUT->addWidget(m_buses);
    m_pins->setObjectName(QStringLiteral("ui_IDC_PIN_LIST"));
    m_series->setObjectName(QStringLiteral("ui_IDC_SERIES_LIST"));
    m_buses->setObjectName(QStringLiteral("ui_IDC_BUS_EDITOR"));
    m_buses->SetDefinitions(nullptr, nullptr);
    OrderTabs();
    BindButton(*m_form.ui_IDC_BROWSE, ID_LOADER_BROWSE);
    BindButton(*m_form.ui_IDC_REPORT, ID_LOADER_REPORT);
    BindButton(*m_form.ui_IDC_MODELS, ID_LOADER_MODELS);
    BindButton(*m_form.ui_IDC_ADD_SELECTED, ID_LOADER_ADD_SELECTED);
    BindButton(*m_form.ui_IDC_ASSIGN_CONTROLLER, ID_LOADER_CONTROLLER);
    BindButton(*m_form.ui_IDC_ASSIGN_MEMORY, ID_LOADER_MEMORY);
    BindButton(*m_form.ui_IDC_SAVE_COPY, ID_LOADER_SAVE_COPY);
    QComboBox& components = *m_form.ui_IDC_COMPONENT;
    components.completer()->setFilterMode(Qt::MatchContains);
    components.completer()->setCompletionMode(QCompleter::PopupCompletion);
    connect(&components, qOverload<int>(&QComboBox::activated), this,
            [this] { SelectComponent(m_form.ui_IDC_COMPONENT->currentText()); });
    new ui::CQtEnterKeyPressEventFilter(*components.lineEdit(), [this] {
        SelectComponent(m_form.ui_IDC_COMPONENT->currentText());
    });
    connect(m_buses, &BusDefinitionEditorView::Refused, this, &CIBISLoaderDlg::Refuse);
    connect(m_buses, &BusDefinitionEditorView::Changed, this, [this] {
        m_form.ui_IDC_MESSAGE->clear();
        OnIdleUpdateCmdUI();
    });
    connect(m_pins->List().Table().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CUiDialog::OnIdleUpdateCmdUI);
    connect(&m_job, &CBackgroundJob::Progress, this, [this](const QString& what, int permille) {
        m_form.ui_IDC_VERDICT->setText(tr("%1: %2 %").arg(what).arg(permille / 10));
    });
    connect(&m_job, &CBackgroundJob::Finished, this, &CUiDialog::OnIdleUpdateCmdUI);
    OnIdleUpdateCmdUI();
}

/// The editors are no part of the form, and would come last.
void CIBISLoaderDlg::OrderTabs()
{
    QWidget* before = m_form.ui_IDC_TABS;
    const auto next = [&before](QWidget* widget) {
        setTabOrder(before, widget);
        before = widget;
    };
    next(&m_pins->List().Filter());
    next(&m_pins->List().Table());
    next(m_form.ui_IDC_ADD_SELECTED);
    for (QWidget* const editor :
         {static_cast<QWidget*>(m_series), static_cast<QWidget*>(m_buses)}) {
        for (const char* name : {"Filter", "Rows", "ComponentType", "BusTree", "AddBus", "AddGroup",
                                 "AddReference", "AddClock", "AddSignal", "RemoveDefinition"}) {
            if (auto* widget = editor->findChild<QWidget*>(QLatin1String(name))) {
                next(widget);
            }
        }
    }
    next(m_form.ui_IDC_MESSAGES);
    next(m_form.ui_IDC_ASSIGN_CONTROLLER);
}

CIBISLoaderDlg::~CIBISLoaderDlg()
{
    // A cell that is still being edited is not written into what is going.
    m_buses->SetDefinitions(nullptr, nullptr);
    ReleaseBeside(std::move(m_loader));
}

void CIBISLoaderDlg::OnBrowse()
{
    const QString path = ui::CPrompt::OpenFile(this, tr("Load IBIS File"), tr(kFilter));
    if (!path.isEmpty()) {
        OpenFile(path);
    }
}

void CIBISLoaderDlg::OpenFile(const QString& path)
{
    if (!MayLeave()) {
        return;
    }
    m_job.Abandon();
    auto loaded = std::make_shared<SLoaded>();
    loaded->path = path;
    loaded->loader = std::make_shared<ibis::CIBISLoader>(m_remarks.get());
    m_job.Start(tr("Checking and reading %1").arg(QFileInfo(path).fileName()),
                [this, loaded](CJobState& state) -> CBackgroundJob::Deliver {
                    loaded->Read(state);
                    return [this, loaded] { Take(*loaded); };
                });
}

void CIBISLoaderDlg::Take(SLoaded& loaded)
{
    if (!loaded.opened) { // the one before stays
        ShowVerdict(m_check);
        Tell(loaded.opened.Error());
        return;
    }
    m_check = std::move(loaded.check);
    ShowVerdict(m_check);
    m_log.Write(m_form.ui_IDC_VERDICT->text().toStdString());
    m_path = loaded.path;
    m_form.ui_IDC_FILE->setText(m_path);
    m_buses->SetDefinitions(nullptr, nullptr);
    ReleaseBeside(std::exchange(m_loader, loaded.loader));
    m_component.clear();
    QStringList names;
    for (const std::string& name : m_loader->Components()) {
        names += QString::fromStdString(name);
    }
    m_form.ui_IDC_COMPONENT->clear();
    m_form.ui_IDC_COMPONENT->addItems(names);
    SelectComponent(names.first());
}

void CIBISLoaderDlg::ShowVerdict(const ibis::SIPCheckInfo& check)
{
    QString text;
    switch (check.result) {
    case ibis::kIPCheckClean:
        text = tr("The check found nothing wrong.");
        break;
    case ibis::kIPCheckWarnings:
        text =
            tr("The check has %1.").arg(CountText(check.warnings, tr("warning"), tr("warnings")));
        break;
    case ibis::kIPCheckErrors:
        text = tr("The check found %1.").arg(VerdictText(check.errors, check.warnings));
        break;
    default:
        text = m_path.isEmpty()
                   ? QString()
                   : tr("The file was not checked: %1").arg(QString::fromStdString(check.problem));
        break;
    }
    m_form.ui_IDC_VERDICT->setText(text);
}

void CIBISLoaderDlg::SelectComponent(const QString& name)
{
    if (!m_loader || name == m_component) {
        return;
    }
    const auto& all = m_loader->Components();
    if (std::ranges::find(all, name.toStdString()) == all.end()) {
        // What is shown stays, and so does its name.
        const CResult<void> refused = m_loader->Select(name.toStdString());
        ShowComponent();
        Tell(refused.Error());
        return;
    }
    if (!MayLeave()) {
        ShowComponent();
        return;
    }
    m_buses->SetDefinitions(nullptr, nullptr);
    m_component = name;
    ShowComponent();
    CResult<void> selected;
    RunBeside([&] { selected = m_loader->Select(name.toStdString()); });
    for (const std::string& remark : m_remarks->Take()) {
        m_log.Write(remark);
    }
    ShowPins(selected ? m_loader->Pins() : ibis::SPinList());
    if (selected) {
        m_buses->SetDefinitions(&m_loader->Definitions(), &m_loader->Editor());
    }
    OnIdleUpdateCmdUI();
    if (!selected) {
        Tell(selected.Error());
    }
}

void CIBISLoaderDlg::ShowComponent()
{
    QComboBox& components = *m_form.ui_IDC_COMPONENT;
    components.setCurrentIndex(
        components.findText(m_component, Qt::MatchExactly | Qt::MatchCaseSensitive));
    components.setEditText(m_component);
}

void CIBISLoaderDlg::ShowPins(const ibis::SPinList& list)
{
    m_pins->SetPins(list.pins);
    m_series->SetList(list);
    QStringList names;
    for (const ibis::SPinListRow& row : list.pins) {
        names += QString::fromStdString(row.signal);
    }
    names.removeDuplicates();
    m_buses->SetSignals(names);
    m_form.ui_IDC_MESSAGE->clear();
    m_form.ui_IDC_MESSAGES->clear();
    for (const std::string& message : list.messages) {
        m_log.Write(message);
        m_form.ui_IDC_MESSAGES->appendPlainText(QString::fromStdString(message));
    }
    m_form.ui_IDC_MESSAGES->moveCursor(QTextCursor::Start);
    m_form.ui_IDC_MESSAGES->setVisible(!list.messages.empty());
}

void CIBISLoaderDlg::Refuse(const QString& text)
{
    m_log.Write(text.toStdString());
    m_form.ui_IDC_MESSAGE->setText(text);
}

void CIBISLoaderDlg::Tell(const SError& error)
{
    m_log.Write(error.Full());
    ui::CPrompt::Tell(this, Full(error), ui::EIcon::Error);
}

void CIBISLoaderDlg::OnShowReport()
{
    Q_EMIT EditorAsked(m_path);
}

void CIBISLoaderDlg::OnShowModels()
{
    CModelBrowserDlg dialog(this);
    dialog.OpenFile(m_path);
    dialog.DoModal();
}

void CIBISLoaderDlg::OnAddSelected()
{
    m_buses->AddSignals(m_pins->SelectedSignals());
}

void CIBISLoaderDlg::OnAssignController()
{
    const CResult<void> assigned = m_loader->AssignController();
    if (!assigned) {
        Tell(assigned.Error());
        return;
    }
    m_controller = QString::fromStdString(m_loader->Controller());
    m_form.ui_IDC_CONTROLLER->setText(m_controller);
}

void CIBISLoaderDlg::OnAssignMemory()
{
    const CResult<void> assigned = m_loader->AssignMemory();
    if (!assigned) {
        Tell(assigned.Error());
        return;
    }
    m_memory = QString::fromStdString(m_loader->Memory());
    m_form.ui_IDC_MEMORY->setText(m_memory);
}

bool CIBISLoaderDlg::SaveCopy()
{
    CResult<std::filesystem::path> copy = std::filesystem::path();
    RunBeside([&] { copy = m_loader->SaveCopy(); });
    if (!copy) {
        Tell(copy.Error());
        return false;
    }
    m_saved = QString::fromStdString(PathText(*copy));
    const QString text = tr("Saved as %1").arg(m_saved);
    m_log.Write(text.toStdString());
    m_form.ui_IDC_MESSAGE->setText(text);
    return true;
}

void CIBISLoaderDlg::OnSaveCopy()
{
    SaveCopy();
}

bool CIBISLoaderDlg::MayLeave()
{
    if (!m_loader || !m_loader->Changed()) {
        return true;
    }
    const ui::EAnswer answer =
        ui::CPrompt::Ask(this, tr("Save the changed bus definitions into a copy of the file?"),
                         ui::EButtons::YesNoCancel);
    return answer == ui::EAnswer::No || (answer == ui::EAnswer::Yes && SaveCopy());
}

void CIBISLoaderDlg::reject()
{
    if (MayLeave()) {
        QDialog::reject();
    }
}

void CIBISLoaderDlg::OnUpdateOfFile(ui::CCmdUI& ui)
{
    ui.Enable(m_loader != nullptr && IsIdle());
}

void CIBISLoaderDlg::OnUpdateOfComponent(ui::CCmdUI& ui)
{
    ui.Enable(m_loader != nullptr && IsIdle() && m_buses->isEnabled());
}

void CIBISLoaderDlg::OnUpdateAddSelected(ui::CCmdUI& ui)
{
    ui.Enable(m_buses->isEnabled() && !m_pins->SelectedSignals().isEmpty());
}

} // namespace zov::app
