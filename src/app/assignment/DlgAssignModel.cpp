// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/DlgAssignModel.h"

#include "app/ModelColumns.h"
#include "base/File.h"
#include "ui/ShownText.h"

#include <QCheckBox>
#include <QPushButton>
#include <QStandardItemModel>

namespace zov::app {
namespace {

constexpr std::uint32_t kBrowseList = 20;

using ui::Shown;

/// What the columns of the list say of a model, those that say something.
QString DetailsOf(const SModelRef& model, const CDisplayUnits& units)
{
    QStringList lines;
    for (const SModelColumn& column : ModelColumns()) {
        const QString text = ModelCell(*model.record, column.column, units);
        if (!text.isEmpty()) {
            lines += CModelListModel::tr(column.title) + QStringLiteral(": ") + text;
        }
    }
    lines += CModelListModel::tr("Library: %1").arg(Shown(PathText(model.library->Path())));
    return lines.join(QStringLiteral("   "));
}

} // namespace

CModelPick::CModelPick(const CZovSession* session, ERecordType required, QComboBox& library,
                       QCheckBox& allTypes, QLayout& place)
    : QObject(&library)
    , m_list(new CModelListView(kBrowseList))
{
    m_list->setObjectName(QStringLiteral("BrowseModels"));
    m_list->SetEmptyHint(
        tr("No library is open and switched on. Open one in the library manager."));
    m_list->Table().setSelectionMode(QAbstractItemView::SingleSelection);
    place.addWidget(m_list);
    library.addItem(tr("(all libraries)"));
    if (session != nullptr) {
        m_list->Take(session->Settings());
        m_libraries = session->Set().ActiveLibraries();
    }
    for (const auto& one : m_libraries) {
        library.addItem(Shown(one->Name()));
        library.setItemData(library.count() - 1, Shown(PathText(one->Path())), Qt::ToolTipRole);
    }
    connect(&library, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &CModelPick::ShowLibrary);
    allTypes.setVisible(required != ERecordType::Any);
    if (required != ERecordType::Any) {
        allTypes.setToolTip(tr("The design asks for a model of type %1; only those are listed "
                               "until this is checked")
                                .arg(Shown(InfoOf(required).name)));
    }
    m_list->Model().SetType(required);
    connect(&allTypes, &QCheckBox::toggled, this, [this, required](bool all) {
        m_list->Model().SetType(all ? ERecordType::Any : required);
    });
    connect(m_list, &CModelListView::SelectionChanged, this, &CModelPick::ChosenChanged);
    connect(m_list, &CModelListView::Activated, this, &CModelPick::Activated);
    ShowLibrary(0);
}

void CModelPick::ShowLibrary(int index)
{
    m_list->Model().SetLibraries(
        index <= 0 ? m_libraries
                   : CModelListModel::TLibraries{m_libraries[static_cast<std::size_t>(index - 1)]});
}

SModelRef CModelPick::Chosen() const
{
    const std::vector<CZovRcdProps*> selected = m_list->Selected();
    if (selected.empty() || selected.front() == nullptr) {
        return {};
    }
    CModelListModel& model = m_list->Model();
    return {model.LibraryAt(model.RowOf(*selected.front())), selected.front(),
            selected.front()->Type()};
}

CDlgAssignModel::CDlgAssignModel(const CZovSession* session, const QString& component,
                                 ERecordType required, QWidget* parent)
    : CqtDialogRes(parent)
    , m_pick(new CModelPick(session, required, *m_form.ui_IDC_LIBRARY, *m_form.ui_IDC_ALL_TYPES,
                            *m_form.ui_IDC_MODELS_LAYOUT))
{
    m_form.ui_IDC_COMPONENT->setText(tr("Model for '%1':").arg(component));
    QPushButton* assign = m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok);
    assign->setText(tr("&Assign"));
    const auto showState = [this, assign] {
        assign->setEnabled(static_cast<bool>(m_pick->Chosen()));
    };
    connect(m_pick, &CModelPick::ChosenChanged, this, showState);
    connect(m_pick, &CModelPick::Activated, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showState();
}

CDlgAssignModelEx::CDlgAssignModelEx(const CZovSession* session, const QStringList& components,
                                     ERecordType required, QWidget* parent)
    : CqtDialogRes(parent)
    , m_pick(new CModelPick(session, required, *m_form.ui_IDC_LIBRARY, *m_form.ui_IDC_ALL_TYPES,
                            *m_form.ui_IDC_MODELS_LAYOUT))
    , m_components(new QStandardItemModel(this))
    , m_units(session == nullptr ? CDisplayUnits() : session->Settings().units)
{
    for (const QString& component : components) {
        auto* item = new QStandardItem(component);
        item->setCheckable(true);
        item->setCheckState(Qt::Checked);
        item->setEditable(false);
        m_components->appendRow(item);
    }
    m_form.ui_IDC_COMPONENTS->setModel(m_components);
    m_form.ui_IDC_SPLITTER->setStretchFactor(1, 3);
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setText(tr("&Assign"));
    connect(m_components, &QStandardItemModel::itemChanged, this, &CDlgAssignModelEx::ShowState);
    connect(m_pick, &CModelPick::ChosenChanged, this, &CDlgAssignModelEx::ShowState);
    connect(m_pick, &CModelPick::Activated, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
    ShowState();
}

bool CDlgAssignModelEx::IsFor(int component) const
{
    return m_components->item(component)->checkState() == Qt::Checked;
}

void CDlgAssignModelEx::ShowState()
{
    bool any = false;
    for (int i = 0; i < m_components->rowCount() && !any; ++i) {
        any = IsFor(i);
    }
    const SModelRef chosen = Chosen();
    m_form.ui_IDC_DETAILS->setText(chosen ? DetailsOf(chosen, m_units)
                                          : tr("Select the model for the components."));
    m_form.ui_IDC_BUTTONS->button(QDialogButtonBox::Ok)->setEnabled(any && chosen);
}

} // namespace zov::app
