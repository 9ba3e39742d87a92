// SPDX-License-Identifier: Apache-2.0
#include "app/ibis/TextTable.h"

#include "app/ibis/EmptyHint.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

namespace zov::app {
namespace {

class CChoices final : public QStyledItemDelegate
{
public:
    CChoices(CTextTableModel& model, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_model(model)
    {
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override
    {
        const QStringList& choices = m_model.ChoicesOf(index.column());
        if (choices.isEmpty()) {
            return QStyledItemDelegate::createEditor(parent, option, index);
        }
        auto* box = new QComboBox(parent);
        box->addItems(choices);
        box->setCurrentText(index.data(Qt::EditRole).toString());
        return box;
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        if (const auto* box = qobject_cast<const QComboBox*>(editor)) {
            model->setData(index, box->currentText());
        } else {
            QStyledItemDelegate::setModelData(editor, model, index);
        }
    }

private:
    CTextTableModel& m_model;
};

} // namespace

CTextTableModel::CTextTableModel(std::vector<STextColumn> columns, QObject* parent)
    : QAbstractTableModel(parent)
    , m_columns(std::move(columns))
{
}

void CTextTableModel::Add(QStringList cells)
{
    while (cells.size() < columnCount()) {
        cells += m_columns[static_cast<std::size_t>(cells.size())].choices.value(0);
    }
    beginInsertRows({}, rowCount(), rowCount());
    m_rows.push_back(std::move(cells));
    endInsertRows();
}

void CTextTableModel::Remove(int row)
{
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void CTextTableModel::Clear()
{
    beginResetModel();
    m_rows.clear();
    endResetModel();
}

int CTextTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CTextTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant CTextTableModel::data(const QModelIndex& index, int role) const
{
    return role == Qt::DisplayRole || role == Qt::EditRole
               ? m_rows[static_cast<std::size_t>(index.row())].at(index.column())
               : QVariant();
}

bool CTextTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole) {
        return false;
    }
    m_rows[static_cast<std::size_t>(index.row())][index.column()] = value.toString().trimmed();
    Q_EMIT dataChanged(index, index);
    return true;
}

QVariant CTextTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole
               ? m_columns[static_cast<std::size_t>(section)].title
               : QVariant();
}

Qt::ItemFlags CTextTableModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

CTextTable::CTextTable(std::vector<STextColumn> columns, const QString& empty, QWidget* parent)
    : QWidget(parent)
    , m_model(std::move(columns))
    , m_table(new QTableView(this))
    , m_buttons(new QHBoxLayout)
{
    m_table->setObjectName(QStringLiteral("Rows"));
    m_table->setModel(&m_model);
    m_table->setItemDelegate(new CChoices(m_model, this));
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_table->horizontalHeader()->setStretchLastSection(true);
    // Of the rows that are seen.
    m_table->horizontalHeader()->setResizeContentsPrecision(0);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    new CEmptyHint(*m_table, empty);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_table, 1);
    layout->addLayout(m_buttons);
    m_buttons->addStretch(1);
    AddButton(tr("&Add Row"), "AddRow", [this] {
        m_model.Add({});
        m_table->setCurrentIndex(m_model.index(m_model.rowCount() - 1, 0));
        m_table->edit(m_table->currentIndex());
    });
    AddButton(tr("Re&move Rows"), "RemoveRows", [this] {
        QModelIndexList rows = m_table->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end());
        while (!rows.isEmpty()) {
            m_model.Remove(rows.takeLast().row());
        }
    });
}

void CTextTable::AddButton(const QString& text, const char* objectName,
                           std::function<void()> clicked)
{
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    connect(button, &QPushButton::clicked, this, std::move(clicked));
    m_buttons->insertWidget(m_buttons->count() - 1, button);
}

} // namespace zov::app
