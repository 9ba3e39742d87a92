// SPDX-License-Identifier: Apache-2.0
/// Libraries out of a few words per model.
#pragma once

#include "core/ZovLibrary.h"

#include <vector>

namespace zov::test {

struct SModel
{
    ERecordType type;
    const char* name;
    const char* subModel = "";
    const char* keywords = "";
    const char* description = "";
};

inline CZovLibrary LibraryOf(const std::vector<SModel>& models)
{
    CZovLibrary library;
    for (const SModel& model : models) {
        CZovRcdProps& record = library.Add(model.type);
        record.SetString(EPropId::ModelName, model.name);
        record.SetString(EPropId::SubModel, model.subModel);
        record.SetString(EPropId::Lookup, model.keywords);
        record.SetString(EPropId::Description, model.description);
    }
    return library;
}

} // namespace zov::test
