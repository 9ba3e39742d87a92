// SPDX-License-Identifier: Apache-2.0
/// A set of libraries on disk, and a table over it.
#pragma once

#include "assign/AssignTable.h"
#include "support/Models.h"
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

class CAssignTest : public testing::Test
{
protected:
    static inline const FEnvironment kNone = [](const char*) { return std::nullopt; };

    /// Adds a library to the set; the first becomes the project library.
    std::shared_ptr<CZovLibrary> AddLibrary(const std::string& name,
                                            const std::vector<SModel>& models)
    {
        const CZovLibrary library = LibraryOf(models);
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
