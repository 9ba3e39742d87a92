// SPDX-License-Identifier: Apache-2.0
#include "app/ModelListView.h"

#include "ui/EventFilters.h"
#include "ui/ListHint.h"
#include "ui/UiDialog.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>
#include <unordered_set>

namespace zov::app {
namespace {

constexpr int kRowPadding = 6;
constexpr int kCellPadding = 4;

template <typename TList>
auto FindList(TList& lists, std::uint32_t id)
{
    return std::ranges::find_if(lists, [id](const auto& list) { return list.list == id; });
}

/// Numbers at the right of a cell stand apart from the text of the next one.
class CPaddedDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const QStyle& style = *item.widget->style();
        style.drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
        item.rect.adjust(kCellPadding, 0, -kCellPadding, 0);
        style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    }
};

QString CsvField(QString text)
{
    static const QString kSpecial = QStringLiteral(",\"\n;");
    const bool quote =
        std::any_of(text.begin(), text.end(), [](QChar c) { return kSpecial.contains(c); });
    return quote ? QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                       QLatin1Char('"')
                 : text;
}

} // namespace

CModelTable::CModelTable(QWidget* parent)
    : QTableView(parent)
{
    setObjectName(QStringLiteral("ModelTable"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setItemDelegate(new CPaddedDelegate(this));
    verticalHeader()->hide();
    // A fixed height: rows of a million records are not measured one by one.
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    horizontalHeader()->setSectionsMovable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    horizontalHeader()->setSortIndicatorShown(true);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    horizontalHeader()->setObjectName(QStringLiteral("ModelTableHeader"));
}

void CModelTable::SetHint(const QString& hint)
{
    m_hint = hint;
    viewport()->update();
}

void CModelTable::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    ui::PaintListHint(*this, m_hint);
}

CModelListView::CModelListView(std::uint32_t listId, QWidget* parent)
    : QWidget(parent)
    , m_listId(listId)
    , m_table(new CModelTable(this))
    , m_search(new QLineEdit(this))
    , m_count(new QLabel(this))
{
    m_search->setObjectName(QStringLiteral("SearchField"));
    m_search->setPlaceholderText(tr("Search: x7r 0402, Cnom 90nF..110nF, volt>=16, is:incomplete"));
    m_search->setClearButtonEnabled(true);
    m_count->setObjectName(QStringLiteral("ModelCount"));
    auto* top = new QHBoxLayout;
    top->addWidget(m_search, 1);
    top->addWidget(m_count);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(top);
    layout->addWidget(m_table, 1);
    m_table->setModel(&m_model);
    for (int i = 0; i < m_model.columnCount(); ++i) {
        const SModelColumn& column = ModelColumns()[static_cast<std::size_t>(i)];
        m_table->setColumnWidth(i, column.width * logicalDpiX() / 96);
        m_table->setColumnHidden(i, !column.shown);
    }

    connect(m_search, &QLineEdit::textChanged, this, &CModelListView::SearchChanged);
    // From the field into the list without the mouse.
    new ui::CQtEnterKeyPressEventFilter(*m_search, [this] { m_table->setFocus(); });
    new ui::CQtSubClassEventFilter(*m_search, [this](QEvent& event) {
        if (event.type() == QEvent::FocusIn) {
            m_model.PrepareSearch();
        }
        return false;
    });
    connect(&m_model, &CModelListModel::Filled, this, [this] {
        ShowCount();
        ShowHint();
        RestoreSelection();
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_keeping) {
            Q_EMIT SelectionChanged();
        }
    });
    connect(&m_model, &CModelListModel::AboutToRefill, this, &CModelListView::KeepSelection);
    connect(&m_model, &QAbstractItemModel::modelAboutToBeReset, this,
            &CModelListView::KeepSelection);
    connect(m_table, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (const CZovRcdProps* record = m_model.RecordAt(index.row())) {
            Q_EMIT Activated(*record);
        }
    });
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        Q_EMIT ContextMenuAsked(m_table->viewport()->mapToGlobal(pos));
    });
    QHeaderView* header = m_table->horizontalHeader();
    connect(header, &QWidget::customContextMenuRequested, this, &CModelListView::ShowColumnMenu);
    connect(header, &QHeaderView::sectionMoved, this, [this] {
        if (!m_taking) {
            Q_EMIT ColumnsChanged();
        }
    });
    connect(header, &QHeaderView::sortIndicatorChanged, &m_model, &CModelListModel::sort);
    auto* copy = new QAction(tr("Copy as CSV"), m_table);
    copy->setObjectName(QStringLiteral("CopyAsCsv"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this,
            [this] { QApplication::clipboard()->setText(SelectionAsCsv()); });
    m_table->addAction(copy);
    ShowHint();
}

void CModelListView::SetEmptyHint(const QString& hint)
{
    m_emptyHint = hint;
    ShowHint();
}

void CModelListView::SearchChanged()
{
    const bool good = m_model.SetQuery(m_search->text());
    QPalette palette = m_search->palette();
    palette.setColor(QPalette::Text, good ? QApplication::palette().color(QPalette::Text)
                                          : QColor(0xC6, 0x28, 0x28));
    m_search->setPalette(palette);
    m_search->setToolTip(m_model.QueryError());
    m_count->setText(good ? m_count->text() : m_model.QueryError());
    if (good && !m_model.IsFilling()) { // else with the new rows
        ShowCount();
    }
}

void CModelListView::ShowCount()
{
    const int shown = m_model.rowCount();
    const int total = static_cast<int>(m_model.Total());
    const bool areHidden = shown != total && m_model.Type() == ERecordType::Any &&
                           m_search->text().trimmed().isEmpty();
    m_count->setText(
        shown == total ? tr("%L1 models").arg(total)
        : areHidden    ? tr("%L1 of %L2 models, others hidden by the options").arg(shown).arg(total)
                       : tr("%L1 of %L2 models").arg(shown).arg(total));
    m_count->setToolTip(areHidden ? tr("Tools, Options, General says which capacitors are hidden.")
                                  : QString());
}

void CModelListView::ShowHint()
{
    m_table->SetHint(m_model.Total() == 0 ? m_emptyHint
                     : m_model.Type() != ERecordType::Any
                         ? tr("No model of this type is found. Clear the search field, or show "
                              "all types.")
                         : tr("No model is found. Clear the search field to see all."));
}

void CModelListView::ShowColumnMenu(const QPoint& pos)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("ColumnMenu"));
    for (int i = 0; i < m_model.columnCount(); ++i) {
        QAction* action =
            menu.addAction(m_model.headerData(i, Qt::Horizontal, Qt::DisplayRole).toString());
        action->setCheckable(true);
        action->setChecked(!m_table->isColumnHidden(i));
        action->setEnabled(i != 0); // a list without names helps nobody
        connect(action, &QAction::toggled, this, [this, i](bool on) {
            m_table->setColumnHidden(i, !on);
            Q_EMIT ColumnsChanged();
        });
    }
    menu.addSeparator();
    connect(menu.addAction(tr("Legend...")), &QAction::triggered, this, [this] {
        if (const auto legend =
                ui::CDialogForms::Create(QStringLiteral("dlg_IDD_ZOV_DLG_LEGEND"), this)) {
            legend->DoModal();
        }
    });
    menu.exec(m_table->horizontalHeader()->mapToGlobal(pos));
}

void CModelListView::Take(const SZovSettings& settings)
{
    m_taking = true;
    const auto columnAt = [](std::uint32_t id) {
        const auto at = std::ranges::find_if(ModelColumns(), [id](const SModelColumn& column) {
            return static_cast<std::uint32_t>(column.column) == id;
        });
        return at == ModelColumns().end() ? -1 : static_cast<int>(at - ModelColumns().begin());
    };
    if (const auto list = FindList(settings.columnVisibility, m_listId);
        list != settings.columnVisibility.end()) {
        for (int i = 1; i < m_model.columnCount(); ++i) {
            const auto id =
                static_cast<std::uint32_t>(ModelColumns()[static_cast<std::size_t>(i)].column);
            m_table->setColumnHidden(i,
                                     std::ranges::find(list->visible, id) == list->visible.end());
        }
    }
    if (const auto list = FindList(settings.columnOrder, m_listId);
        list != settings.columnOrder.end()) {
        std::vector<SColumnPlace> places = list->columns;
        std::ranges::sort(places, {}, &SColumnPlace::position);
        QHeaderView* header = m_table->horizontalHeader();
        int to = 0;
        for (const SColumnPlace& place : places) {
            if (const int column = columnAt(place.column); column >= 0) {
                header->moveSection(header->visualIndex(column), to++);
            }
        }
    }
    m_model.SetUnits(settings.units);
    m_model.SetHideRules(SHideRules::Of(settings));
    m_taking = false;
}

void CModelListView::Store(SZovSettings& settings) const
{
    SColumnOrder order{m_listId, {}};
    SColumnVisibility visible{m_listId, {}};
    for (int i = 0; i < m_model.columnCount(); ++i) {
        const auto id =
            static_cast<std::uint32_t>(ModelColumns()[static_cast<std::size_t>(i)].column);
        const int place = m_table->horizontalHeader()->visualIndex(i);
        order.columns.push_back({id, static_cast<std::uint32_t>(place)});
        if (!m_table->isColumnHidden(i)) {
            visible.visible.push_back(id);
        }
    }
    const auto put = [](auto& lists, auto list) {
        if (const auto at = FindList(lists, list.list); at != lists.end()) {
            *at = std::move(list);
        } else {
            lists.push_back(std::move(list));
        }
    };
    put(settings.columnOrder, std::move(order));
    put(settings.columnVisibility, std::move(visible));
}

std::vector<int> CModelListView::SelectedRows() const
{
    std::vector<int> rows;
    // By ranges: asking the toolkit for each row takes seconds when a million are selected.
    for (const QItemSelectionRange& range : m_table->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

std::vector<CZovRcdProps*> CModelListView::Selected() const
{
    std::vector<CZovRcdProps*> records;
    for (const int row : SelectedRows()) {
        records.push_back(m_model.RecordAt(row));
    }
    return records;
}

std::vector<CModelListView::SSelected> CModelListView::SelectedByLibrary() const
{
    std::vector<SSelected> selected;
    for (const int row : SelectedRows()) {
        const std::shared_ptr<CZovLibrary> library = m_model.LibraryAt(row);
        auto at = std::ranges::find(selected, library, &SSelected::library);
        if (at == selected.end()) {
            at = selected.insert(at, {library, {}});
        }
        at->records.push_back(m_model.RecordAt(row));
    }
    return selected;
}

void CModelListView::Select(const CZovRcdProps& record)
{
    if (const int row = m_model.RowOf(record); row >= 0) {
        m_table->selectRow(row);
        m_table->scrollTo(m_model.index(row, 0));
    }
}

void CModelListView::KeepSelection()
{
    if (m_keeping) {
        return; // rows that come between the old and the new ones
    }
    const std::vector<CZovRcdProps*> selected = Selected();
    m_keptSelection.assign(selected.begin(), selected.end());
    m_keptScroll = m_table->verticalScrollBar()->value();
    m_keeping = true;
}

std::size_t CModelListView::Select(const std::vector<const CZovRcdProps*>& records)
{
    const std::unordered_set<const CZovRcdProps*> wanted(records.begin(), records.end());
    QItemSelection selection;
    int first = -1;
    std::size_t found = 0;
    for (int row = 0; found < wanted.size() && row < m_model.rowCount(); ++row) {
        if (wanted.contains(m_model.RecordAt(row))) {
            // Ranges of rows that follow each other; merging them one by one takes ages.
            if (!selection.isEmpty() && selection.last().bottom() == row - 1) {
                selection.last() =
                    QItemSelectionRange(selection.last().topLeft(), m_model.index(row, 0));
            } else {
                selection.append(QItemSelectionRange(m_model.index(row, 0)));
            }
            first = first < 0 ? row : first;
            ++found;
        }
    }
    if (first >= 0) {
        m_table->selectionModel()->setCurrentIndex(m_model.index(first, 0),
                                                   QItemSelectionModel::NoUpdate);
        m_table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect |
                                                         QItemSelectionModel::Rows);
    }
    return found;
}

void CModelListView::RestoreSelection()
{
    if (!m_keeping) {
        return;
    }
    const std::size_t found = Select(m_keptSelection);
    const bool isOther = found != m_keptSelection.size();
    m_table->verticalScrollBar()->setValue(m_keptScroll);
    m_keeping = false;
    m_keptSelection.clear();
    if (isOther) {
        Q_EMIT SelectionChanged();
    }
}

QString CModelListView::SelectionAsCsv() const
{
    const QHeaderView* header = m_table->horizontalHeader();
    std::vector<int> columns;
    for (int place = 0; place < header->count(); ++place) {
        if (const int column = header->logicalIndex(place); !m_table->isColumnHidden(column)) {
            columns.push_back(column);
        }
    }
    QStringList lines;
    const auto addLine = [&](auto text) {
        QStringList fields;
        for (const int column : columns) {
            fields += CsvField(text(column));
        }
        lines += fields.join(QLatin1Char(','));
    };
    addLine([&](int column) {
        return m_model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    });
    const auto addRow = [&](int row) {
        addLine([&](int column) { return m_model.index(row, column).data().toString(); });
    };
    const std::vector<int> rows = SelectedRows();
    std::ranges::for_each(rows, addRow);
    for (int row = 0; rows.empty() && row < m_model.rowCount(); ++row) {
        addRow(row);
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace zov::app
