// SPDX-License-Identifier: Apache-2.0
#include "ibischk/imgroup.h"

#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"

#include <algorithm>
#include <unordered_map>

namespace zov::ibischk {

void OpenGroup(SCheck& check, const SLine& line)
{
    SComponent& component = OpenComponent(check);
    RequireEarlier(check, EKeyword::Pin, 6215);
    SInterconnectGroup group;
    group.name = TakeName(check, line, kNameLimit, EReserved::Refused);
    group.place = check.state.keywordPlace;
    if (!group.name.empty() &&
        component.names->groupNames.Add(group.name, component.groups.size())) {
        check.report.ErrorAt(group.place, 6205, group.name);
    }
    component.groups.push_back(std::move(group));
}

void TakeGroupSet(SCheck& check, const SLine& line)
{
    SInterconnectGroup& group = OpenComponent(check).groups.back();
    const SWords words(line.text);
    if (words.count != 2) {
        check.report.ErrorAt(line.Place(), 6206, words.count);
        if (words.count < 2) {
            return;
        }
    }
    const SGroupSet set{words[0], words[1], line.Place()};
    if (!IsNa(set.file)) {
        if (!EndsWithNoCase(set.file, ExtensionOf(EFileType::Ims))) {
            check.report.ErrorAt(line.Place(set.file), 6209, set.file);
        } else {
            CheckFileName(check, set.file, EFileName::Referenced, line.Place(set.file));
        }
    }
    group.sets.push_back(set);
}

void CloseGroup(SCheck& check)
{
    const SInterconnectGroup& group = OpenComponent(check).groups.back();
    if (group.sets.empty()) {
        check.report.ErrorAt(group.place, 6207, group.name);
    }
    CNameIndex seen;
    std::vector<std::string> joined;
    joined.reserve(group.sets.size());
    for (const SGroupSet& set : group.sets) {
        // "/" and the like may stand in a file name, a blank may not.
        joined.push_back(std::string(set.set).append(" ").append(set.file));
        if (seen.Add(joined.back(), 0)) {
            check.report.ErrorAt(set.place, 6208, set.set);
        }
    }
}

void CloseGroups(SCheck& check, const SComponent& component)
{
    const bool hasPackage = check.state.Has(EKeyword::PackageModel) ||
                            check.state.Has(EKeyword::AlternatePackageModels);
    if (!component.groups.empty() && hasPackage) {
        check.report.Caution(component.groups.front().place, 6214, component.name);
    }
}

namespace {

/// The sets of files that groups name, each file read and checked once.
class CSetFiles
{
public:
    explicit CSetFiles(SCheck& check)
        : m_check(check)
    {
    }

    /// The names of a file's sets; null when it can't be read, which is reported once.
    const CNameIndex* SetsOf(const SGroupSet& set)
    {
        const auto [entry, isNew] = m_files.try_emplace(set.file);
        if (isNew) {
            entry->second.readable = Read(set.file, entry->second.sets);
            if (!entry->second.readable) {
                m_check.report.ErrorAt(set.place, 6210, set.file);
            }
        }
        return entry->second.readable ? &entry->second.sets : nullptr;
    }

private:
    struct SFile
    {
        bool readable = false;
        CNameIndex sets;
    };

    bool Read(std::string_view file, CNameIndex& sets)
    {
        const auto entries = IndexReferenced(m_check, file);
        if (!entries) {
            return false;
        }
        for (const SIndexEntry& entry : *entries) {
            if (entry.keyword == EKeyword::InterconnectModelSet) {
                sets.Add(entry.text, 0);
            }
        }
        CheckReferenced(m_check, file, EFileType::Ims);
        return true;
    }

    SCheck& m_check;
    std::unordered_map<std::string_view, SFile> m_files;
};

void FinishSet(SCheck& check, const SGroupSet& set, CSetFiles& files)
{
    SFileData& data = check.data;
    if (IsNa(set.file)) {
        if (const auto here = data.interconnectSetNames.Find(set.set)) {
            data.interconnectSets[*here].used = true;
        } else {
            check.report.ErrorAt(set.place, 6211, set.set, check.BaseName());
        }
        return;
    }
    if (!EndsWithNoCase(set.file, ExtensionOf(EFileType::Ims))) {
        return;
    }
    const CNameIndex* sets = files.SetsOf(set);
    if (sets != nullptr && !sets->Find(set.set)) {
        check.report.ErrorAt(set.place, 6211, set.set, set.file);
    }
}

} // namespace

void FinishGroups(SCheck& check)
{
    CSetFiles files(check);
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(
            check.report, {component.name, {}, KeywordText(EKeyword::InterconnectModelGroup), {}});
        for (const SInterconnectGroup& group : component.groups) {
            for (const SGroupSet& set : group.sets) {
                FinishSet(check, set, files);
            }
        }
    }
}

} // namespace zov::ibischk
