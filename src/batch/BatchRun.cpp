// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchRun.h"

#include "base/File.h"
#include "base/Text.h"
#include "batch/ImportJob.h"
#include "batch/Messages.h"

#include <algorithm>
#include <array>

namespace zov::batch {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 2> kSourceExtensions = {".xls", ".xlsx"};
constexpr std::array<std::string_view, 2> kDestinationExtensions = {".zov", ".zovx"};
constexpr std::string_view kAppend = "Append";

constexpr unsigned kCap = 1;
constexpr unsigned kInd = 2;
constexpr unsigned kRes = 4;

/// Options that name a unit, in the order in which they are tested.
struct SUnitOption
{
    std::string SBatchOptions::*value;
    EField field;
    unsigned types; ///< component types for which it is looked at
    std::string_view message;
};
constexpr std::array<SUnitOption, 7> kUnitOptions = {{
    {&SBatchOptions::rUnit, EField::Resistance, kCap | kInd | kRes, msg::kBadRUnit},
    {&SBatchOptions::lUnit, EField::Inductance, kCap | kInd, msg::kBadLUnit},
    {&SBatchOptions::cUnit, EField::Cact, kCap, msg::kBadCUnit},
    {&SBatchOptions::cnomUnit, EField::Cnom, kCap, msg::kBadCUnit},
    {&SBatchOptions::maxCurrentUnit, EField::MaxCurrent, kInd | kRes, msg::kBadCurrentUnit},
    {&SBatchOptions::unitOfSize, EField::SizeUnit, kCap, msg::kBadSizeUnit},
    {&SBatchOptions::externalNodeAssignment, EField::NodeAssignment, kInd | kRes, msg::kBadNode},
}};

template <std::size_t N>
bool HasExtension(std::string_view path, const std::array<std::string_view, N>& extensions)
{
    return std::any_of(extensions.begin(), extensions.end(),
                       [&](std::string_view extension) { return EndsWithNoCase(path, extension); });
}

class CBatchRun
{
public:
    CBatchRun(const SBatchOptions& options, CLogSink& log)
        : m_options(options)
        , m_log(log)
    {
    }

    bool Run()
    {
        for (const std::string& argument : m_options.unsupported) {
            m_log.Write(Text(msg::kUnsupported, argument));
        }
        m_log.Write(Text(msg::kCommandLine, m_options.commandLine));
        return CheckFiles() && CheckUnits() && CheckType() && OpenSheet() && ReadPolicies() &&
               PrepareDestination() && Generate() && Save();
    }

private:
    bool Failed(std::string_view text)
    {
        m_log.Write(text);
        return false;
    }

    bool CheckFiles()
    {
        if (m_options.sourceFile.empty()) {
            return Failed(msg::kNoSource);
        }
        if (m_options.headerRow < 1) {
            return Failed(msg::kHeaderRow);
        }
        if (!HasExtension(m_options.sourceFile, kSourceExtensions)) {
            return Failed(msg::kSourceExt);
        }
        return HasExtension(m_options.destinationLibrary, kDestinationExtensions) ||
               Failed(msg::kDestinationExt);
    }

    bool CheckUnits()
    {
        const auto type = FindComponentType(m_options.componentType);
        if (!type) {
            return true; // told by the next step
        }
        const unsigned bit = *type == ERecordType::Capacitor  ? kCap
                             : *type == ERecordType::Inductor ? kInd
                                                              : kRes;
        for (const SUnitOption& option : kUnitOptions) {
            const std::string& value = m_options.*option.value;
            if ((option.types & bit) == 0 || value.empty()) {
                continue;
            }
            const auto unit = FindListedUnit(option.field, value);
            if (!unit) {
                return Failed(Text(option.message, value));
            }
            m_generate.mapping.units[option.field] = *unit;
        }
        const auto system = FindSizeSystem(m_options.unitOfSize);
        const auto node = FindNodeAssignment(m_options.externalNodeAssignment);
        m_generate.sizeSystem = system.value_or(ESizeSystem::FromFile);
        m_generate.node = node.value_or(ENodeAssignment::Series);
        return true;
    }

    bool CheckType()
    {
        const auto type = FindComponentType(m_options.componentType);
        if (!type) {
            return Failed(std::string(msg::kUnknownType) + m_options.componentType);
        }
        m_generate.mapping.type = *type;
        return true;
    }

    bool OpenSheet()
    {
        m_log.Write(Text(msg::kBeginFile, m_options.sourceFile));
        m_generate.source = TextPath(m_options.sourceFile);
        auto book = OpenSource(m_generate.source, m_log);
        if (!book) {
            return false;
        }
        m_book = book.Take();
        if (m_options.workSheet.empty()) {
            return Failed(msg::kNoWorksheet);
        }
        return SelectSource(*m_book, m_options.workSheet, m_log).Ok();
    }

    bool ReadPolicies()
    {
        if (!ReadPolicy(m_options.optionFromDupPartNumber, m_generate.sheetDuplicate)) {
            return Failed(Text(msg::kFromPolicy, m_options.optionFromDupPartNumber));
        }
        return ReadPolicy(m_options.optionAppendDupPartNumber, m_generate.libraryDuplicate) ||
               Failed(Text(msg::kAppendPolicy, m_options.optionAppendDupPartNumber));
    }

    /// The old library goes when the new one takes its place; here it is shown that it can.
    bool PrepareDestination()
    {
        m_generate.destination = TextPath(m_options.destinationLibrary);
        m_library.SetPath(m_generate.destination);
        std::error_code ignored;
        if (!fs::exists(m_generate.destination, ignored)) {
            return true;
        }
        if (EqualsNoCase(m_options.libFileModify, kAppend)) {
            auto library = LoadDestination(m_generate.destination, m_log);
            if (library) {
                m_library = library.Take();
            }
            return library.Ok();
        }
        const bool removable = fs::is_regular_file(m_generate.destination, ignored) &&
                               CAtomicFile::Create(m_generate.destination).Ok();
        m_log.Write(
            Text(removable ? msg::kDeleted : msg::kDeleteFailed, m_options.destinationLibrary));
        return removable;
    }

    bool Generate()
    {
        if (!m_options.columnMapping.empty()) {
            auto mapping = ReadColumnMapping(TextPath(m_options.columnMapping), m_log);
            if (!mapping) {
                return false;
            }
            m_generate.mapping.mapping = mapping.Take();
        }
        m_generate.vendorLibrary = TextPath(m_options.vendorLibrary);
        m_generate.headerRow = static_cast<std::uint32_t>(m_options.headerRow);
        return GenerateModels(*m_book, m_generate, m_library, m_log, nullptr).Ok();
    }

    bool Save()
    {
        if (!SaveDestination(m_library, m_generate.destination, m_log)) {
            return Failed(msg::kFailed);
        }
        m_log.Write(Text(msg::kSuccess, m_options.destinationLibrary));
        return true;
    }

    const SBatchOptions& m_options;
    CLogSink& m_log;
    SGenerateOptions m_generate;
    std::unique_ptr<CWorkbook> m_book;
    CZovLibrary m_library;
};

} // namespace

bool BatchZvLibGen(const SBatchOptions& options, CLogSink& log)
{
    return options.batch && CBatchRun(options, log).Run();
}

} // namespace zov::batch
