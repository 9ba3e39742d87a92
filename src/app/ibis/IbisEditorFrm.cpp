// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/IbisEditorFrm.h"

#include "app/Images.h"
#include "app/ReleaseBeside.h"
#include "app/ibis/IbisCommands.h"
#include "app/ibis/IbisCurves.h"
#include "app/ibis/IbisTextEdit.h"
#include "app/ibis/LargeTextView.h"
#include "ui/EventFilters.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTableView>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>

#include <utility>

namespace zov::app {
namespace {

QString Text(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

ZOV_BEGIN_MESSAGE_MAP(CIbisEditorFrm, ui::CUiFrame)
ZOV_ON_COMMAND(ID_IBIS_OPEN, IbisOpen)
ZOV_ON_COMMAND_UPDATE(ID_IBIS_SAVE, IbisSave)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_SAVE_AS, IbisSaveAs, OnUpdateOfEdit)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_CHECK, IbisCheck, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_LOADER, IbisLoader, OnUpdateOfFile)
ZOV_ON_COMMAND(ID_IBIS_CLOSE, IbisClose)
ZOV_ON_COMMAND_UPDATE(ID_IBIS_UNDO, IbisUndo)
ZOV_ON_COMMAND_UPDATE(ID_IBIS_REDO, IbisRedo)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_FIND, IbisFind, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_FIND_NEXT, IbisFindNext, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_FIND_PREVIOUS, IbisFindPrevious, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_GO_TO_LINE, IbisGoToLine, OnUpdateOfFile)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_NEXT_MESSAGE, IbisNextMessage, OnUpdateOfMessages)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_PREVIOUS_MESSAGE, IbisPreviousMessage, OnUpdateOfMessages)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_SHOW_ERRORS, IbisShowErrors, OnUpdateIbisShow)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_SHOW_WARNINGS, IbisShowWarnings, OnUpdateIbisShow)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_SHOW_NOTES, IbisShowNotes, OnUpdateIbisShow)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_PANE_TREE, IbisPaneTree, OnUpdateIbisPane)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_PANE_REPORT, IbisPaneReport, OnUpdateIbisPane)
ZOV_ON_COMMAND_UPDATE_BY(ID_IBIS_PANE_CURVES, IbisPaneCurves, OnUpdateIbisPane)
ZOV_ON_COMMAND_UPDATE(ID_IBIS_STOP, IbisStop)
ZOV_END_MESSAGE_MAP()

CIbisEditorFrm::CIbisEditorFrm(CLogSink& log, QWidget* parent)
    : CUiFrame(parent, IbisCommands())
    , m_log(log)
{
    setObjectName(QStringLiteral("IbisEditorFrm"));
    setAcceptDrops(true);
    resize(1280, 800);
    m_actions->SetIcons([](const QString& name) { return Images().Icon(name); });
    m_edit = new CIbisTextEdit(this);
    m_edit->setPlaceholderText(tr("No file is open. Open an IBIS file with Ctrl+O, or drop one "
                                  "here."));
    m_edit->setAcceptDrops(false);
    m_large = new CLargeTextView(this);
    m_texts = new QStackedWidget(this);
    m_texts->addWidget(m_edit);
    m_texts->addWidget(m_large);
    MakeNotice();
    MakePanes();
    MakeMenus();
    MakeToolBars();
    m_verdict = new QLabel(this);
    m_verdict->setObjectName(QStringLiteral("Verdict"));
    m_readOnly = new QLabel(tr("Read only"), this);
    m_readOnly->setObjectName(QStringLiteral("ReadOnly"));
    m_readOnly->setToolTip(tr("A file above 4 MB, or with a line above 20000 characters, is shown "
                              "and checked, and not to be edited here."));
    m_readOnly->hide();
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("LoadProgress"));
    m_progress->setMaximumWidth(220);
    m_stop = new QToolButton(this);
    m_stop->setObjectName(QStringLiteral("StopLoading"));
    m_stop->setDefaultAction(m_actions->Action(ID_IBIS_STOP));
    m_stop->setAutoRaise(true);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_readOnly, m_verdict, m_progress, m_stop}) {
        statusBar()->addPermanentWidget(widget);
    }
    m_progress->hide();
    m_stop->hide();
    ConnectViews();
    ShowTitle();
    StartIdleUpdates();
}

CIbisEditorFrm::~CIbisEditorFrm()
{
    disconnect(m_edit, nullptr, this, nullptr);
    m_tree->setModel(nullptr);
    m_reportList->setModel(nullptr);
    delete m_plot; // before the models that it shows
    m_treeModel.SetFile(nullptr);
    m_report.SetMessages({});
    m_large->SetText({}, {}, {}, QLatin1Char('|'));
    ReleaseBeside(std::move(m_file));
}

void CIbisEditorFrm::ConnectViews()
{
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CIbisEditorFrm::ShowObject);
    connect(m_reportList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CIbisEditorFrm::ShowMessage);
    connect(m_edit, &QPlainTextEdit::cursorPositionChanged, this, &CIbisEditorFrm::FollowText);
    connect(m_large, &CLargeTextView::CurrentLineChanged, this, &CIbisEditorFrm::FollowText);
    connect(m_edit, &CIbisTextEdit::Filled, this, [this] {
        if (const auto goBack = std::exchange(m_goBack, nullptr)) {
            goBack();
        }
    });
    connect(m_edit, &QPlainTextEdit::modificationChanged, this, &QWidget::setWindowModified);
    connect(m_reportSearch, &QLineEdit::textChanged, &m_report, &CReportModel::SetText);
    // The list's own copy takes a cell.
    new ui::CQtSubClassEventFilter(*m_reportList, [this](QEvent& event) {
        const bool isCopy = event.type() == QEvent::KeyPress &&
                            static_cast<QKeyEvent&>(event).matches(QKeySequence::Copy);
        if (isCopy) {
            CopyMessage();
        }
        return isCopy;
    });
    new ui::CQtEnterKeyPressEventFilter(*m_find, [this] { OnIbisFindNext(); });
    connect(&m_job, &CBackgroundJob::Progress, this, [this](const QString& what, int permille) {
        constexpr int kWhole = 1000;
        statusBar()->showMessage(what);
        m_progress->setRange(0, permille > 0 ? kWhole : 0);
        m_progress->setValue(permille);
        m_progress->show();
        m_stop->show();
        m_actions->UpdateAll();
    });
    connect(&m_job, &CBackgroundJob::Finished, this, [this] {
        statusBar()->clearMessage();
        m_progress->hide();
        m_stop->hide();
    });
}

bool CIbisEditorFrm::IsLarge() const
{
    return m_texts->currentWidget() == m_large;
}

std::size_t CIbisEditorFrm::CurrentLine() const
{
    return IsLarge() ? m_large->CurrentLine() : m_edit->CurrentLine();
}

void CIbisEditorFrm::GoToLine(std::size_t line)
{
    if (IsLarge()) {
        m_large->GoToLine(line);
        FollowText();
    } else {
        m_edit->GoToLine(line);
    }
}

void CIbisEditorFrm::GoToFileLine(std::size_t line)
{
    GoToLine(IsLarge() ? line : m_edit->LineInText(line));
}

void CIbisEditorFrm::FollowText()
{
    if (m_following || m_edit->IsFilling()) {
        return;
    }
    m_following = true;
    const std::size_t line = CurrentLine();
    const QModelIndex index = m_treeModel.IndexOfLine(IsLarge() ? line : m_edit->LineOfFile(line));
    if (index.isValid()) {
        m_tree->setCurrentIndex(index);
        m_tree->scrollTo(index);
    }
    m_following = false;
}

void CIbisEditorFrm::ShowObject()
{
    const ibis::CIPDataObject* object = m_treeModel.ObjectAt(m_tree->currentIndex());
    if (object == nullptr) {
        return;
    }
    if (!m_following) { // the tree leads
        m_following = true;
        GoToFileLine(object->Line());
        m_following = false;
    }
    // A value below a table belongs to the table.
    for (QModelIndex at = m_tree->currentIndex(); at.isValid(); at = at.parent()) {
        const ibis::CIPDataObject* drawn = m_treeModel.ObjectAt(at);
        if (drawn == nullptr) { // a group
            continue;
        }
        if (drawn == m_drawn) {
            return;
        }
        SIbisCurves made = CurvesOfObject(*drawn);
        if (made.title.isEmpty()) {
            continue;
        }
        ClearCurves();
        m_drawn = drawn;
        const ibis::CIPDataObject* owner = m_treeModel.ObjectAt(at.parent());
        m_curvesPane->setWindowTitle(drawn->Table() == nullptr || owner == nullptr
                                         ? made.title
                                         : tr("%1 of %2").arg(made.title, Text(owner->Value())));
        for (SShownCurve& curve : made.curves) {
            m_curves.Add(std::move(curve));
        }
        m_plot->SetAxes(made.axes);
        m_plot->ZoomFit();
        return;
    }
}

void CIbisEditorFrm::ClearCurves()
{
    m_drawn = nullptr;
    m_curvesPane->setWindowTitle(tr("Curves"));
    while (m_curves.rowCount() > 0) {
        m_curves.Remove(m_curves.rowCount() - 1);
    }
}

void CIbisEditorFrm::ShowMessage()
{
    const QModelIndex index = m_reportList->currentIndex();
    if (!index.isValid()) {
        m_explanation->clear();
        return;
    }
    const ibis::SIPMessage& message = m_report.At(index.row());
    if (message.line != 0) {
        GoToFileLine(message.line);
    }
    const QString explanation = ExplanationOf(message.code);
    m_explanation->setHtml(
        QStringLiteral("<p>%1</p>").arg(QString::fromStdString(message.text).toHtmlEscaped()) +
        explanation);
}

/// As the checker's report has it.
void CIbisEditorFrm::CopyMessage()
{
    const QModelIndex index = m_reportList->currentIndex();
    if (index.isValid()) {
        const ibis::SIPMessage& message = m_report.At(index.row());
        QApplication::clipboard()->setText(Text(message.head + " - " + message.text));
    }
}

void CIbisEditorFrm::StepMessage(int by)
{
    const int rows = m_report.rowCount();
    if (rows == 0) {
        return;
    }
    const QModelIndex current = m_reportList->currentIndex();
    const int row = current.isValid() ? current.row() + by : (by > 0 ? 0 : rows - 1);
    m_reportList->setCurrentIndex(m_report.index((row + rows) % rows, 0));
}

void CIbisEditorFrm::Toggle(int which)
{
    m_shown[which] = !m_shown[which];
    m_report.SetWanted(static_cast<ibis::EIPSeverity>(which), m_shown[which]);
    if (which == static_cast<int>(ibis::EIPSeverity::Note)) {
        m_report.SetWanted(ibis::EIPSeverity::Other, m_shown[which]);
    }
}

void CIbisEditorFrm::OnIbisShowErrors()
{
    Toggle(0);
}

void CIbisEditorFrm::OnIbisShowWarnings()
{
    Toggle(1);
}

void CIbisEditorFrm::OnIbisShowNotes()
{
    Toggle(2);
}

void CIbisEditorFrm::OnIbisLoader()
{
    if (MayLeave()) { // the loader reads the file
        Q_EMIT LoaderAsked(m_path);
    }
}

void CIbisEditorFrm::OnIbisClose()
{
    close();
}

void CIbisEditorFrm::OnIbisUndo()
{
    m_edit->undo();
}

void CIbisEditorFrm::OnIbisRedo()
{
    m_edit->redo();
}

void CIbisEditorFrm::OnIbisFind()
{
    m_find->setFocus();
    m_find->selectAll();
}

void CIbisEditorFrm::OnIbisFindNext()
{
    Find(false);
}

void CIbisEditorFrm::OnIbisFindPrevious()
{
    Find(true);
}

QDockWidget* CIbisEditorFrm::PaneOf(unsigned command) const
{
    return command == ID_IBIS_PANE_TREE     ? m_treePane
           : command == ID_IBIS_PANE_REPORT ? m_reportPane
                                            : m_curvesPane;
}

void CIbisEditorFrm::OnIbisPaneTree()
{
    m_treePane->setVisible(m_treePane->isHidden());
}

void CIbisEditorFrm::OnIbisPaneReport()
{
    m_reportPane->setVisible(m_reportPane->isHidden());
}

void CIbisEditorFrm::OnIbisPaneCurves()
{
    m_curvesPane->setVisible(m_curvesPane->isHidden());
}

void CIbisEditorFrm::OnIbisStop()
{
    m_search.Abandon();
    if (!m_job.IsRunning()) {
        return;
    }
    m_job.Abandon();
    ShowVerdict(m_path.isEmpty() ? QString() : tr("not checked"));
    statusBar()->showMessage(tr("Stopped. What is shown is what was read before."));
}

void CIbisEditorFrm::OnUpdateIbisStop(ui::CCmdUI& ui)
{
    ui.Enable(m_job.IsRunning() || m_search.IsRunning());
}

void CIbisEditorFrm::OnUpdateIbisSave(ui::CCmdUI& ui)
{
    ui.Enable(IsIdle() && IsModified());
}

void CIbisEditorFrm::OnUpdateOfFile(ui::CCmdUI& ui)
{
    ui.Enable(IsIdle() && !m_path.isEmpty());
}

void CIbisEditorFrm::OnUpdateOfEdit(ui::CCmdUI& ui)
{
    ui.Enable(IsIdle() && !m_path.isEmpty() && !IsLarge());
}

void CIbisEditorFrm::OnUpdateIbisUndo(ui::CCmdUI& ui)
{
    ui.Enable(!IsLarge() && m_edit->document()->isUndoAvailable());
}

void CIbisEditorFrm::OnUpdateIbisRedo(ui::CCmdUI& ui)
{
    ui.Enable(!IsLarge() && m_edit->document()->isRedoAvailable());
}

void CIbisEditorFrm::OnUpdateOfMessages(ui::CCmdUI& ui)
{
    ui.Enable(m_report.rowCount() > 0);
}

void CIbisEditorFrm::OnUpdateIbisShow(ui::CCmdUI& ui)
{
    ui.SetCheck(m_shown[ui.Command() - ID_IBIS_SHOW_ERRORS]);
}

void CIbisEditorFrm::OnUpdateIbisPane(ui::CCmdUI& ui)
{
    ui.SetCheck(!PaneOf(ui.Command())->isHidden());
}

} // namespace zov::app
