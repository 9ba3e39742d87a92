// SPDX-License-Identifier: Apache-2.0
// Which reader a file belongs to. A backend that asks a spreadsheet program instead (the COM route
// of another platform) would be one more row of the choice below.
#include "base/Text.h"
#include "sheet/WorkbookSource.h"

#include <algorithm>

namespace zov {
namespace {

using sheet::CSourcePtr;
using sheet::SSource;

constexpr std::size_t kHeadBytes = 4096;

bool IsSeparatedText(const std::string& name)
{
    const std::string extension = ExtensionOf(TextPath(name));
    return EqualsNoCase(extension, ".csv") || EqualsNoCase(extension, ".tsv") ||
           EqualsNoCase(extension, ".txt");
}

bool IsBinary(std::string_view head)
{
    return std::any_of(head.begin(), head.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && !IsSpace(c) && c != '\x1A';
    });
}

bool HasNoCase(std::string_view text, std::string_view part)
{
    for (std::size_t i = 0; i + part.size() <= text.size(); ++i) {
        if (ToLower(text[i]) == part[0] && StartsWithNoCase(text.substr(i), part)) {
            return true;
        }
    }
    return false;
}

// What the file is instead of a workbook; empty for plain text.
std::string_view ForeignText(std::string_view head)
{
    if (head.starts_with("\xEF\xBB\xBF")) {
        head.remove_prefix(3);
    }
    head = Trim(head);
    if (HasNoCase(head, "urn:schemas-microsoft-com:office:spreadsheet") &&
        !StartsWithNoCase(head, "<html")) {
        return "an XML spreadsheet of 2003";
    }
    if (StartsWithNoCase(head, "<!doctype html") || StartsWithNoCase(head, "<html") ||
        StartsWithNoCase(head, "<table") || StartsWithNoCase(head, "<head") ||
        StartsWithNoCase(head, "<meta") || (head.starts_with('<') && HasNoCase(head, "<html"))) {
        return "a web page (HTML)";
    }
    if (StartsWithNoCase(head, "MIME-Version:")) {
        return "a web archive (MHTML)";
    }
    if (HasNoCase(head, "<office:document")) {
        return "an OpenDocument file";
    }
    if (StartsWithNoCase(head, "<?xml")) {
        return "an XML document";
    }
    return head.starts_with("ID;P") ? "a SYLK file" : std::string_view{};
}

SError Refuse(const SSource& source, std::string_view kind)
{
    return source.Failure(EErr::Unsupported,
                          "the file is " + std::string(kind) + " named " +
                              ExtensionOf(TextPath(source.name)) +
                              "; open it in a spreadsheet program and save it as .xlsx");
}

CResult<std::unique_ptr<CWorkbook>> OpenText(const CSourcePtr& source)
{
    const std::string_view head = source->Bytes().substr(0, kHeadBytes);
    if (const std::string_view kind = ForeignText(head); !kind.empty()) {
        return Refuse(*source, kind);
    }
    if (IsSeparatedText(source->name)) {
        return sheet::OpenCsv(source);
    }
    const bool utf16 = head.starts_with("\xFF\xFE") || head.starts_with("\xFE\xFF");
    if (!utf16 && IsBinary(head)) {
        return source->Failure(EErr::Format, "the file is neither a workbook nor a text table");
    }
    return source->Failure(EErr::Unsupported,
                           "the file is plain text named " + ExtensionOf(TextPath(source->name)) +
                               "; if it is a table with separators, name it .csv");
}

CResult<std::unique_ptr<CWorkbook>> OpenSource(const CSourcePtr& source)
{
    struct SSignature
    {
        std::string_view bytes;
        CResult<std::unique_ptr<CWorkbook>> (*open)(CSourcePtr);
    };
    using namespace std::string_view_literals;
    static constexpr SSignature kSignatures[] = {
        {"PK\x03\x04"sv, sheet::OpenXlsx},
        {"PK\x05\x06"sv, sheet::OpenXlsx},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, sheet::OpenXls},
        {"\x09\x08\x10\x00\x00\x06"sv, sheet::OpenXls}, // record streams without a container
        {"\x09\x08\x08\x00\x00\x05"sv, sheet::OpenXls},
        {"\x09\x04\x06\x00"sv, sheet::OpenXls},
        {"\x09\x02\x06\x00"sv, sheet::OpenXls},
        {"\x09\x00\x04\x00"sv, sheet::OpenXls},
    };
    const std::string_view bytes = source->Bytes();
    if (bytes.empty()) {
        return source->Failure(EErr::Format, "the file is empty");
    }
    for (const SSignature& signature : kSignatures) {
        if (bytes.starts_with(signature.bytes)) {
            return signature.open(source);
        }
    }
    return OpenText(source);
}

} // namespace

CResult<std::unique_ptr<CWorkbook>> OpenWorkbook(const std::filesystem::path& path,
                                                 const SOpenOptions& options)
{
    auto source = std::make_shared<SSource>();
    ASSIGN_OR_RETURN(source->file, CFileView::Open(path));
    source->name = PathText(path);
    source->options = options;
    return OpenSource(source);
}

CResult<std::unique_ptr<CWorkbook>> OpenWorkbookBytes(std::string bytes, std::string_view name,
                                                      const SOpenOptions& options)
{
    auto source = std::make_shared<SSource>();
    source->owned = std::move(bytes);
    source->name = name;
    source->options = options;
    return OpenSource(source);
}

} // namespace zov
