// SPDX-License-Identifier: Apache-2.0
#include "app/ModelListModel.h"

#include "app/RecordTexts.h"

#include <QMimeData>

#include <algorithm>

namespace zov::app {
namespace {

const QString kRecordsMime = QStringLiteral("application/x-zov-records");
/// Values that are asked for at once, so that those of rows in view come between.
constexpr std::size_t kAskAtOnce = 256;
/// Sorted anew for fewer values, rows would jump all the time.
constexpr std::size_t kWorthSorting = 64;

/// The truth check's item that a column shows.
const char* TruthItemOf(EModelColumn column)
{
    return column == EModelColumn::ModelC     ? "C"
           : column == EModelColumn::ModelEsr ? "ESR"
                                              : "resonance";
}

} // namespace

CModelListModel::CModelListModel(QObject* parent)
    : QAbstractTableModel(parent)
{
    connect(&m_truth, &CTruthCache::Updated, this, &CModelListModel::TruthUpdated);
}

void CModelListModel::SetLibraries(TLibraries libraries)
{
    BeginChange();
    m_libraries = std::move(libraries);
    EndChange();
}

bool CModelListModel::SetQuery(const QString& text)
{
    CResult<CRecordQuery> query = CRecordQuery::Parse(text.toStdString());
    if (!query) {
        m_queryError = QString::fromStdString(query.Error().text);
        return false;
    }
    m_queryError.clear();
    if (query->Terms() != m_request.query.Terms()) {
        m_request.query = query.Take();
        Fill();
    }
    return true;
}

void CModelListModel::SetType(ERecordType type)
{
    m_request.type = type;
    m_base.reset();
    Fill();
}

void CModelListModel::SetHideRules(const SHideRules& rules)
{
    m_request.hide = rules;
    m_base.reset();
    Fill();
}

void CModelListModel::SetUnits(const CDisplayUnits& units)
{
    m_units = units;
    m_truth.SetUnits(units);
    if (!m_rows.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

void CModelListModel::BeginChange()
{
    m_job.Cancel();
    m_prepare.Cancel();
    m_base.reset(); // its rows are those of the records as they were
    if (!m_changing) {
        Q_EMIT AboutToRefill();
    }
    m_changing = true;
}

void CModelListModel::EndChange()
{
    m_changing = false;
    m_truth.Clear();
    m_asksForAll = true;
    // Rows may point at what is gone; none are shown until the new ones are in.
    beginResetModel();
    m_rows.clear();
    endResetModel();
    Fill();
}

void CModelListModel::DropLibrary(const CZovLibrary& library)
{
    if (Holds(library)) {
        BeginChange();
        std::erase_if(m_libraries, [&](const auto& own) { return own.get() == &library; });
        EndChange();
    }
}

void CModelListModel::RecordChanged(const CZovRcdProps& record)
{
    m_base.reset();
    m_truth.Forget(record);
    if (const int row = RowOf(record); row >= 0) {
        Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
    }
}

std::vector<const CZovLibrary*> CModelListModel::PlainLibraries() const
{
    std::vector<const CZovLibrary*> plain;
    for (const auto& library : m_libraries) {
        plain.push_back(library.get());
    }
    return plain;
}

bool CModelListModel::Holds(const CZovLibrary& library) const
{
    return std::ranges::any_of(m_libraries, [&](const auto& own) { return own.get() == &library; });
}

void CModelListModel::PrepareSearch()
{
    if (m_changing || m_prepare.IsRunning()) {
        return;
    }
    m_prepare.Start(tr("Searching"),
                    [libraries = m_libraries](CJobState& state) -> CBackgroundJob::Deliver {
                        for (const auto& library : libraries) {
                            static_cast<void>(CRecordTextCache::Instance().Of(
                                *library, [&state] { return !state.Cancelled(); }));
                        }
                        return {};
                    });
}

void CModelListModel::Fill()
{
    if (m_changing) {
        return;
    }
    m_request.order.values = SortsByModelFiles() ? KnownValues() : nullptr;
    m_sortedKnown = m_truth.Known().size();
    const bool isBase = m_request.order.sorted && m_request.query.IsEmpty();
    m_job.Start(tr("Searching"),
                [this, libraries = m_libraries, plain = PlainLibraries(), request = m_request,
                 base = isBase ? nullptr : m_base, isBase](CJobState& state) {
                    auto rows = std::make_shared<std::vector<SModelRow>>(SelectRows(
                        plain, request,
                        [&state](double done) {
                            state.SetFraction(done);
                            return !state.Cancelled();
                        },
                        base));
                    return [this, rows, isBase] { Take(std::move(*rows), isBase); };
                });
}

void CModelListModel::Take(std::vector<SModelRow> rows, bool isBase)
{
    beginResetModel();
    m_rows = std::move(rows);
    if (isBase) {
        m_base = std::make_shared<const std::vector<SModelRow>>(m_rows);
    }
    endResetModel();
    Q_EMIT Filled(static_cast<int>(m_rows.size()), static_cast<int>(Total()));
    AskForValues();
}

bool CModelListModel::SortsByModelFiles() const
{
    return m_request.order.sorted && IsOfModelFile(m_request.order.column);
}

std::shared_ptr<const TColumnValues> CModelListModel::KnownValues() const
{
    auto values = std::make_shared<TColumnValues>();
    for (const auto& [record, truth] : m_truth.Known()) {
        const curve::STruthItem* item = truth.Find(TruthItemOf(m_request.order.column));
        if (item != nullptr && item->model) {
            (*values)[record] = *item->model;
        }
    }
    return values;
}

void CModelListModel::AskForValues()
{
    if (!m_asksForAll || !SortsByModelFiles()) {
        return;
    }
    std::size_t asked = 0;
    const std::size_t room =
        CTruthCache::kMaxKept - std::min(CTruthCache::kMaxKept, m_truth.Known().size());
    for (int row = 0; row < rowCount() && asked < std::min(kAskAtOnce, room); ++row) {
        const CZovRcdProps& record = *RecordAt(row);
        asked += IsDiscrete(record.Type()) && m_truth.Find(*LibraryAt(row), record) == nullptr;
    }
    if (asked == 0) { // all are known, or more than are kept
        m_asksForAll = false;
        if (m_truth.Known().size() > m_sortedKnown) {
            m_base.reset();
            Fill();
        }
    }
}

void CModelListModel::TruthUpdated()
{
    if (!m_rows.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
    if (!m_asksForAll || !m_truth.IsIdle() || m_job.IsRunning()) {
        return;
    }
    // Each time with twice as many: the first come soon, and the list comes to rest.
    if (m_truth.Known().size() >= std::max(kWorthSorting, 2 * m_sortedKnown)) {
        m_base.reset();
        Fill(); // asks on when it is done
    } else {
        AskForValues();
    }
}

CZovRcdProps* CModelListModel::RecordAt(int row) const
{
    if (row < 0 || row >= static_cast<int>(m_rows.size())) {
        return nullptr;
    }
    const SModelRow& at = m_rows[static_cast<std::size_t>(row)];
    return &m_libraries[at.source]->At(at.record);
}

std::shared_ptr<CZovLibrary> CModelListModel::LibraryAt(int row) const
{
    if (row < 0 || row >= static_cast<int>(m_rows.size())) {
        return nullptr;
    }
    return m_libraries[m_rows[static_cast<std::size_t>(row)].source];
}

int CModelListModel::RowOf(const CZovRcdProps& record) const
{
    const auto at = std::ranges::find_if(m_rows, [&](const SModelRow& row) {
        return &m_libraries[row.source]->At(row.record) == &record;
    });
    return at == m_rows.end() ? -1 : static_cast<int>(at - m_rows.begin());
}

std::size_t CModelListModel::Total() const
{
    std::size_t total = 0;
    for (const auto& library : m_libraries) {
        total += library->Count();
    }
    return total;
}

int CModelListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CModelListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ModelColumns().size());
}

QVariant CModelListModel::data(const QModelIndex& index, int role) const
{
    const CZovRcdProps* record = RecordAt(index.row());
    if (record == nullptr || index.column() >= columnCount()) {
        return {};
    }
    const SModelColumn& column = ModelColumns()[static_cast<std::size_t>(index.column())];
    if (IsOfModelFile(column.column) && role != Qt::TextAlignmentRole) {
        return TruthData(index, column.column, role);
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return ModelCell(*record, column.column, m_units);
    case Qt::TextAlignmentRole:
        return static_cast<int>(Qt::AlignVCenter |
                                (column.isNumber ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

QVariant CModelListModel::TruthData(const QModelIndex& index, EModelColumn column, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::ForegroundRole) {
        return {};
    }
    const CZovRcdProps& record = *RecordAt(index.row());
    if (!IsDiscrete(record.Type())) {
        return {};
    }
    const curve::SRecordTruth* truth = m_truth.Find(*LibraryAt(index.row()), record);
    if (truth == nullptr) {
        return role == Qt::DisplayRole ? QVariant(QStringLiteral("...")) : QVariant();
    }
    const curve::STruthItem* item = truth->Find(TruthItemOf(column));
    if (role == Qt::ToolTipRole) {
        return QString::fromStdString(truth->text);
    }
    if (role == Qt::ForegroundRole) {
        return item != nullptr && item->verdict > curve::ETruth::Agrees
                   ? QVariant(TruthColor(item->verdict))
                   : QVariant();
    }
    return item != nullptr && item->model
               ? QString::fromStdString(FormatQuantity(*item->model, item->quantity, m_units))
               : QString();
}

Qt::ItemFlags CModelListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsDragEnabled : flags;
}

QStringList CModelListModel::mimeTypes() const
{
    return {kRecordsMime};
}

QMimeData* CModelListModel::mimeData(const QModelIndexList& indexes) const
{
    QByteArray addresses;
    int last = -1;
    for (const QModelIndex& index : indexes) {
        if (index.row() != last) { // cells of a row come one behind the other
            addresses +=
                QByteArray::number(reinterpret_cast<quintptr>(RecordAt(index.row()))) + ' ';
            last = index.row();
        }
    }
    auto* data = new QMimeData;
    data->setData(kRecordsMime, addresses);
    return data;
}

Qt::DropActions CModelListModel::supportedDragActions() const
{
    return Qt::CopyAction | Qt::MoveAction;
}

std::unordered_set<const CZovRcdProps*> CModelListModel::DraggedRecords(const QMimeData& data)
{
    std::unordered_set<const CZovRcdProps*> records;
    for (const QByteArray& address : data.data(kRecordsMime).split(' ')) {
        if (!address.isEmpty()) {
            records.insert(reinterpret_cast<const CZovRcdProps*>(
                static_cast<quintptr>(address.toULongLong())));
        }
    }
    return records;
}

QVariant CModelListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount()) {
        return {};
    }
    const SModelColumn& column = ModelColumns()[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole) {
        return tr(column.title);
    }
    if (role == Qt::TextAlignmentRole) {
        return static_cast<int>(Qt::AlignVCenter |
                                (column.isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

void CModelListModel::sort(int column, Qt::SortOrder order)
{
    m_request.order.sorted = column >= 0 && column < columnCount();
    if (m_request.order.sorted) {
        m_request.order.column = ModelColumns()[static_cast<std::size_t>(column)].column;
    }
    m_request.order.descending = order == Qt::DescendingOrder;
    m_asksForAll = true;
    m_base.reset();
    Fill();
}

} // namespace zov::app
