// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataFile.h"

#include "ibis/Forms.h"

namespace zov::ibis {

namespace {

const SIPForm& FileForm()
{
    static const SIPForm form{};
    return form;
}

template <class T>
const T* FindNamed(const CIPDataFile& file, std::string_view name)
{
    for (const auto& child : file.Children()) {
        if (child->Value() == name) {
            if (const auto* found = dynamic_cast<const T*>(child.get())) {
                return found;
            }
        }
    }
    return nullptr;
}

void Count(const CIPDataObject& object, SIPCounts& counts)
{
    counts.components += object.Keyword() == EIPKeyword::Component ? 1U : 0U;
    counts.models += object.Keyword() == EIPKeyword::Model ? 1U : 0U;
    counts.marked += object.Marks().empty() ? 0U : 1U;
    if (object.Table() != nullptr) {
        ++counts.tables;
        counts.points += object.Table()->RowCount();
    }
    if (dynamic_cast<const CIPDataPin*>(&object) != nullptr) {
        counts.pins += object.Children().size();
    }
    for (const auto& child : object.Children()) {
        Count(*child, counts);
    }
}

} // namespace

CIPDataFile::CIPDataFile(std::string text)
    : CIPDataSection(FileForm(), 0, {})
    , m_text(std::move(text))
{
}

void CIPDataFile::Print(std::string& out) const
{
    for (const auto& child : Children()) {
        child->Print(out);
    }
}

std::string_view CIPDataFile::Header(EIPKeyword keyword) const
{
    const CIPDataObject* part = Part(keyword);
    return part != nullptr ? part->Value() : std::string_view();
}

const CIPDataComponent* CIPDataFile::FindComponent(std::string_view name) const
{
    return FindNamed<CIPDataComponent>(*this, name);
}

const CIPDataModel* CIPDataFile::FindModel(std::string_view name) const
{
    return FindNamed<CIPDataModel>(*this, name);
}

SIPCounts CountIPData(const CIPDataObject& root)
{
    SIPCounts counts;
    Count(root, counts);
    return counts;
}

} // namespace zov::ibis
