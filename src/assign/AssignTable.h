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
#include <unordered_map>
#include <unordered_set>

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

enum class ERefDesModels
{
    Drop, ///< they follow their component
    Keep
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

    [[nodiscard]] AssignRow& ComponentRow(AssignRow& row) { return m_entries[row.place]->row; }
    /// The rows of a component's reference designators.
    [[nodiscard]] std::vector<const AssignRow*> RefDesOf(const AssignRow& row) const;

    /// The models a row has: its own; else, for a reference designator, those of its component, and
    /// for a component the different ones of its reference designators.
    [[nodiscard]] std::vector<SModelRef> ModelsOf(const AssignRow& row) const;
    /// "Assigned Models" shows sub-models (OnEnableSubModels). On at first.
    void EnableSubModels(bool on) { m_subModels = on; }
    /// "Assigned Models" of one model.
    [[nodiscard]] std::string ModelText(const SModelRef& model) const;
    /// Text of a cell; the lines of several models are separated by "\n".
    [[nodiscard]] std::string CellText(const AssignRow& row, EAssignColumn column) const;

    // --- search and edits --------------------------------------------------------------------

    /// What the row is looked up by: the component's (device's) name.
    [[nodiscard]] static SWanted WantedBy(const AssignRow& row);
    /// Rows of the view with what they are looked up by: what a search beside the window needs.
    struct SNames
    {
        std::vector<AssignRow*> rows;
        std::vector<SWanted> wanted; ///< by row
    };
    /// The rows that automatic mapping looks for: those without a model that are not fixed.
    [[nodiscard]] SNames OpenRows() const;
    /// Gives the rows of OpenRows what CModelSearch::FindAll found for them; a model of another
    /// type than required is dropped from `found`.
    void TakeFound(const SNames& names, std::vector<SFound>& found);
    /// OnAutoMapping: OpenRows, search and TakeFound at one go.
    /// @return what was found, by row of Rows(); rows that were left out have no model there
    std::vector<SFound> AutoMap(const CSearchOptions& options);
    /// Whether a design is mapped when it is opened: never inside a host tool
    /// (`KVE_TAVRELY_ZOV_DLLVER`); else when it has no stored assignment file, or has one that is
    /// gone while `KVE_TAVRELY_PWT_ASSIGNMODEL` is set. Both count when they hold a non-zero
    /// integer.
    [[nodiscard]] static bool MapsOnOpening(const std::filesystem::path& assignmentFile,
                                            const FEnvironment& environment);

    /// OnFindModel, OnBrowseModel: gives the chosen model to the selected rows. In component view,
    /// other components with a model of that name are listed in a question; Yes gives it to them
    /// too. In RefDes view a component keeps to one model: a row is refused, with a line in
    /// `output`, when a reference designator outside the selection has another one.
    /// @return how many rows have it now by this call
    std::size_t Assign(const std::vector<AssignRow*>& selected, const SModelRef& model,
                       CQuestions& questions, CLogSink& output);
    /// OnRemoveModel: asks, then takes the model from the row and from all others that have it.
    /// @return the rows that lost it, none when the row has no model or the answer was No; their
    ///         status has to be recomputed
    std::vector<AssignRow*> Remove(AssignRow& row, CQuestions& questions);
    /// Gives a row this model alone; it takes the model's type. No question.
    /// @param refDes  what becomes of a component's reference designators with models of their own
    void SetModel(AssignRow& row, const SModelRef& model,
                  ERefDesModels refDes = ERefDesModels::Drop);

    /// OnRefreshStatus: candidates, valid models and status of each row of the view.
    void RefreshStatus();
    /// What RefreshStatus has to search for: the rows of the view whose candidates are not known.
    [[nodiscard]] SNames UncountedRows() const;
    /// Takes what CModelSearch::CountCandidates counted (up to kCandidateLimit) for UncountedRows
    /// and sets the status of every row of the view.
    void TakeCounts(const SNames& names, const std::vector<std::size_t>& counts);
    static constexpr std::size_t kCandidateLimit = 2; ///< one or more than one is all that is asked
    /// To be called when the libraries that are searched have changed.
    void ForgetCandidates();

    /// To be called when libraries were closed or records removed: models that are gone leave their
    /// rows. Returns how many.
    std::size_t DropGoneModels();
    /// Before records of a library change.
    void BeforeChange(const CZovLibrary& library);
    /// Behind it: a model that is gone gives way to the one of that type, name and sub-model which
    /// has taken its place, if there is one. Rows that lost theirs get it back when the same record
    /// comes back, by undo or redo, unless they have another one by then. Returns how many rows
    /// lost theirs.
    std::size_t AfterChange(CZovLibrary& library);

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

    /// A model of a library that is about to change.
    struct SNamedModel
    {
        AssignRow* row;
        std::size_t place; ///< in the row's models
        std::string name;
        std::string subModel;
    };

    /// A model that its row lost when it left its library.
    struct SLostModel
    {
        SNamedModel named;
        std::weak_ptr<CZovLibrary> library;
        const CZovRcdProps* record; ///< to be compared only: its memory may be gone
        ERecordType type;
    };
    using TRecords = std::unordered_set<const CZovRcdProps*>;

    void ShowRows();
    /// Gives rows what they lost of a library, but for the records that are still gone.
    void GiveBack(std::vector<SLostModel> lost, const TRecords& gone);
    void Clear(AssignRow& row);
    /// Takes the models that are gone from all rows; a row left without any is again what the
    /// design, or its component, asks for. Returns how many.
    std::size_t DropModels(const std::function<bool(const SModelRef& model)>& isGone);
    [[nodiscard]] SNames NamesOf(bool (*wanted)(const CAssignTable& table,
                                                const AssignRow& row)) const;
    std::vector<AssignRow*> OthersWith(std::string_view modelName,
                                       const std::vector<AssignRow*>& except) const;
    std::string ListOf(const std::vector<AssignRow*>& rows, std::string_view modelName) const;
    const CZovRcdProps* OtherModel(const AssignRow& row, std::string_view modelName,
                                   const std::unordered_set<const AssignRow*>& except) const;
    [[nodiscard]] std::string StatusText(const AssignRow& row) const;

    SDesign m_design;
    const CLibrarySet& m_set;
    CModelSearch& m_search;
    std::vector<std::unique_ptr<SEntry>> m_entries;
    std::vector<AssignRow*> m_rows;
    std::vector<AssignRow*> m_found;
    std::size_t m_current = SIZE_MAX; ///< in m_found
    std::unordered_map<const CZovLibrary*, std::vector<SNamedModel>> m_changing;
    std::unordered_map<const CZovLibrary*, std::vector<SLostModel>> m_lost;
    EAssignView m_view = EAssignView::Component;
    bool m_subModels = true;
};

} // namespace zov
