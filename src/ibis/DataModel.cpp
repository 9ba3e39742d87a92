// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataModel.h"

#include "base/Text.h"

namespace zov::ibis {

namespace {

/// Words of all lines of a sub-parameter, together.
std::vector<std::string_view> AllWords(const CIPDataObject& object, std::string_view name)
{
    std::vector<std::string_view> all;
    for (const auto& child : object.Children()) {
        if (EqualsNoCase(child->Name(), name)) {
            const auto words = WordsOf(child->Value());
            all.insert(all.end(), words.begin(), words.end());
        }
    }
    return all;
}

std::vector<std::vector<std::string_view>> WordsByLine(const CIPDataObject& object,
                                                       std::string_view name)
{
    std::vector<std::vector<std::string_view>> lines;
    for (const auto& child : object.Children()) {
        if (EqualsNoCase(child->Name(), name)) {
            lines.push_back(WordsOf(child->Value()));
        }
    }
    return lines;
}

} // namespace

std::vector<SIPSchedule> CIPDataDrvSchedule::Schedules() const
{
    std::vector<SIPSchedule> schedules;
    for (const CIPDataRowItem* row : Rows()) {
        schedules.push_back(
            {row->Word(0), row->NumberAt(1), row->NumberAt(2), row->NumberAt(3), row->NumberAt(4)});
    }
    return schedules;
}

std::vector<SIPCorner> CIPDataExternal::Corners() const
{
    std::vector<SIPCorner> corners;
    for (auto& words : WordsByLine(*this, "Corner")) {
        words.resize(3);
        corners.push_back({words[0], words[1], words[2]});
    }
    return corners;
}

std::vector<std::string_view> CIPDataExternal::Ports() const
{
    return AllWords(*this, "Ports");
}

std::vector<std::string_view> CIPDataExternal::Parameters() const
{
    return AllWords(*this, "Parameters");
}

std::vector<std::vector<std::string_view>> CIPDataExternal::DToA() const
{
    return WordsByLine(*this, "D_to_A");
}

std::vector<std::vector<std::string_view>> CIPDataExternal::AToD() const
{
    return WordsByLine(*this, "A_to_D");
}

std::vector<SIPExecutable> CIPDataAlgorithmicMdl::Executables() const
{
    std::vector<SIPExecutable> executables;
    for (const auto& child : Children()) {
        if (StartsWithNoCase(child->Name(), "Executable")) {
            auto words = WordsOf(child->Value());
            words.resize(3);
            executables.push_back({child->Name(), words[0], words[1], words[2]});
        }
    }
    return executables;
}

EIPSubmodel CIPDataSubMdl::SubmodelType() const
{
    const std::string_view type = FieldText("Submodel_type");
    if (EqualsNoCase(type, "Dynamic_clamp")) {
        return EIPSubmodel::DynamicClamp;
    }
    if (EqualsNoCase(type, "Bus_hold")) {
        return EIPSubmodel::BusHold;
    }
    return EqualsNoCase(type, "Fall_back") ? EIPSubmodel::FallBack : EIPSubmodel::Unknown;
}

} // namespace zov::ibis
