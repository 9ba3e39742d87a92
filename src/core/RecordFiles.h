// SPDX-License-Identifier: Apache-2.0
/// The files that a record names: circuits, S-parameters, IBIS.
#pragma once

#include "core/ZovLibrary.h"

#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>

namespace zov {

struct SRecordFile
{
    std::string property; ///< such as "CktDef" or "DC_MODEL.SPICE.File"
    std::string name;     ///< as the record has it
    std::string trackFolder;
};

/// Calls `visit` for each file that a record names; a non-empty answer becomes the new name, and
/// with it the track folder goes.
using FFileVisitor = std::function<std::string(const SRecordFile&)>;
void VisitFiles(CZovRcdProps& record, const FFileVisitor& visit);
/// The same for looking only.
void VisitFiles(const CZovRcdProps& record, const std::function<void(const SRecordFile&)>& visit);

/// Rewrites relative names when records move to a library in another folder, so that they still
/// lead to the same files. Names that lead to no file, and absolute ones, stay.
class CFileRebaser
{
public:
    CFileRebaser(std::filesystem::path from, std::filesystem::path to);
    void Rebase(CZovRcdProps& record);
    /// Names rewritten so far.
    [[nodiscard]] std::size_t Count() const { return m_count; }

private:
    std::string NewName(const SRecordFile& file);

    std::filesystem::path m_from;
    std::filesystem::path m_to;
    bool m_sameFolder;
    std::size_t m_count = 0;
    std::unordered_map<std::string, std::string> m_known; ///< many records name the same file
};

/// Folder that a library's relative names start from.
[[nodiscard]] std::filesystem::path FolderOf(const std::string& libraryFile);

} // namespace zov
