// SPDX-License-Identifier: Apache-2.0
/// The assignment of models to a design's components: rows, mapping, edits, statuses, filter. What
/// CAssignModelView shows and its commands do, without the widgets.
///
///     CAssignTable table(design, set, search);
///     table.AutoMap(settings.searchOptions);
///     table.RefreshStatus();
///     for (const AssignRow* row : table.Rows()) ... table.CellText(*row, EAssignColumn::Status)
#pragma once

#include "assign/AssignColumns.h"
#include "assign/Design.h"
#include "assign/ModelSearch.h"
#include "base/Questions.h"
#include "base/Sink.h"
#include "core/LibrarySet.h"
#include "core/SearchOptions.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace zov {

struct AssignRow
{
    std::string component;
    std::string refdes; ///< empty for a component's row
    std::string originalModel;
    ERecordType requiredType = ERecordType::Any; ///< becomes the type of the model assigned
    std::vector<SModelRef> assigned;             ///< its own; see CAssignTable::ModelsOf
    std::int32_t validCount = 0;                 ///< models that were found valid
    std::string status;                          ///< may hold several lines
    bool found = false;                          ///< hit by the find filter
    bool fixed = false;                          ///< automatic mapping leaves it alone
    bool typeFree = false;
    /// How many models the search has for the component, counted up to a few; none before
    /// RefreshStatus.
    std::optional<std::size_t> candidates;
    std::size_t place = 0; ///< of the component in the design

    /// What it is called: the reference designator, or the component's name.
    [[nodiscard]] const std::string& Name() const { return refdes.empty() ? component : refdes; }
};

class CAssignTable
{
public:
    /// Both must outlive the table.
    CAssignTable(const SDesign& design, const CLibrarySet& set, CModelSearch& search);

    // --- rows --------------------------------------------------------------------------------

    /// OnSwitchView
    void SwitchView();
    [[nodiscard]] EAssignView View() const { return m_view; }
    /// All rows of the view in display order, and those that the last find hit.
    [[nodiscard]] const std::vector<AssignRow*>& Rows() const { return m_rows; }
    [[nodiscard]] const std::vector<AssignRow*>& FoundRows() const { return m_found; }
    /// Each component's row followed by the rows of its reference designators, whatever is shown.
    void VisitDesign(const std::function<void(AssignRow& row)>& visit);
    [[nodiscard]] const SDesignComponent& ComponentOf(const AssignRow& row) const
    {
        return m_design.components[row.place];
    }
    /// The row of a reference designator's component.
    [[nodiscard]] const AssignRow& ComponentRow(const AssignRow& row) const
    {
        return m_entries[row.place]->row;
    }

    /// The models a row has: its own; else, for a reference designator, those of its component, and
    /// for a component the different ones of its reference designators.
    [[nodiscard]] std::vector<SModelRef> ModelsOf(const AssignRow& row) const;
    /// "Assigned Models" shows sub-models (OnEnableSubModels). On at first.
    void EnableSubModels(bool on) { m_subModels = on; }
    /// Text of a cell; the lines of several models are separated by "\n".
    [[nodiscard]] std::string CellText(const AssignRow& row, EAssignColumn column) const;

    // --- search and edits --------------------------------------------------------------------

    /// What the row is looked up by: the component's (device's) name.
    [[nodiscard]] static SWanted WantedBy(const AssignRow& row);
    /// OnAutoMapping: the rows of the view that have no model and are not fixed.
    /// @return what was found, by row of Rows(); rows that were left out have no model there
    std::vector<SFound> AutoMap(const CSearchOptions& options);
    /// Whether a design is mapped when it is opened: never inside a host tool
    /// (`KVE_TAVRELY_ZOV_DLLVER`); else when it has no stored assignment file, or has one that is
    /// gone while `KVE_TAVRELY_PWT_ASSIGNMODEL` is set.
    [[nodiscard]] static bool MapsOnOpening(const std::filesystem::path& assignmentFile,
                                            const FEnvironment& environment);

    /// OnFindModel, OnBrowseModel: gives the chosen model to the selected rows. In component view,
    /// other components with a model of that name are listed in a question; Yes gives it to them
    /// too. In RefDes view a component keeps to one model: a row is refused, with a line in
    /// `output`, when a reference designator outside the selection has another one.
    void Assign(const std::vector<AssignRow*>& selected, const SModelRef& model,
                CQuestions& questions, CLogSink& output);
    /// OnRemoveModel: asks, then takes the model from the row and from all others that have it.
    /// False when the row has none or the answer was No.
    bool Remove(AssignRow& row, CQuestions& questions);
    /// Gives a row this model alone; it takes the model's type. No question.
    void SetModel(AssignRow& row, const SModelRef& model);

    /// OnRefreshStatus: candidates, valid models and status of each row of the view.
    void RefreshStatus();
    /// To be called when libraries were closed or records removed: models that are gone leave their
    /// rows. Returns how many.
    std::size_t DropGoneModels();

    // --- find filter -------------------------------------------------------------------------

    /// OnZvMgrFindAll: patterns separated by blanks, commas or semicolons, compared with the rows'
    /// names; with `ambiguousOnly` only rows that have more than one candidate (and all of those
    /// when there is no pattern). Returns the number of hits.
    std::size_t FindAll(std::string_view patterns, bool ambiguousOnly = false);
    /// OnZvMgrFindNext, OnZvMgrFindPrev: around the hits; null without any.
    AssignRow* FindNext();
    AssignRow* FindPrev();

private:
    struct SEntry
    {
        AssignRow row;
        std::vector<AssignRow> refs;
    };

    void ShowRows();
    void Clear(AssignRow& row);
    std::vector<AssignRow*> OthersWith(std::string_view modelName,
                                       const std::vector<AssignRow*>& except) const;
    std::string ListOf(const std::vector<AssignRow*>& rows, std::string_view modelName) const;
    const CZovRcdProps* OtherModel(const AssignRow& row, std::string_view modelName,
                                   const std::vector<AssignRow*>& except) const;
    [[nodiscard]] std::string StatusText(const AssignRow& row) const;
    [[nodiscard]] std::string ModelText(const SModelRef& model) const;

    SDesign m_design;
    const CLibrarySet& m_set;
    CModelSearch& m_search;
    std::vector<std::unique_ptr<SEntry>> m_entries;
    std::vector<AssignRow*> m_rows;
    std::vector<AssignRow*> m_found;
    std::size_t m_current = SIZE_MAX; ///< in m_found
    EAssignView m_view = EAssignView::Component;
    bool m_subModels = true;
};

} // namespace zov
