// SPDX-License-Identifier: Apache-2.0
/// A set of libraries on disk, and a table over it.
#pragma once

#include "assign/AssignTable.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::test {

/// Answers and remembers what was asked.
class CAsked final : public CQuestions
{
public:
    explicit CAsked(bool yes)
        : answer(yes)
    {
    }
    bool YesNo(std::string_view text) override
    {
        texts.emplace_back(text);
        return answer;
    }
    bool answer;
    std::vector<std::string> texts;
};

struct SModel
{
    ERecordType type;
    const char* name;
    const char* subModel = "";
    const char* keywords = "";
    const char* description = "";
};

class CAssignTest : public testing::Test
{
protected:
    static inline const FEnvironment kNone = [](const char*) { return std::nullopt; };

    /// Adds a library to the set; the first becomes the project library.
    std::shared_ptr<CZovLibrary> AddLibrary(const std::string& name,
                                            const std::vector<SModel>& models)
    {
        CZovLibrary library;
        for (const SModel& model : models) {
            CZovRcdProps& record = library.Add(model.type);
            record.SetString(EPropId::ModelName, model.name);
            record.SetString(EPropId::SubModel, model.subModel);
            record.SetString(EPropId::Lookup, model.keywords);
            record.SetString(EPropId::Description, model.description);
        }
        CNullLog log;
        const auto path = m_folder.Path() / name;
        EXPECT_TRUE(SaveLibrary(library, path, {}, log).Ok());
        if (m_set.Project() == nullptr) {
            EXPECT_EQ(*m_set.Open(path, log), EOpened::Opened);
        } else {
            EXPECT_EQ(*m_set.AddExternal(path, log), EOpened::Opened);
        }
        return m_set.Entries().back()->library;
    }
    static SModelRef Model(const std::shared_ptr<CZovLibrary>& library, std::size_t at)
    {
        return {library, &library->At(at), library->At(at).Type()};
    }
    /// A column of all rows.
    static std::string Cells(const CAssignTable& table,
                             EAssignColumn column = EAssignColumn::AssignedModels)
    {
        std::string out;
        for (const AssignRow* row : table.Rows()) {
            out += row->Name() + "=" + table.CellText(*row, column) + "|";
        }
        return out;
    }

    CTempFolder m_folder;
    CLibrarySet m_set;
    CModelSearch m_search{kNone};
    CVectorLog m_log;
};

} // namespace zov::test
