// SPDX-License-Identifier: Apache-2.0
/// The item model of model lists: the records of libraries that a query finds. It holds row numbers
/// only; what a cell shows is asked for when it is drawn, so that a million rows cost 8 MB.
#pragma once

#include "app/BackgroundJob.h"
#include "app/ModelRows.h"
#include "app/TruthCache.h"

#include <QAbstractTableModel>

#include <memory>
#include <unordered_set>
#include <vector>

namespace zov::app {

class CModelListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CModelListModel(QObject* parent = nullptr);

    using TLibraries = std::vector<std::shared_ptr<CZovLibrary>>;
    /// Shows these libraries, in their order. The rows come by and by, see Filled.
    void SetLibraries(TLibraries libraries);
    [[nodiscard]] const TLibraries& Libraries() const { return m_libraries; }
    /// Text of the search field. False, and the rows stay, when it can't be understood; the reason
    /// is then in QueryError.
    bool SetQuery(const QString& text);
    [[nodiscard]] const QString& QueryError() const { return m_queryError; }
    /// Shows only models of one type; Any shows all.
    void SetType(ERecordType type);
    [[nodiscard]] ERecordType Type() const { return m_request.type; }
    void SetHideRules(const SHideRules& rules);
    void SetUnits(const CDisplayUnits& units);
    [[nodiscard]] const CDisplayUnits& Units() const { return m_units; }

    /// Whether the library's records are among those of this list.
    [[nodiscard]] bool Holds(const CZovLibrary& library) const;
    /// Words are about to be searched: what that needs is made beside the window.
    void PrepareSearch();
    /// Before anything of the libraries changes: the workers let go of them.
    void BeginChange();
    /// After it: the rows are made anew.
    void EndChange();
    /// The library was closed: this list lets go of it.
    void DropLibrary(const CZovLibrary& library);
    /// Only values of one record changed, the rows stay.
    void RecordChanged(const CZovRcdProps& record);

    /// Null for a row outside the list.
    [[nodiscard]] CZovRcdProps* RecordAt(int row) const;
    [[nodiscard]] std::shared_ptr<CZovLibrary> LibraryAt(int row) const;
    /// The row of a record; -1 when it is not shown.
    [[nodiscard]] int RowOf(const CZovRcdProps& record) const;
    /// Records of the libraries, shown or not.
    [[nodiscard]] std::size_t Total() const;
    [[nodiscard]] bool IsFilling() const { return m_job.IsRunning(); }
    [[nodiscard]] CBackgroundJob& Job() { return m_job; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Rows are dragged to libraries: a copy, or with Shift a move.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;
    /// The addresses of the records that were dragged; they are for comparing, since a record may
    /// have gone meanwhile.
    static std::unordered_set<const CZovRcdProps*> DraggedRecords(const QMimeData& data);
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

Q_SIGNALS:
    /// The rows are made anew; the old ones are still there, for the last time.
    void AboutToRefill();
    /// New rows are in.
    void Filled(int shown, int total);

private:
    void Fill();
    /// @param isBase the rows are those of all records in the order that is asked for
    void Take(std::vector<SModelRow> rows, bool isBase);
    [[nodiscard]] std::vector<const CZovLibrary*> PlainLibraries() const;
    [[nodiscard]] QVariant TruthData(const QModelIndex& index, EModelColumn column, int role) const;
    [[nodiscard]] bool SortsByModelFiles() const;
    /// What is known by now of the column that is sorted by.
    [[nodiscard]] std::shared_ptr<const TColumnValues> KnownValues() const;
    void AskForValues();
    void TruthUpdated();

    TLibraries m_libraries;
    std::vector<SModelRow> m_rows;
    SRowRequest m_request;
    QString m_queryError;
    CDisplayUnits m_units;
    bool m_changing = false;
    TBaseRows m_base; ///< sorted, for searches in the same order; null when there are none
    CBackgroundJob m_job;
    CBackgroundJob m_prepare;
    mutable CTruthCache m_truth;   ///< asked by cells that are drawn
    bool m_asksForAll = false;     ///< rows out of view, too: they are sorted by it
    std::size_t m_sortedKnown = 0; ///< values that were known when the rows were sorted by them
};

} // namespace zov::app
