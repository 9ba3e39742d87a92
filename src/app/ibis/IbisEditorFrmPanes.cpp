// SPDX-License-Identifier: Apache-2.0
// The IBIS editor's panes, menus and tool bars.
#include "app/ibis/EmptyHint.h"
#include "app/ibis/IbisCommands.h"
#include "app/ibis/IbisEditorFrm.h"

#include <QDockWidget>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace zov::app {

/// The text with a line above it for what happened to the file.
void CIbisEditorFrm::MakeNotice()
{
    m_notice = new QFrame(this);
    m_notice->setObjectName(QStringLiteral("ChangedNotice"));
    m_notice->setFrameShape(QFrame::StyledPanel);
    m_noticeText = new QLabel(m_notice);
    m_noticeText->setWordWrap(true);
    auto* again = new QPushButton(tr("&Read Again"), m_notice);
    again->setObjectName(QStringLiteral("ReadAgain"));
    auto* keep = new QPushButton(tr("&Keep"), m_notice);
    keep->setObjectName(QStringLiteral("KeepText"));
    auto* line = new QHBoxLayout(m_notice);
    line->addWidget(m_noticeText, 1);
    line->addWidget(again);
    line->addWidget(keep);
    m_notice->hide();
    auto* middle = new QWidget(this);
    auto* layout = new QVBoxLayout(middle);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_notice);
    layout->addWidget(m_texts, 1);
    setCentralWidget(middle);
    connect(again, &QPushButton::clicked, this, &CIbisEditorFrm::ReadAgain);
    connect(keep, &QPushButton::clicked, m_notice, &QWidget::hide);
}

void CIbisEditorFrm::MakePanes()
{
    m_tree = new QTreeView(this);
    m_tree->setObjectName(QStringLiteral("IbisTree"));
    m_tree->setModel(&m_treeModel);
    m_tree->setUniformRowHeights(true);
    m_tree->header()->resizeSection(0, 180);
    new CEmptyHint(*m_tree, tr("The keywords of the file stand here when one is open."));

    m_reportList = new QTableView(this);
    m_reportList->setObjectName(QStringLiteral("ReportList"));
    m_reportList->setModel(&m_report);
    m_reportList->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_reportList->setSelectionMode(QAbstractItemView::SingleSelection);
    m_reportList->setShowGrid(false);
    m_reportList->setWordWrap(false);
    m_reportList->setTabKeyNavigation(false);
    m_reportList->verticalHeader()->hide();
    m_reportList->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_reportList->horizontalHeader()->setStretchLastSection(true);
    m_reportList->horizontalHeader()->setHighlightSections(false);
    m_reportList->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_reportHint =
        new CEmptyHint(*m_reportList, tr("What the checker says of the file stands here."));
    m_explanation = new QTextBrowser(this);
    m_explanation->setObjectName(QStringLiteral("Explanation"));
    m_explanation->setPlaceholderText(tr("Choose a message to read what it means."));
    m_reportSearch = new QLineEdit(this);
    m_reportSearch->setObjectName(QStringLiteral("ReportSearch"));
    m_reportSearch->setPlaceholderText(tr("Text or code"));
    m_reportSearch->setClearButtonEnabled(true);
    m_reportSearch->setMaximumWidth(240);

    auto* bar = new QToolBar(this);
    m_actions->FillToolBar(*bar, {ID_IBIS_SHOW_ERRORS, ID_IBIS_SHOW_WARNINGS, ID_IBIS_SHOW_NOTES,
                                  ui::kSeparator, ID_IBIS_PREVIOUS_MESSAGE, ID_IBIS_NEXT_MESSAGE});
    bar->addWidget(m_reportSearch);
    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(m_reportList);
    split->addWidget(m_explanation);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 2);
    auto* report = new QWidget(this);
    auto* layout = new QVBoxLayout(report);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(split, 1);

    m_plot = new CCurvePlot(m_curves, m_markers, this);
    m_plot->SetHint(tr("Choose a table or a model\nin the tree to see its curves."));
    m_treePane = AddPane(tr("Objects"), "ObjectsPane", m_tree, Qt::LeftDockWidgetArea);
    m_reportPane = AddPane(tr("Report"), "ReportPane", report, Qt::BottomDockWidgetArea);
    m_curvesPane = AddPane(tr("Curves"), "IbisCurvesPane", m_plot, Qt::RightDockWidgetArea);
    resizeDocks({m_treePane, m_curvesPane}, {320, 420}, Qt::Horizontal);
    resizeDocks({m_reportPane}, {220}, Qt::Vertical);
}

void CIbisEditorFrm::MakeMenus()
{
    const auto menu = [this](const QString& title, const char* name,
                             std::initializer_list<unsigned> commands) {
        QMenu* made = menuBar()->addMenu(title);
        made->setObjectName(QLatin1String(name));
        m_actions->FillMenu(*made, commands);
        return made;
    };
    menu(tr("&File"), "IbisFileMenu",
         {ID_IBIS_OPEN, ID_IBIS_SAVE, ID_IBIS_SAVE_AS, ui::kSeparator, ID_IBIS_CHECK, ID_IBIS_STOP,
          ID_IBIS_LOADER, ui::kSeparator, ID_IBIS_CLOSE});
    menu(tr("&Edit"), "IbisEditMenu",
         {ID_IBIS_UNDO, ID_IBIS_REDO, ui::kSeparator, ID_IBIS_FIND, ID_IBIS_FIND_NEXT,
          ID_IBIS_FIND_PREVIOUS, ui::kSeparator, ID_IBIS_GO_TO_LINE});
    QMenu* view = menu(tr("&View"), "IbisViewMenu",
                       {ID_IBIS_NEXT_MESSAGE, ID_IBIS_PREVIOUS_MESSAGE, ui::kSeparator});
    QMenu* panes = view->addMenu(tr("&Pane"));
    m_actions->FillMenu(*panes, {ID_IBIS_PANE_TREE, ID_IBIS_PANE_REPORT, ID_IBIS_PANE_CURVES});
}

void CIbisEditorFrm::MakeToolBars()
{
    auto* bar = new QToolBar(tr("IBIS"), this);
    bar->setObjectName(QStringLiteral("IbisToolBar"));
    bar->setIconSize({20, 20});
    addToolBar(bar);
    m_actions->FillToolBar(*bar, {ID_IBIS_OPEN, ID_IBIS_SAVE, ui::kSeparator, ID_IBIS_CHECK,
                                  ID_IBIS_LOADER, ui::kSeparator, ID_IBIS_PREVIOUS_MESSAGE,
                                  ID_IBIS_NEXT_MESSAGE, ui::kSeparator});
    m_find = new QLineEdit(this);
    m_find->setObjectName(QStringLiteral("FindField"));
    m_find->setPlaceholderText(tr("Find in the text"));
    m_find->setClearButtonEnabled(true);
    m_find->setMaximumWidth(260);
    bar->addWidget(m_find);
    m_actions->FillToolBar(*bar, {ID_IBIS_FIND_PREVIOUS, ID_IBIS_FIND_NEXT});
}

} // namespace zov::app
