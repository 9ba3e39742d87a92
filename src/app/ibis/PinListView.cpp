// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/PinListView.h"

#include "app/ibis/EmptyHint.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace zov::app {
namespace {

template <auto Member, class TRow>
QString Field(const TRow& row)
{
    return QString::fromStdString(row.*Member);
}

using ibis::SPinListRow;
using ibis::SSeriesRow;

constexpr SRowColumn<SPinListRow> kPinColumns[] = {
    {"Pin", Field<&SPinListRow::pin>},
    {"Signal", Field<&SPinListRow::signal>},
    {"Model", Field<&SPinListRow::model>},
    {"R_pin", Field<&SPinListRow::r>},
    {"L_pin", Field<&SPinListRow::l>},
    {"C_pin", Field<&SPinListRow::c>},
    {"Pulldown", Field<&SPinListRow::pulldownRef>},
    {"Pullup", Field<&SPinListRow::pullupRef>},
    {"GND Clamp", Field<&SPinListRow::gndClampRef>},
    {"POWER Clamp", Field<&SPinListRow::powerClampRef>},
    {"Diff Pin",
     [](const SPinListRow& row) {
         return row.inverting && !row.diffPin.empty()
                    ? QStringLiteral("-%1").arg(QString::fromStdString(row.diffPin))
                    : QString::fromStdString(row.diffPin);
     }},
    {"Vdiff", Field<&SPinListRow::vdiff>},
};

constexpr SRowColumn<SSeriesRow> kSeriesColumns[] = {
    {"Pin 1", Field<&SSeriesRow::pin1>},
    {"Pin 2", Field<&SSeriesRow::pin2>},
    {"Model", Field<&SSeriesRow::model>},
    {"Switch Group", Field<&SSeriesRow::group>},
};

/// Pins as people count them: A2 before A10.
class CNaturalProxy final : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
    bool lessThan(const QModelIndex& a, const QModelIndex& b) const override
    {
        return Key(a.data().toString()) < Key(b.data().toString());
    }

private:
    static QString Key(const QString& text)
    {
        constexpr int kWidth = 12;
        QString key;
        QString number;
        for (int i = 0; i <= text.size(); ++i) {
            if (i < text.size() && text.at(i).isDigit()) {
                number += text.at(i);
                continue;
            }
            if (!number.isEmpty()) {
                key += number.rightJustified(kWidth, QLatin1Char('0'));
                number.clear();
            }
            if (i < text.size()) {
                key += text.at(i).toLower();
            }
        }
        return key;
    }
};

template <class TRow, std::size_t Count>
QVariant CellOf(const std::vector<TRow>& rows, const SRowColumn<TRow> (&columns)[Count],
                const QModelIndex& index, int role)
{
    if (role != Qt::DisplayRole) {
        return {};
    }
    return columns[static_cast<std::size_t>(index.column())].text(
        rows[static_cast<std::size_t>(index.row())]);
}

} // namespace

CPinListModel::CPinListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void CPinListModel::SetPins(std::vector<SPinListRow> pins)
{
    beginResetModel();
    m_pins = std::move(pins);
    endResetModel();
}

int CPinListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_pins.size());
}

int CPinListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(std::size(kPinColumns));
}

QVariant CPinListModel::data(const QModelIndex& index, int role) const
{
    return CellOf(m_pins, kPinColumns, index, role);
}

QVariant CPinListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? tr(kPinColumns[section].title)
                                                                    : QVariant();
}

CSeriesPinModel::CSeriesPinModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void CSeriesPinModel::SetRows(std::vector<SSeriesRow> rows)
{
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int CSeriesPinModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CSeriesPinModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(std::size(kSeriesColumns));
}

QVariant CSeriesPinModel::data(const QModelIndex& index, int role) const
{
    return CellOf(m_rows, kSeriesColumns, index, role);
}

QVariant CSeriesPinModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
               ? tr(kSeriesColumns[section].title)
               : QVariant();
}

CFilteredTable::CFilteredTable(QAbstractItemModel& model, const QString& hint, const QString& empty,
                               QWidget* parent)
    : QWidget(parent)
    , m_proxy(new CNaturalProxy(this))
    , m_filter(new QLineEdit(this))
    , m_count(new QLabel(this))
    , m_table(new QTableView(this))
{
    m_proxy->setSourceModel(&model);
    m_proxy->setFilterKeyColumn(-1);
    m_proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setObjectName(QStringLiteral("Filter"));
    m_filter->setPlaceholderText(hint);
    m_filter->setClearButtonEnabled(true);
    m_table->setObjectName(QStringLiteral("Rows"));
    m_table->setModel(m_proxy);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(-1, Qt::AscendingOrder);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setTabKeyNavigation(false);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    new CEmptyHint(*m_table, empty);
    auto* top = new QHBoxLayout;
    top->addWidget(m_filter, 1);
    top->addWidget(m_count);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_table, 1);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_proxy->setFilterFixedString(text);
        ShowCount();
    });
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        m_table->resizeColumnsToContents();
        ShowCount();
    });
}

void CFilteredTable::ShowCount()
{
    m_count->setText(
        tr("%1 of %2").arg(m_proxy->rowCount()).arg(m_proxy->sourceModel()->rowCount()));
}

std::vector<int> CFilteredTable::SelectedRows() const
{
    QModelIndexList chosen = m_table->selectionModel()->selectedRows();
    std::sort(chosen.begin(), chosen.end());
    std::vector<int> rows;
    for (const QModelIndex& index : chosen) {
        rows.push_back(m_proxy->mapToSource(index).row());
    }
    return rows;
}

IBISPinListEditorView::IBISPinListEditorView(QWidget* parent)
    : QWidget(parent)
    , m_model(new CPinListModel(this))
    , m_list(new CFilteredTable(*m_model, tr("Filter: pin, signal, model, rail"),
                                tr("Pins of the component. Open a file and choose a component, or "
                                   "clear the filter."),
                                this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list);
}

void IBISPinListEditorView::SetPins(const std::vector<SPinListRow>& pins)
{
    m_model->SetPins(pins);
}

QStringList IBISPinListEditorView::SelectedSignals() const
{
    QStringList names;
    for (const int row : m_list->SelectedRows()) {
        names += QString::fromStdString(m_model->At(row).signal);
    }
    names.removeDuplicates();
    return names;
}

IBISSeriesPinListEditorView::IBISSeriesPinListEditorView(QWidget* parent)
    : QWidget(parent)
    , m_model(new CSeriesPinModel(this))
    , m_groups(new QLabel(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(new CFilteredTable(*m_model, tr("Filter: pin, model, group"),
                                         tr("No series pins. Open a file and choose a component "
                                            "with [Series Pin Mapping], or clear the filter."),
                                         this),
                      1);
    layout->addWidget(m_groups);
    m_groups->setWordWrap(true);
    m_groups->setContentsMargins(9, 0, 9, 9);
}

void IBISSeriesPinListEditorView::SetList(const ibis::SPinList& list)
{
    m_model->SetRows(list.series);
    QString text;
    for (const ibis::SSwitchGroups& state : list.switchGroups) {
        QStringList groups;
        for (const std::string& group : state.groups) {
            groups += QString::fromStdString(group);
        }
        text += (state.on ? tr("On: %1") : tr("Off: %1")).arg(groups.join(QLatin1Char(' '))) +
                QLatin1Char('\n');
    }
    m_groups->setText(text.trimmed());
    m_groups->setVisible(!text.isEmpty());
}

} // namespace zov::app
