// SPDX-License-Identifier: Apache-2.0
#include "cli/Reporting.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/LibraryFiles.h"

namespace zov::cli {

const char* const kUnitsHelp =
    "Units that numbers are shown in, such as R=Ohm,C=pF; quantities are R, L, C, V, I, t, f, P "
    "(mOhm, nH, nF, V, A, ns, MHz, W unless given)";

void PrintError(const SStreams& streams, const SError& error)
{
    Print(streams.err, "zov: {}\n", error.Full());
    for (const std::string& note : error.notes) {
        Print(streams.err, "     {}\n", note);
    }
}

void PrintJson(const SStreams& streams, const TJson& document)
{
    streams.out.Write(document.dump(2, ' ', false, TJson::error_handler_t::replace));
    streams.out.Write("\n");
}

void CStreamLog::Write(std::string_view text)
{
    m_errors += StartsWithNoCase(text, "[Error]") ? 1U : 0U;
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    Print(m_streams.err, "{}\n", text);
}

std::optional<SLoaded> Load(const std::string& path, const SStreams& streams,
                            bool (*isHidden)(std::string_view))
{
    // How many records an exchange file gave is this program's to tell, on standard output.
    CStreamLog shown(streams);
    CFunctionLog log([&](std::string_view text) {
        if (!text.starts_with('\'') && (isHidden == nullptr || !isHidden(text))) {
            shown.Write(text);
        }
    });
    CResult<CZovLibrary> library = LoadLibrary(TextPath(path), {}, log);
    if (!library) {
        PrintError(streams, library.Error());
        return std::nullopt;
    }
    return SLoaded{library.Take(), shown.Errors() != 0};
}

bool Save(const CZovLibrary& library, const std::string& path, const CDisplayUnits& units,
          const SStreams& streams)
{
    CStreamLog log(streams);
    const CResult<void> saved = SaveLibrary(library, TextPath(path), units, log);
    if (!saved) {
        PrintError(streams, saved.Error());
    }
    return saved.Ok();
}

int StatusOf(int status, bool inPart)
{
    return status == kExitGood && inPart ? kExitInPart : status;
}

int ReportEach(const std::vector<std::string>& paths, const char* key, bool json,
               const SStreams& streams, const FReportFile& report)
{
    TJson document = {{"version", kJsonVersion}, {key, TJson::array()}};
    std::size_t failed = 0;
    bool inPart = false;
    for (const std::string& path : paths) {
        const std::optional<bool> whole = report(path, json ? &document[key] : nullptr);
        failed += whole ? 0U : 1U;
        inPart = inPart || !whole.value_or(false);
    }
    if (json) {
        PrintJson(streams, document);
    }
    return failed == paths.size() ? kExitFile : StatusOf(kExitGood, inPart);
}

void PrintRemarks(const SStreams& streams, const CVectorDiag& diag)
{
    for (const SDiag& one : diag.Diags()) {
        const std::string line = one.pos.line == 0 ? "" : ":" + std::to_string(one.pos.line);
        Print(streams.err, "zov: {}{}: warning: {}\n", one.pos.file, line, one.text);
    }
}

std::string Counted(std::size_t count, std::string_view noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::size_t WidthOf(std::string_view text)
{
    std::size_t width = 0;
    for (const char c : text) {
        width += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1U : 0U;
    }
    return width;
}

std::string OneLine(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (byte < 0x20 || byte == 0x7F) {
            out += fmt::format("\\x{:02x}", byte);
        } else {
            out += c;
        }
    }
    return out;
}

namespace {

struct SQuantityKey
{
    std::string_view key;
    EQuantity quantity;
};
constexpr std::array<SQuantityKey, 8> kQuantityKeys = {{{"R", EQuantity::Resistance},
                                                        {"L", EQuantity::Inductance},
                                                        {"C", EQuantity::Capacitance},
                                                        {"V", EQuantity::Voltage},
                                                        {"I", EQuantity::Current},
                                                        {"t", EQuantity::Time},
                                                        {"f", EQuantity::Frequency},
                                                        {"P", EQuantity::Power}}};

std::string UnitNames(EQuantity quantity)
{
    std::string names;
    for (const SUnit& unit : UnitsOf(quantity)) {
        names += names.empty() ? "" : ", ";
        names += unit.suffix;
    }
    return names;
}

CResult<void> ReadUnit(std::string_view text, CDisplayUnits& units)
{
    const std::size_t equals = text.find('=');
    const std::string_view key = Trim(text.substr(0, equals));
    for (const SQuantityKey& known : kQuantityKeys) {
        if (equals != std::string_view::npos && EqualsNoCase(known.key, key)) {
            const std::string_view name = Trim(text.substr(equals + 1));
            if (!units.Set(known.quantity, name)) {
                return Fail(EErr::Argument,
                            fmt::format("'{}' is no unit of {}, expected one of {}", name,
                                        known.key, UnitNames(known.quantity)));
            }
            return {};
        }
    }
    return Fail(EErr::Argument,
                fmt::format("'{}' is not understood, expected QUANTITY=UNIT with a quantity out of "
                            "R, L, C, V, I, t, f, P",
                            text));
}

} // namespace

CResult<void> ReadUnits(const std::string& text, CDisplayUnits& units)
{
    for (const std::string_view piece : Split(text, ',')) {
        RETURN_IF_ERROR(ReadUnit(piece, units));
    }
    return {};
}

CResult<ERecordType> ReadRecordType(const std::string& text)
{
    for (const SRecordTypeInfo& info : RecordTypes()) {
        if (EqualsNoCase(text, info.element) || EqualsNoCase(text, info.group) ||
            EqualsNoCase(text, info.name) ||
            (IsDiscrete(info.type) && text.size() >= 3 && StartsWithNoCase(info.element, text))) {
            return info.type;
        }
    }
    std::string names;
    for (const SRecordTypeInfo& info : RecordTypes()) {
        names += names.empty() ? "" : ", ";
        names += info.element;
    }
    return Fail(EErr::Argument,
                fmt::format("'{}' is no record type, expected one of {}", text, names));
}

} // namespace zov::cli
