// SPDX-License-Identifier: Apache-2.0
/// [Model Selector].
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/stringlist.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace zov::ibischk {

struct SFileData;
struct SModelInfo;

struct SSelectorRow
{
    std::string_view model;
    std::string_view description;
    SPlace place;
};

struct SModelSelector
{
    std::string_view name;
    SPlace place;
    std::vector<SSelectorRow> rows;
    CNameIndex models; ///< of the rows, to places in `rows`
    bool used = false; ///< named by a pin or a series row
};

/// What a pin or a series row reaches by a name: a [Model], or the models of a [Model Selector].
struct SReach
{
    const SModelInfo* first = nullptr; ///< the model, or the selector's default; null: none
    bool found = false;                ///< there is a [Model] or [Model Selector] of the name
    std::string_view series;           ///< first of the models of a series type; empty for none
    std::string_view other;            ///< first of those that are no series type
    bool anyDiff = false;              ///< a differential type
    bool anyReceives = false;
    bool anyDrives = false;
    bool anySwitch = false; ///< Series_switch
    bool anyAlgorithmic = false;
    bool anyExternalReference = false;
    bool anyGndClamp = false;
    bool anyPowerClamp = false;
    bool allDriveUp = false;   ///< every model has a pullup side
    bool allDriveDown = false; ///< every model has a pulldown side
};

/// Looks names up, each once.
class CReach
{
public:
    explicit CReach(const SFileData& data)
        : m_data(data)
    {
    }
    const SReach& Of(std::string_view name);

private:
    const SFileData& m_data;
    std::unordered_map<std::string_view, SReach> m_known;
};

/// Marks what a name leads to as used.
void MarkUsed(SFileData& data, std::string_view name);

extern const SFamily kMselFamily;

} // namespace zov::ibischk
