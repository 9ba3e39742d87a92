// SPDX-License-Identifier: Apache-2.0
/// A parsed file: its text and the objects made of it.
#pragma once

#include "ibis/DataComponent.h"
#include "ibis/DataModel.h"
#include "ibis/DataPackage.h"

#include <string>

namespace zov::ibis {

/// What a file holds, in numbers.
struct SIPCounts
{
    std::size_t components = 0;
    std::size_t pins = 0;
    std::size_t models = 0;
    std::size_t tables = 0; ///< of numbers: I-V, V-T, I-T
    std::size_t points = 0; ///< rows of all tables
    std::size_t marked = 0; ///< objects that are not quite what their keyword asks for
    bool operator==(const SIPCounts&) const = default;
};

/// The root of the tree.
class CIPDataFile final : public CIPDataSection
{
public:
    /// Takes the whole text of a file.
    explicit CIPDataFile(std::string text);
    [[nodiscard]] std::string_view ClassName() const override { return "CIPDataFile"; }
    [[nodiscard]] std::string_view Text() const { return m_text; }
    [[nodiscard]] CArena& Arena() { return m_arena; }
    /// In force at the end of the file.
    [[nodiscard]] char CommentCharacter() const { return m_comment; }
    void SetCommentCharacter(char comment) { m_comment = comment; }
    void Print(std::string& out) const override;

    /// The text of a header keyword; empty when it is not there.
    [[nodiscard]] std::string_view Header(EIPKeyword keyword) const;
    [[nodiscard]] std::vector<const CIPDataComponent*> Components() const
    {
        return All<CIPDataComponent>();
    }
    /// Exact name; null for none.
    [[nodiscard]] const CIPDataComponent* FindComponent(std::string_view name) const;
    [[nodiscard]] std::vector<const CIPDataModel*> Models() const { return All<CIPDataModel>(); }
    [[nodiscard]] const CIPDataModel* FindModel(std::string_view name) const;
    [[nodiscard]] std::vector<const CIPDataMdlSel*> Selectors() const
    {
        return All<CIPDataMdlSel>();
    }
    [[nodiscard]] const CIPDataBoardDescription* Board() const
    {
        return First<CIPDataBoardDescription>();
    }

private:
    std::string m_text;
    CArena m_arena;
    char m_comment = '|';
};

[[nodiscard]] SIPCounts CountIPData(const CIPDataObject& root);

} // namespace zov::ibis
