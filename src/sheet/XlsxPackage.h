// SPDX-License-Identifier: Apache-2.0
/// The zip container of an .xlsx workbook: its parts by name, and the relations between them.
#pragma once

#include "sheet/WorkbookSource.h"
#include "sheet/XmlScanner.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct zip;
struct zip_file;

namespace zov::sheet {

/// A part while it is unpacked. Guards against parts that unpack to far more than their size in the
/// file.
class CXlsxPart final : public CByteSource
{
public:
    CXlsxPart(zip_file* file, std::string name, std::uint64_t packedBytes, std::uint64_t limit);
    CXlsxPart(const CXlsxPart&) = delete;
    CXlsxPart& operator=(const CXlsxPart&) = delete;
    ~CXlsxPart() override;

    /// Errors: Format: damaged data. Limit.
    CResult<std::size_t> Read(char* buffer, std::size_t size) override;

private:
    zip_file* m_file;
    std::string m_name;
    std::uint64_t m_packedBytes;
    std::uint64_t m_limit;
    std::uint64_t m_unpacked = 0;
};

struct SRelation
{
    std::string id;
    std::string type;   ///< the last word of the type's address: "worksheet", "styles"
    std::string target; ///< name of the part
};

class CXlsxPackage
{
public:
    /// Errors: Format: not a complete zip file.
    static CResult<std::unique_ptr<CXlsxPackage>> Open(CSourcePtr source);
    CXlsxPackage(const CXlsxPackage&) = delete;
    CXlsxPackage& operator=(const CXlsxPackage&) = delete;
    ~CXlsxPackage();

    /// Part names are compared without regard to case, leading slash and direction of slashes.
    [[nodiscard]] bool Has(std::string_view name) const;
    /// A large part is unpacked ahead by a thread; only one part may be open at a time.
    /// Errors: NotFound; Unsupported: encrypted or packed in a way that is not read. The text names
    /// the part.
    CResult<std::unique_ptr<CByteSource>> OpenPart(std::string_view name);
    /// A small part as a whole.
    CResult<std::string> ReadPart(std::string_view name);
    /// Relations of a part, or of the whole package for an empty name; none when it has none.
    CResult<std::vector<SRelation>> Relations(std::string_view name);

private:
    CXlsxPackage(CSourcePtr source, zip* archive);

    CSourcePtr m_source;
    zip* m_zip;
    std::unordered_map<std::string, std::uint64_t> m_parts; ///< by normalised name
};

/// Calls `start` for every start tag of a small XML text, with local names; attributes come as
/// name, value, name, value, ... with local names. Errors: Format with line and column; a document
/// type is refused.
CResult<void> ForEachElement(
    std::string_view xml,
    const std::function<void(std::string_view name, const std::vector<std::string_view>& attributes,
                             std::size_t depth)>& start,
    const std::function<void(std::string_view name)>& end = {});

/// Value of one attribute of ForEachElement.
[[nodiscard]] std::string_view AttributeOf(const std::vector<std::string_view>& attributes,
                                           std::string_view name);

/// "XL\Worksheets/../sheet1.xml" -> "xl/sheet1.xml".
[[nodiscard]] std::string NormalPartName(std::string_view name);

} // namespace zov::sheet
