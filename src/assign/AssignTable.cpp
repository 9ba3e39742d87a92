// SPDX-License-Identifier: Apache-2.0
#include "assign/AssignTable.h"

#include "assign/AssignTexts.h"
#include "base/Text.h"

#include <algorithm>
#include <unordered_set>

namespace zov {

using assigntext::Fill;

namespace {

constexpr std::size_t kCandidateLimit = 2; ///< one or more than one is all that is asked

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

bool Contains(const std::vector<AssignRow*>& rows, const AssignRow& row)
{
    return std::ranges::find(rows, &row) != rows.end();
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

std::vector<SFound> CAssignTable::AutoMap(const CSearchOptions& options)
{
    std::vector<std::size_t> open;
    std::vector<SWanted> wanted;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (!m_rows[i]->fixed && ModelsOf(*m_rows[i]).empty()) {
            open.push_back(i);
            wanted.push_back(WantedBy(*m_rows[i]));
        }
    }
    const auto node = m_set.ActiveLibraries();
    const std::vector<SFound> found = m_search.FindAll(node, options.EnabledKeys(), wanted);
    std::vector<SFound> byRow(m_rows.size());
    for (std::size_t i = 0; i < open.size(); ++i) {
        AssignRow& row = *m_rows[open[i]];
        if (found[i].model && HasType(*found[i].model.record, row.requiredType)) {
            byRow[open[i]] = found[i];
            SetModel(row, found[i].model);
        }
    }
    return byRow;
}

bool CAssignTable::MapsOnOpening(const std::filesystem::path& assignmentFile,
                                 const FEnvironment& environment)
{
    if (environment("KVE_TAVRELY_ZOV_DLLVER")) {
        return false;
    }
    std::error_code ignored;
    return assignmentFile.empty() || (!std::filesystem::exists(assignmentFile, ignored) &&
                                      environment("KVE_TAVRELY_PWT_ASSIGNMODEL").has_value());
}

void CAssignTable::SetModel(AssignRow& row, const SModelRef& model)
{
    row.assigned = {model};
    row.requiredType = model.type;
    row.validCount = 0;
    row.status.clear();
    if (row.refdes.empty()) { // the reference designators follow their component
        for (AssignRow& ref : m_entries[row.place]->refs) {
            ref.assigned.clear();
            ref.requiredType = model.type;
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
    const std::unordered_set<const AssignRow*> skipped(except.begin(), except.end());
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
                                             const std::vector<AssignRow*>& except) const
{
    for (const AssignRow& ref : m_entries[row.place]->refs) {
        if (Contains(except, ref)) {
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

void CAssignTable::Assign(const std::vector<AssignRow*>& selected, const SModelRef& model,
                          CQuestions& questions, CLogSink& output)
{
    const std::string name(model.record->Name());
    if (m_view == EAssignView::RefDes) {
        for (AssignRow* row : selected) {
            if (const CZovRcdProps* other = OtherModel(*row, name, selected)) {
                output.Write(
                    Fill(assigntext::kOtherModelInUse, {name, row->component, other->Name()}));
            } else {
                SetModel(*row, model);
            }
        }
        return;
    }
    const std::vector<AssignRow*> others = OthersWith(name, selected);
    for (AssignRow* row : selected) {
        SetModel(*row, model);
    }
    if (others.empty()) {
        return;
    }
    const std::string question = IsDiscrete(model.type)
                                     ? std::string(assigntext::kOverwriteDiscrete)
                                     : Fill(assigntext::kOverwrite, {ListOf(others, name)});
    if (questions.YesNo(question)) {
        for (AssignRow* row : others) {
            SetModel(*row, model);
        }
    }
}

bool CAssignTable::Remove(AssignRow& row, CQuestions& questions)
{
    const std::vector<SModelRef> models = ModelsOf(row);
    if (models.empty()) {
        return false;
    }
    const std::string name(models.front().record->Name());
    std::vector<AssignRow*> rows = OthersWith(name, {&row});
    const std::string question = rows.empty()
                                     ? Fill(assigntext::kRemove, {name, row.Name(), row.Name()})
                                     : Fill(assigntext::kRemoveAll, {ListOf(rows, name)});
    if (!questions.YesNo(question)) {
        return false;
    }
    rows.push_back(&row);
    for (AssignRow* one : rows) {
        Clear(*one);
    }
    RefreshStatus();
    return true;
}

std::size_t CAssignTable::DropGoneModels()
{
    std::unordered_map<const CZovLibrary*, std::unordered_set<const CZovRcdProps*>> there;
    for (const SLibraryEntry* entry : m_set.Entries()) {
        there[entry->library.get()]; // its records are listed when a row refers to it
    }
    const auto isGone = [&](const SModelRef& model) {
        const auto library = there.find(model.library.get());
        if (library == there.end()) {
            return true;
        }
        if (library->second.empty()) {
            library->second.insert(model.library->Records().begin(),
                                   model.library->Records().end());
        }
        return !library->second.contains(model.record);
    };
    std::size_t dropped = 0;
    VisitDesign([&](AssignRow& row) { dropped += std::erase_if(row.assigned, isGone); });
    return dropped;
}

void CAssignTable::RefreshStatus()
{
    const auto node = m_set.ActiveLibraries();
    const std::unordered_set<std::shared_ptr<CZovLibrary>> active(node.begin(), node.end());
    std::vector<SWanted> wanted;
    for (const AssignRow* row : m_rows) {
        wanted.push_back(WantedBy(*row));
    }
    const auto counts = m_search.CountCandidates(node, wanted, kCandidateLimit);
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        AssignRow& row = *m_rows[i];
        row.candidates = counts[i];
        row.validCount = 0;
        row.status.clear();
        for (const SModelRef& model : ModelsOf(row)) {
            if (active.contains(model.library)) {
                ++row.validCount;
            } else {
                row.status += "the library of '" + std::string(model.record->Name()) +
                              "' is switched off or closed\n";
            }
        }
        if (counts[i] > 1) {
            row.status += "more than one model matches";
        }
        row.status = Trim(row.status);
    }
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
    std::vector<std::size_t> counts;
    if (ambiguousOnly) {
        std::vector<SWanted> names;
        for (const AssignRow* row : m_rows) {
            names.push_back(WantedBy(*row));
        }
        counts = m_search.CountCandidates(m_set.ActiveLibraries(), names, kCandidateLimit);
    }
    m_found.clear();
    m_current = SIZE_MAX;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        AssignRow& row = *m_rows[i];
        const bool named =
            std::ranges::any_of(
                wanted, [&](std::string_view one) { return WildcardMatch(one, row.Name()); }) ||
            (wanted.empty() && ambiguousOnly);
        row.found = named && (!ambiguousOnly || counts[i] > 1);
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
