// SPDX-License-Identifier: Apache-2.0
// Workbooks of every kind: the first byte chooses the name the bytes come under. Zip containers
// stay mostly closed to mutation, so one choice feeds the bytes as the sheet of a workbook that is
// sound otherwise.
#include "sheet/NumberFormat.h"
#include "sheet/RowBuilder.h"
#include "sheet/Workbook.h"
#include "sheet/XlsxParts.h"
#include "sheet/XlsxSheet.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace zov;

class CMemorySource final : public sheet::CByteSource
{
public:
    explicit CMemorySource(std::string_view bytes)
        : m_bytes(bytes)
    {
    }
    CResult<std::size_t> Read(char* buffer, std::size_t size) override
    {
        const std::size_t count = std::min(size, m_bytes.size());
        std::memcpy(buffer, m_bytes.data(), count);
        m_bytes.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_bytes;
};

void ReadBook(std::string_view bytes, std::string_view name)
{
    auto book = OpenWorkbookBytes(std::string(bytes), name, {EText::Exact});
    if (!book.Ok()) {
        return;
    }
    for (std::size_t i = 0; i < std::min<std::size_t>((*book)->Sheets().size(), 4); ++i) {
        static_cast<void>((*book)->SelectSheet(i));
        static_cast<void>(CSheetTable::Read(**book, 5000));
    }
}

void ReadSheetPart(std::string_view bytes)
{
    CMemorySource source(bytes);
    const sheet::CXlsxStyles styles;
    const sheet::CXlsxStrings strings;
    sheet::CXlsxSheetReader reader(source, styles, strings, {});
    static_cast<void>(reader.Run([](const SSheetRow&) { return EVisit::Continue; }));
}

void ShowNumber(std::string_view bytes)
{
    double value = 0;
    if (bytes.size() < sizeof value) {
        return;
    }
    std::memcpy(&value, bytes.data(), sizeof value);
    const auto format = sheet::CNumberFormat::Parse(bytes.substr(sizeof value));
    for (EText mode : {EText::Shown, EText::Exact}) {
        std::string text;
        format.AppendNumber(text, value, {mode, false});
        format.AppendText(text, "x", {mode, false});
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 5) {
    case 0:
        ReadBook(bytes, "a.xlsx");
        break;
    case 1:
        ReadBook(bytes, "a.xls");
        break;
    case 2:
        ReadBook(bytes, "a.csv");
        break;
    case 3:
        ReadSheetPart(bytes);
        break;
    default:
        ShowNumber(bytes);
        break;
    }
    return 0;
}
