// SPDX-License-Identifier: Apache-2.0
#include "app/editor/EditorListCtrl.h"

#include "ui/ListHint.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <set>

namespace zov::app {
namespace {

/// A box of the choices where a column is one.
class CChoiceDelegate final : public QStyledItemDelegate
{
public:
    CChoiceDelegate(std::span<const std::string_view> choices, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_choices(choices)
    {
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                          const QModelIndex& /*index*/) const override
    {
        auto* box = new QComboBox(parent);
        for (const std::string_view choice : m_choices) {
            box->addItem(QString::fromUtf8(choice.data(), static_cast<int>(choice.size())));
        }
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        auto* box = static_cast<QComboBox*>(editor);
        box->setCurrentIndex(box->findText(index.data(Qt::EditRole).toString()));
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        model->setData(index, static_cast<QComboBox*>(editor)->currentText(), Qt::EditRole);
    }

private:
    std::span<const std::string_view> m_choices;
};

constexpr int kVisibleRows = 5;

/// Says what to do while it has no row.
class CRowTable final : public QTableView
{
public:
    using QTableView::QTableView;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTableView::paintEvent(event);
        if (isEnabled()) {
            ui::PaintListHint(
                *this, CUiEditorListCtrl::tr("Add a row, or paste cells of a spreadsheet here."));
        }
    }
};

} // namespace

CUiEditorListCtrl::CUiEditorListCtrl(const SFieldInfo& info, QWidget* parent)
    : QWidget(parent)
    , m_model(info.columns(), this)
    , m_note(new QLabel(this))
    , m_table(new CRowTable(this))
{
    const QString name = QLatin1String("ui_IDC_") + QLatin1String(info.name);
    m_table->setObjectName(name);
    m_table->setModel(&m_model);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setMinimumHeight((fontMetrics().height() + 8) * (kVisibleRows + 1));
    auto* top = new QHBoxLayout;
    auto* title = new QLabel(tr(info.label), this);
    title->setBuddy(m_table);
    top->addWidget(title);
    top->addWidget(m_note, 1);
    const auto add = [&](const QString& text, const QString& tip, const char* suffix,
                         void (CUiEditorListCtrl::*run)()) {
        auto* button = new QToolButton(this);
        button->setText(text);
        button->setToolTip(tip);
        button->setObjectName(name + QLatin1String(suffix));
        connect(button, &QToolButton::clicked, this, run);
        top->addWidget(button);
        return button;
    };
    add(tr("Add"), tr("Add a row behind the selected one"), "_Add", &CUiEditorListCtrl::AddRow);
    m_remove = add(tr("Remove"), tr("Remove the selected rows"), "_Remove",
                   &CUiEditorListCtrl::RemoveRows);
    m_copy = add(tr("Copy"), tr("Copy the selected cells for a spreadsheet"), "_Copy",
                 &CUiEditorListCtrl::Copy);
    add(tr("Paste"), tr("Paste cells of a spreadsheet here"), "_Paste", &CUiEditorListCtrl::Paste);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(m_table, 1);

    const auto shortcut = [this](QKeySequence keys, void (CUiEditorListCtrl::*run)()) {
        auto* action = new QAction(m_table);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, run);
        m_table->addAction(action);
    };
    shortcut(QKeySequence::Copy, &CUiEditorListCtrl::Copy);
    shortcut(QKeySequence::Paste, &CUiEditorListCtrl::Paste);
    shortcut(QKeySequence(QStringLiteral("Ctrl+Ins")), &CUiEditorListCtrl::AddRow);
    shortcut(QKeySequence::Delete, &CUiEditorListCtrl::RemoveRows);

    for (int i = 0; i < m_model.columnCount(); ++i) {
        const SFieldInfo& column = m_model.Columns()[static_cast<std::size_t>(i)];
        if (column.kind == EFieldKind::Choice) {
            m_table->setItemDelegateForColumn(i, new CChoiceDelegate(column.choices, this));
        } else if (column.kind == EFieldKind::Rows) {
            m_nestedColumn = i;
            m_nested = new CUiEditorListCtrl(column, this);
            layout->addWidget(m_nested, 1);
            connect(m_nested, &CUiEditorListCtrl::Edited, this, [this] {
                if (!m_showing && m_table->currentIndex().isValid()) {
                    m_model.SetNestedRows(m_table->currentIndex().row(), m_nestedColumn,
                                          m_nested->Rows());
                }
            });
        }
    }
    connect(&m_model, &CRowTableModel::Edited, this, &CUiEditorListCtrl::Edited);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CUiEditorListCtrl::UpdateButtons);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& /*current*/, const QModelIndex& previous) {
                if (m_nested == nullptr || m_nested->ErrorCount() == 0 || !previous.isValid()) {
                    ShowNested();
                    return;
                }
                // What can't be read below would be lost with the row that it belongs to.
                const QPersistentModelIndex back = previous;
                QTimer::singleShot(0, this, [this, back] {
                    const QSignalBlocker quiet(m_table->selectionModel());
                    m_table->setCurrentIndex(back);
                    m_table->viewport()->update();
                });
            });
    connect(&m_model, &QAbstractItemModel::modelReset, this, &CUiEditorListCtrl::UpdateButtons);
    UpdateButtons();
    ShowNested();
}

void CUiEditorListCtrl::SetUnits(const CDisplayUnits& units)
{
    m_model.SetUnits(units);
    if (m_nested != nullptr) {
        m_nested->SetUnits(units);
    }
}

void CUiEditorListCtrl::SetRows(const TFieldRows& rows)
{
    const int current = m_table->currentIndex().row();
    m_model.SetRows(rows);
    if (m_model.rowCount() > 0) {
        const int row = std::clamp(current, 0, m_model.rowCount() - 1);
        m_table->setCurrentIndex(m_model.index(row, 0));
    }
    m_table->resizeColumnsToContents();
    ShowNested();
}

int CUiEditorListCtrl::ErrorCount() const
{
    return m_model.ErrorCount() + (m_nested == nullptr ? 0 : m_nested->ErrorCount());
}

void CUiEditorListCtrl::SetNote(const QString& note)
{
    m_note->setText(note);
}

void CUiEditorListCtrl::AddRow()
{
    const int at =
        m_table->currentIndex().isValid() ? m_table->currentIndex().row() + 1 : m_model.rowCount();
    m_model.insertRow(at);
    m_table->resizeColumnsToContents();
    m_table->setCurrentIndex(m_model.index(at, 0));
    m_table->setFocus();
}

void CUiEditorListCtrl::RemoveRows()
{
    std::set<int> rows;
    for (const QModelIndex& cell : m_table->selectionModel()->selectedIndexes()) {
        rows.insert(cell.row());
    }
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        m_model.removeRow(*row);
    }
    ShowNested();
}

void CUiEditorListCtrl::Copy()
{
    const QModelIndexList cells = m_table->selectionModel()->selectedIndexes();
    if (!cells.isEmpty()) {
        QApplication::clipboard()->setText(m_model.CopyText(cells));
    }
}

void CUiEditorListCtrl::Paste()
{
    const QModelIndex at = m_table->currentIndex();
    m_model.PasteText(at.isValid() ? at.row() : m_model.rowCount(), at.isValid() ? at.column() : 0,
                      QApplication::clipboard()->text());
    m_table->resizeColumnsToContents();
    ShowNested();
}

void CUiEditorListCtrl::UpdateButtons()
{
    const bool any = m_table->selectionModel()->hasSelection();
    m_remove->setEnabled(any);
    m_copy->setEnabled(any);
}

void CUiEditorListCtrl::ShowNested()
{
    if (m_nested == nullptr) {
        return;
    }
    const QModelIndex at = m_table->currentIndex();
    m_showing = true;
    m_nested->setEnabled(at.isValid());
    m_nested->SetRows(at.isValid() ? m_model.NestedRows(at.row(), m_nestedColumn) : TFieldRows());
    m_showing = false;
}

} // namespace zov::app
