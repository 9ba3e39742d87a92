// SPDX-License-Identifier: Apache-2.0
#include "assign/AssignTable.h"

#include "assign/AssignTexts.h"
#include "base/Text.h"

#include <algorithm>
#include <unordered_set>

namespace zov {

using assigntext::Fill;

namespace {

AssignRow RowOf(const SDesignComponent& component, std::size_t place, std::string refdes)
{
    AssignRow row;
    row.component = component.name;
    row.refdes = std::move(refdes);
    row.originalModel = component.originalModel;
    row.requiredType = component.requiredType;
    row.fixed = component.fixed;
    row.typeFree = component.typeFree;
    row.place = place;
    return row;
}

void AddDistinct(std::vector<SModelRef>& models, const std::vector<SModelRef>& more)
{
    for (const SModelRef& model : more) {
        if (std::ranges::find(models, model) == models.end()) {
            models.push_back(model);
        }
    }
}

bool HasModel(const std::vector<SModelRef>& models, std::string_view name)
{
    return std::ranges::any_of(
        models, [&](const SModelRef& m) { return EqualsNoCase(m.record->Name(), name); });
}

using TRowSet = std::unordered_set<const AssignRow*>;

/// The first record of that type and name whose sub-model is the same, or null.
const CZovRcdProps* SameNamed(CZovLibrary& library, ERecordType type, std::string_view name,
                              std::string_view subModel)
{
    const CZovRcdProps* record = library.Find(type, name);
    if (record == nullptr || EqualsNoCase(record->GetString(EPropId::SubModel), subModel)) {
        return record;
    }
    const auto found = std::ranges::find_if(library.Records(), [&](const CZovRcdProps* one) {
        return one->Type() == type && EqualsNoCase(one->Name(), name) &&
               EqualsNoCase(one->GetString(EPropId::SubModel), subModel);
    });
    return found == library.Records().end() ? nullptr : *found;
}

} // namespace

std::string assigntext::Fill(std::string_view text, std::initializer_list<std::string_view> values)
{
    std::string out;
    for (const std::string_view value : values) {
        const std::size_t at = text.find("%s");
        out += text.substr(0, at);
        out += value;
        text.remove_prefix(at + 2);
    }
    out += text;
    return out;
}

CAssignTable::CAssignTable(const SDesign& design, const CLibrarySet& set, CModelSearch& search)
    : m_design(design)
    , m_set(set)
    , m_search(search)
{
    for (std::size_t i = 0; i < m_design.components.size(); ++i) {
        const SDesignComponent& component = m_design.components[i];
        auto entry = std::make_unique<SEntry>();
        entry->row = RowOf(component, i, "");
        for (const std::string& refdes : component.refdes) {
            if (!refdes.empty()) {
                entry->refs.push_back(RowOf(component, i, refdes));
            }
        }
        m_entries.push_back(std::move(entry));
    }
    ShowRows();
}

void CAssignTable::ShowRows()
{
    m_rows.clear();
    m_found.clear();
    m_current = SIZE_MAX;
    VisitDesign([&](AssignRow& row) {
        row.found = false;
        if (row.refdes.empty() == (m_view == EAssignView::Component)) {
            m_rows.push_back(&row);
        }
    });
}

void CAssignTable::SwitchView()
{
    m_view = m_view == EAssignView::Component ? EAssignView::RefDes : EAssignView::Component;
    ShowRows();
}

void CAssignTable::VisitDesign(const std::function<void(AssignRow& row)>& visit)
{
    for (const auto& entry : m_entries) {
        visit(entry->row);
        for (AssignRow& ref : entry->refs) {
            visit(ref);
        }
    }
}

std::vector<const AssignRow*> CAssignTable::RefDesOf(const AssignRow& row) const
{
    std::vector<const AssignRow*> rows;
    for (const AssignRow& ref : m_entries[row.place]->refs) {
        rows.push_back(&ref);
    }
    return rows;
}

std::vector<SModelRef> CAssignTable::ModelsOf(const AssignRow& row) const
{
    const SEntry& entry = *m_entries[row.place];
    if (!row.assigned.empty() || !row.refdes.empty()) {
        return row.assigned.empty() ? entry.row.assigned : row.assigned;
    }
    std::vector<SModelRef> models;
    for (const AssignRow& ref : entry.refs) {
        AddDistinct(models, ref.assigned);
    }
    return models;
}

SWanted CAssignTable::WantedBy(const AssignRow& row)
{
    return {row.component, row.requiredType};
}

CAssignTable::SNames CAssignTable::NamesOf(bool (*wanted)(const CAssignTable& table,
                                                          const AssignRow& row)) const
{
    SNames names;
    for (AssignRow* row : m_rows) {
        if (wanted(*this, *row)) {
            names.rows.push_back(row);
            names.wanted.push_back(WantedBy(*row));
        }
    }
    return names;
}

CAssignTable::SNames CAssignTable::OpenRows() const
{
    return NamesOf([](const CAssignTable& table, const AssignRow& row) {
        return !row.fixed && table.ModelsOf(row).empty();
    });
}

void CAssignTable::TakeFound(const SNames& names, std::vector<SFound>& found)
{
    for (std::size_t i = 0; i < names.rows.size(); ++i) {
        const SModelRef& model = found[i].model;
        if (model && HasType(*model.record, names.rows[i]->requiredType)) {
            SetModel(*names.rows[i], model);
        } else {
            found[i] = {};
        }
    }
}

std::vector<SFound> CAssignTable::AutoMap(const CSearchOptions& options)
{
    const SNames names = OpenRows();
    std::vector<SFound> found =
        m_search.FindAll(m_set.ActiveLibraries(), options.EnabledKeys(), names.wanted);
    TakeFound(names, found);
    std::vector<SFound> byRow(m_rows.size());
    for (std::size_t i = 0, next = 0; next < names.rows.size(); ++i) {
        if (m_rows[i] == names.rows[next]) {
            byRow[i] = std::move(found[next++]);
        }
    }
    return byRow;
}

bool CAssignTable::MapsOnOpening(const std::filesystem::path& assignmentFile,
                                 const FEnvironment& environment)
{
    if (EnvironmentFlag(environment, "KVE_TAVRELY_ZOV_DLLVER")) {
        return false;
    }
    std::error_code ignored;
    return assignmentFile.empty() || (!std::filesystem::exists(assignmentFile, ignored) &&
                                      EnvironmentFlag(environment, "KVE_TAVRELY_PWT_ASSIGNMODEL"));
}

void CAssignTable::SetModel(AssignRow& row, const SModelRef& model, ERefDesModels refDes)
{
    const bool sameType = row.requiredType == model.type;
    row.assigned = {model};
    row.requiredType = model.type;
    if (!sameType) { // other models are candidates now
        row.candidates.reset();
    }
    row.validCount = 0;
    row.status.clear();
    if (row.refdes.empty()) {
        for (AssignRow& ref : m_entries[row.place]->refs) {
            if (refDes == ERefDesModels::Keep && !ref.assigned.empty()) {
                continue;
            }
            ref.assigned.clear();
            ref.requiredType = model.type;
            ref.candidates = row.candidates;
        }
    }
}

/// Takes the models from a row; it is again what the design asks for.
void CAssignTable::Clear(AssignRow& row)
{
    SEntry& entry = *m_entries[row.place];
    const ERecordType required = ComponentOf(row).requiredType;
    if (!row.refdes.empty() && row.assigned.empty()) {
        // It follows its component, which the other reference designators must go on to do.
        for (AssignRow& ref : entry.refs) {
            if (ref.assigned.empty()) {
                ref.assigned = entry.row.assigned;
            }
        }
        entry.row.assigned.clear();
        entry.row.requiredType = required;
    }
    const auto clear = [required](AssignRow& one) {
        one.assigned.clear();
        one.requiredType = required;
        one.candidates.reset();
        one.validCount = 0;
        one.status.clear();
    };
    clear(row);
    if (row.refdes.empty()) {
        std::ranges::for_each(entry.refs, clear);
    }
}

/// Rows of the view outside `except` that have a model of that name.
std::vector<AssignRow*> CAssignTable::OthersWith(std::string_view modelName,
                                                 const std::vector<AssignRow*>& except) const
{
    const TRowSet skipped(except.begin(), except.end());
    std::vector<AssignRow*> others;
    for (AssignRow* row : m_rows) {
        if (!skipped.contains(row) && HasModel(ModelsOf(*row), modelName)) {
            others.push_back(row);
        }
    }
    return others;
}

std::string CAssignTable::ListOf(const std::vector<AssignRow*>& rows,
                                 std::string_view modelName) const
{
    std::string list;
    for (const AssignRow* row : rows) {
        list += Fill(assigntext::kListLine, {row->Name(), modelName});
    }
    return list;
}

/// The model of another name on another reference designator of the component, or null.
const CZovRcdProps* CAssignTable::OtherModel(const AssignRow& row, std::string_view modelName,
                                             const TRowSet& except) const
{
    for (const AssignRow& ref : m_entries[row.place]->refs) {
        if (except.contains(&ref)) {
            continue;
        }
        for (const SModelRef& model : ModelsOf(ref)) {
            if (!EqualsNoCase(model.record->Name(), modelName)) {
                return model.record;
            }
        }
    }
    return nullptr;
}

std::size_t CAssignTable::Assign(const std::vector<AssignRow*>& selected, const SModelRef& model,
                                 CQuestions& questions, CLogSink& output)
{
    const std::string name(model.record->Name());
    if (m_view == EAssignView::RefDes) {
        const TRowSet together(selected.begin(), selected.end());
        std::size_t given = 0;
        for (AssignRow* row : selected) {
            if (const CZovRcdProps* other = OtherModel(*row, name, together)) {
                output.Write(
                    Fill(assigntext::kOtherModelInUse, {name, row->component, other->Name()}));
            } else {
                SetModel(*row, model);
                ++given;
            }
        }
        return given;
    }
    const std::vector<AssignRow*> others = OthersWith(name, selected);
    for (AssignRow* row : selected) {
        SetModel(*row, model);
    }
    if (others.empty()) {
        return selected.size();
    }
    const std::string question = IsDiscrete(model.type)
                                     ? std::string(assigntext::kOverwriteDiscrete)
                                     : Fill(assigntext::kOverwrite, {ListOf(others, name)});
    if (!questions.YesNo(question)) {
        return selected.size();
    }
    for (AssignRow* row : others) {
        SetModel(*row, model);
    }
    return selected.size() + others.size();
}

std::vector<AssignRow*> CAssignTable::Remove(AssignRow& row, CQuestions& questions)
{
    const std::vector<SModelRef> models = ModelsOf(row);
    if (models.empty()) {
        return {};
    }
    const std::string name(models.front().record->Name());
    std::vector<AssignRow*> rows = OthersWith(name, {&row});
    const std::string question = rows.empty()
                                     ? Fill(assigntext::kRemove, {name, row.Name(), row.Name()})
                                     : Fill(assigntext::kRemoveAll, {ListOf(rows, name)});
    if (!questions.YesNo(question)) {
        return {};
    }
    rows.push_back(&row);
    for (AssignRow* one : rows) {
        Clear(*one);
    }
    return rows;
}

std::size_t CAssignTable::DropGoneModels()
{
    // Few of a library's records are in use: these are looked up among its records, not the other
    // way round.
    std::unordered_map<const CZovLibrary*, std::unordered_set<const CZovRcdProps*>> gone;
    VisitDesign([&](AssignRow& row) {
        for (const SModelRef& model : row.assigned) {
            gone[model.library.get()].insert(model.record);
        }
    });
    for (const SLibraryEntry* entry : m_set.Entries()) {
        const auto used = gone.find(entry->library.get());
        for (const CZovRcdProps* record : entry->library->Records()) {
            if (used == gone.end() || used->second.empty()) {
                break;
            }
            used->second.erase(record);
        }
    }
    m_changing.clear();
    return DropModels(
        [&](const SModelRef& model) { return gone[model.library.get()].contains(model.record); });
}

std::size_t CAssignTable::DropModels(const std::function<bool(const SModelRef& model)>& isGone)
{
    std::size_t dropped = 0;
    const auto prune = [&](AssignRow& row, ERecordType type) {
        const std::size_t lost = std::erase_if(row.assigned, isGone);
        dropped += lost;
        if (row.assigned.empty() && row.requiredType != type) {
            row.requiredType = type;
            row.candidates.reset();
        }
        if (lost != 0) {
            row.validCount = 0;
            row.status.clear();
        }
    };
    for (const auto& entry : m_entries) {
        prune(entry->row, ComponentOf(entry->row).requiredType);
        for (AssignRow& ref : entry->refs) { // those without a model follow their component
            prune(ref, entry->row.requiredType);
        }
    }
    return dropped;
}

void CAssignTable::BeforeChange(const CZovLibrary& library)
{
    std::vector<SNamedModel>& named = m_changing[&library];
    named.clear();
    VisitDesign([&](AssignRow& row) {
        for (std::size_t i = 0; i < row.assigned.size(); ++i) {
            const SModelRef& model = row.assigned[i];
            if (model.library.get() == &library) {
                named.push_back({&row, i, std::string(model.record->Name()),
                                 std::string(model.record->GetString(EPropId::SubModel))});
            }
        }
    });
}

std::size_t CAssignTable::AfterChange(CZovLibrary& library)
{
    const std::vector<SNamedModel> named = std::move(m_changing[&library]);
    m_changing.erase(&library);
    std::vector<SLostModel> lost = std::move(m_lost[&library]);
    std::vector<SLostModel>& stillLost = m_lost[&library] = {};
    TRecords gone;
    for (const SNamedModel& one : named) {
        gone.insert(one.row->assigned[one.place].record);
    }
    for (const SLostModel& one : lost) {
        gone.insert(one.record);
    }
    for (const CZovRcdProps* record : library.Records()) {
        if (gone.empty()) {
            break;
        }
        gone.erase(record);
    }
    for (const SNamedModel& one : named) {
        SModelRef& model = one.row->assigned[one.place];
        if (!gone.contains(model.record)) {
            continue;
        }
        const CZovRcdProps* other = SameNamed(library, model.type, one.name, one.subModel);
        if (other == nullptr) {
            stillLost.push_back({one, model.library, model.record, model.type});
        }
        model.record = other;
    }
    const std::size_t dropped = DropModels([](const SModelRef& model) { return !model; });
    GiveBack(std::move(lost), gone);
    return dropped;
}

void CAssignTable::GiveBack(std::vector<SLostModel> lost, const TRecords& gone)
{
    for (SLostModel& one : lost) {
        const std::shared_ptr<CZovLibrary> library = one.library.lock();
        if (!library) {
            continue; // another library stands at the address of a closed one
        }
        if (gone.contains(one.record)) {
            m_lost[library.get()].push_back(std::move(one));
        } else if (one.named.row->assigned.empty() && one.record->Type() == one.type &&
                   EqualsNoCase(one.record->Name(), one.named.name)) {
            SetModel(*one.named.row, {library, one.record, one.type}, ERefDesModels::Keep);
        }
    }
}

void CAssignTable::ForgetCandidates()
{
    VisitDesign([](AssignRow& row) { row.candidates.reset(); });
}

CAssignTable::SNames CAssignTable::UncountedRows() const
{
    return NamesOf(
        [](const CAssignTable&, const AssignRow& row) { return !row.candidates.has_value(); });
}

void CAssignTable::TakeCounts(const SNames& names, const std::vector<std::size_t>& counts)
{
    for (std::size_t i = 0; i < names.rows.size(); ++i) {
        names.rows[i]->candidates = counts[i];
    }
    const auto node = m_set.ActiveLibraries();
    const std::unordered_set<std::shared_ptr<CZovLibrary>> active(node.begin(), node.end());
    for (AssignRow* row : m_rows) {
        row->validCount = 0;
        row->status.clear();
        for (const SModelRef& model : ModelsOf(*row)) {
            if (active.contains(model.library)) {
                ++row->validCount;
            } else {
                row->status += "the library of '" + std::string(model.record->Name()) +
                               "' is switched off or closed\n";
            }
        }
        if (row->candidates.value_or(0) > 1) {
            row->status += "more than one model matches";
        }
        row->status = Trim(row->status);
    }
}

void CAssignTable::RefreshStatus()
{
    ForgetCandidates();
    const SNames names = UncountedRows();
    TakeCounts(names,
               m_search.CountCandidates(m_set.ActiveLibraries(), names.wanted, kCandidateLimit));
}

std::string CAssignTable::ModelText(const SModelRef& model) const
{
    const std::string_view sub = model.record->GetString(EPropId::SubModel);
    return m_subModels && !sub.empty()
               ? Fill(assigntext::kModelWithSubModel, {model.record->Name(), sub})
               : std::string(model.record->Name());
}

std::string CAssignTable::StatusText(const AssignRow& row) const
{
    const bool hasModel = !ModelsOf(row).empty();
    const bool notFound = row.candidates && *row.candidates < 1;
    if (row.validCount > 0) {
        return hasModel && !row.status.empty() ? Fill(assigntext::kValidatedWith, {row.status})
                                               : std::string(assigntext::kValidated);
    }
    if (notFound) {
        return std::string(assigntext::kNotFound);
    }
    return hasModel ? row.status.substr(0, row.status.find('\n')) : std::string();
}

std::string CAssignTable::CellText(const AssignRow& row, EAssignColumn column) const
{
    const std::vector<SModelRef> models = ModelsOf(row);
    switch (column) {
    case EAssignColumn::Name:
        return row.Name();
    case EAssignColumn::Origin:
        return row.refdes.empty() ? row.originalModel : row.component;
    case EAssignColumn::ModelType: {
        const ERecordType type = models.empty() ? row.requiredType : models.front().type;
        const SRecordTypeInfo* info = FindRecordType(static_cast<std::uint32_t>(type));
        return info == nullptr ? std::string() : std::string(info->name);
    }
    case EAssignColumn::AssignedModels: {
        std::string text;
        for (const SModelRef& model : models) {
            text += (text.empty() ? "" : "\n") + ModelText(model);
        }
        return text;
    }
    case EAssignColumn::Description:
        return models.empty() ? std::string()
                              : std::string(models.front().record->GetString(EPropId::Description));
    case EAssignColumn::Status:
        return StatusText(row);
    case EAssignColumn::Unused:
        break;
    }
    return {};
}

std::size_t CAssignTable::FindAll(std::string_view patterns, bool ambiguousOnly)
{
    std::string list(patterns);
    std::ranges::replace_if(
        list, [](char c) { return c == ' ' || c == ','; }, ';');
    std::vector<std::string_view> wanted = Split(list, ';');
    std::erase_if(wanted, [](std::string_view one) { return one.empty(); });
    const SNames names = ambiguousOnly ? UncountedRows() : SNames();
    if (!names.rows.empty()) { // else the search is not touched: it may be in use elsewhere
        const auto counts =
            m_search.CountCandidates(m_set.ActiveLibraries(), names.wanted, kCandidateLimit);
        for (std::size_t i = 0; i < names.rows.size(); ++i) {
            names.rows[i]->candidates = counts[i];
        }
    }
    m_found.clear();
    m_current = SIZE_MAX;
    for (AssignRow* hit : m_rows) {
        AssignRow& row = *hit;
        const bool named =
            std::ranges::any_of(
                wanted, [&](std::string_view one) { return WildcardMatch(one, row.Name()); }) ||
            (wanted.empty() && ambiguousOnly);
        row.found = named && (!ambiguousOnly || row.candidates.value_or(0) > 1);
        if (row.found) {
            m_found.push_back(&row);
        }
    }
    return m_found.size();
}

AssignRow* CAssignTable::FindNext()
{
    if (m_found.empty()) {
        return nullptr;
    }
    m_current = m_current + 1 < m_found.size() ? m_current + 1 : 0;
    return m_found[m_current];
}

AssignRow* CAssignTable::FindPrev()
{
    if (m_found.empty()) {
        return nullptr;
    }
    m_current = m_current - 1 < m_found.size() ? m_current - 1 : m_found.size() - 1;
    return m_found[m_current];
}

} // namespace zov
