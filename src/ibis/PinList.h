// SPDX-License-Identifier: Apache-2.0
/// The pins of one component with everything that its tables say of them, as the loader shows them.
#pragma once

#include "base/Result.h"
#include "ibis/DataFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

struct SPinListRow
{
    std::string pin;
    std::string signal;
    std::string model;
    std::string r; ///< as text; empty in rows of three columns
    std::string l;
    std::string c;
    std::string pulldownRef; ///< of [Pin Mapping]; all empty for pins that it lacks
    std::string pullupRef;
    std::string gndClampRef;
    std::string powerClampRef;
    std::string diffPin; ///< the other pin of its pair; empty for none
    bool inverting = false;
    std::string vdiff;
};

struct SSeriesRow
{
    std::string pin1;
    std::string pin2;
    std::string model;
    std::string group;
};

struct SSwitchGroups
{
    bool on = false;
    std::vector<std::string> groups;
};

struct SPinList
{
    std::string component;
    std::string manufacturer;
    std::string packageModel;
    std::vector<SPinListRow> pins;
    std::vector<SSeriesRow> series;
    std::vector<SSwitchGroups> switchGroups;
    std::vector<std::string> models; ///< names in the file: models, selectors, package models
    std::vector<std::string> selectors;
    std::vector<std::string> packageModels;
    std::vector<std::string> messages; ///< what is wrong but does not stop the reading
};

/// Names of the components of a file. Errors: "Empty IBIS file", "File: ... is not an IBIS file.",
/// "There is no component in the file."
CResult<std::vector<std::string>> ComponentNames(const CIPDataFile& file,
                                                 std::string_view fileName);

/// Errors: those of ComponentNames, "Can not find component '...'.", and a component without pins.
CResult<SPinList> ReadPinList(const CIPDataFile& file, std::string_view fileName,
                              std::string_view component);

} // namespace zov::ibis
