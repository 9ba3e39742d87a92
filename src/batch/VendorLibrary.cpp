// SPDX-License-Identifier: Apache-2.0
#include "batch/VendorLibrary.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/Messages.h"
#include "core/LibraryFiles.h"

namespace zov::batch {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kListLimit = std::uint64_t{16} << 20U; ///< bytes

std::string KeyOf(std::string_view manufacturer, std::string_view partNumber)
{
    return UpperCase(TrimCell(manufacturer)) + '\n' + UpperCase(TrimCell(partNumber));
}

void TellFailure(const fs::path& path, const SError& error, CLogSink& log)
{
    log.Write(Text(msg::kVendorLoad, PathText(path)));
    log.Write("    " + error.Full());
    for (const std::string& note : error.notes) {
        log.Write("    " + note);
    }
}

} // namespace

CResult<CVendorLibrary> CVendorLibrary::Load(const fs::path& path, CLogSink& log)
{
    CVendorLibrary vendor;
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
        vendor.AddList(TextPath(Text(msg::kVendorList, PathText(path))), log);
    } else if (EqualsNoCase(ExtensionOf(path), ".txt")) {
        vendor.AddList(path, log);
    } else {
        vendor.AddFile(path, log);
    }
    if (vendor.m_files.empty()) {
        return Fail(EErr::NotFound,
                    "vendor library '" + PathText(path) + "' gives no decap library that loads");
    }
    return vendor;
}

bool CVendorLibrary::AddFile(const fs::path& path, CLogSink& log)
{
    SFile& file = m_files.emplace_back();
    const auto imported = ImportLibrary(file.library, path, log);
    if (!imported) {
        m_files.pop_back();
        TellFailure(path, imported.Error(), log);
        return false;
    }
    file.folder = path.parent_path();
    for (const CZovRcdProps* record : file.library.Records()) {
        if (record->Type() != ERecordType::Capacitor) {
            continue;
        }
        const std::string_view maker = record->GetString(EPropId::Manuf);
        const std::string_view number = record->GetString(EPropId::MfgPartNumber);
        // The first file that has a part gives it; a part is known by both of its numbers.
        if (!number.empty()) {
            m_parts.try_emplace(KeyOf(maker, number), SPart{record, &file.folder});
        }
        m_parts.try_emplace(KeyOf(maker, record->Name()), SPart{record, &file.folder});
    }
    return true;
}

void CVendorLibrary::AddList(const fs::path& list, CLogSink& log)
{
    auto bytes = ReadWholeFile(list, kListLimit);
    if (!bytes) {
        TellFailure(list, bytes.Error(), log);
        return;
    }
    std::string text = ToValidUtf8(*bytes);
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.erase(0, 3);
    }
    for (const std::string_view raw : Split(text, '\n')) {
        const std::string_view line = TrimCell(raw);
        if (!line.empty() && !line.starts_with('#')) {
            AddFile(list.parent_path() / TextPath(ReplaceAll(line, "\\", "/")), log);
        }
    }
}

const CVendorLibrary::SPart* CVendorLibrary::Find(std::string_view manufacturer,
                                                  std::string_view partNumber) const
{
    const auto found = m_parts.find(KeyOf(manufacturer, partNumber));
    return found == m_parts.end() ? nullptr : &found->second;
}

} // namespace zov::batch
