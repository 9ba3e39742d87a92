// SPDX-License-Identifier: Apache-2.0
/// Makers' decap libraries, from which capacitor rows take what they lack.
#pragma once

#include "base/Result.h"
#include "base/Sink.h"
#include "core/ZovLibrary.h"

#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zov::batch {

class CVendorLibrary
{
public:
    struct SPart
    {
        const CZovRcdProps* record;
        const std::filesystem::path* folder; ///< of the file that the record comes from
    };

    /// @param path  a folder with a list named Manufacturer_Decap_Library.txt, such a list (.txt:
    ///              one decap library a line, relative to the list's folder; blank lines and lines
    ///              that begin with "#" are passed over), or one decap library (.xml)
    /// A file that does not load is told to `log`, with the reason. Errors: none of them loads.
    static CResult<CVendorLibrary> Load(const std::filesystem::path& path, CLogSink& log);

    /// By maker and the maker's part number, without regard to case and to white space at the ends.
    [[nodiscard]] const SPart* Find(std::string_view manufacturer,
                                    std::string_view partNumber) const;
    [[nodiscard]] std::size_t PartCount() const { return m_parts.size(); }

private:
    struct SFile
    {
        CZovLibrary library;
        std::filesystem::path folder;
    };
    bool AddFile(const std::filesystem::path& path, CLogSink& log);
    void AddList(const std::filesystem::path& list, CLogSink& log);

    std::deque<SFile> m_files;
    std::unordered_map<std::string, SPart> m_parts;
};

} // namespace zov::batch
