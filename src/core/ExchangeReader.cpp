// SPDX-License-Identifier: Apache-2.0
#include "core/ExchangeReader.h"

#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"

#include <array>

namespace zov {

namespace exchange {

bool SameName(std::string_view a, std::string_view b)
{
    return a == b || EqualsNoCase(a, b);
}

// --- CFlatElement, CContext ----------------------------------------------------------------------

namespace {

constexpr std::array<std::string_view, 1> kThroughNames = {"NotThrough"};
constexpr std::array<std::string_view, 4> kThroughInfoNames = {"Pin1", "Pin2", "Inductance",
                                                               "Resistance"};

std::vector<std::string_view> NamesOfFields(std::span<const SField> fields)
{
    std::vector<std::string_view> names;
    for (const SField& field : fields) {
        names.push_back(field.name);
    }
    return names;
}

CToleranceLog::TWrite ToleranceWriter(const SImportOptions& options, CLogSink& log)
{
    return [&options, &log](std::size_t line, std::string_view what) {
        log.Write(fmt::format(fmt::runtime(TextOf(EImportMsg::Tolerated)), PathText(options.shown),
                              line, what));
    };
}

} // namespace

CFlatElement::CFlatElement(std::span<const SField> fields)
    : values(NamesOfFields(fields))
    , m_fields(fields)
{
    for (const SField& field : fields) {
        numbers.emplace_back(field.quantity);
    }
}

CContext::CContext(CZovLibrary& library, std::string_view text, const SImportOptions& options,
                   CLogSink& log)
    : m_options(options)
    , m_log(log)
    , m_tolerance(ToleranceWriter(options, log))
    , scanner(text, m_tolerance)
    , builder(library.Store())
    , locator(options.folder, options.locateFiles)
    , through(kThroughNames)
    , throughInfo(kThroughInfoNames)
{
}

void CContext::SayUnreadable(std::string_view what, std::string_view attribute,
                             std::string_view value)
{
    Say(EImportMsg::Unreadable, name, what, attribute, value);
}

std::uint32_t CContext::SetFields(CFlatElement& element, std::uint32_t wanted)
{
    std::uint32_t unreadable = 0;
    for (std::uint32_t rest = element.values.Present() & wanted; rest != 0; rest &= rest - 1) {
        const auto i = static_cast<std::size_t>(std::countr_zero(rest));
        const SField& field = element.Fields()[i];
        const std::string_view text = element.values[i];
        if (field.kind != EPropKind::Double) {
            builder.SetText(field.id, text);
        } else if (!text.empty()) {
            if (const auto value = element.numbers[i].Read(text)) {
                builder.SetDouble(field.id, *value);
            } else {
                unreadable |= 1U << i;
            }
        }
    }
    return unreadable;
}

std::optional<double> CContext::Quantity(const CAttributeTable& values, std::size_t index,
                                         std::string_view attribute, EQuantity quantity,
                                         std::string_view what)
{
    const std::string_view text = values[index];
    if (Trim(text).empty()) {
        return std::nullopt;
    }
    const auto value = ParseQuantity(text, quantity);
    if (!value) {
        m_unreadable = true;
        SayUnreadable(what, attribute, text);
    }
    return value;
}

std::vector<std::string> NamesOf(std::string_view text)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t start = i;
        while (i < text.size() && !IsSpace(text[i])) {
            ++i;
        }
        if (i != start) {
            names.emplace_back(text.substr(start, i - start));
        }
        i += i < text.size() ? 1 : 0;
    }
    return names;
}

// --- the document --------------------------------------------------------------------------------

namespace {

enum class ERoot
{
    Exchange,
    Decap,
    Other ///< not importable; the reason stands in the error
};

struct SRoot
{
    ERoot kind = ERoot::Other;
    SError error;
};

/// Comes to the root and reads its attributes.
SRoot ReadRoot(CExchangeScanner& scanner, bool allowDecapRoot)
{
    static constexpr std::array<std::string_view, 1> kVersion = {"Version"};
    SRoot root;
    CAttributeTable values(kVersion);
    switch (scanner.Next()) {
    case CExchangeScanner::EToken::Open:
        break;
    case CExchangeScanner::EToken::End:
        root.error = Fail(EErr::Format, "the file has no root element");
        return root;
    default:
        root.error = scanner.Error();
        return root;
    }
    const std::string_view name = scanner.Name();
    if (!scanner.ReadAttributes(values)) {
        root.error = scanner.Error();
        return root;
    }
    const SSourcePos pos{{}, scanner.Line(), 0};
    if (SameName(name, "ZOV_Lib")) {
        const auto version = ParseDouble(values[0]);
        if (version && *version >= 0.0) {
            root.kind = ERoot::Exchange;
        } else {
            root.error = FailAt(EErr::Format, pos,
                                fmt::format("'Version' of ZOV_Lib is '{}', expected a number that "
                                            "is not negative",
                                            values[0]));
        }
        return root;
    }
    if (SameName(name, "DecapLib") || SameName(name, "PopDecapLib")) {
        if (allowDecapRoot) {
            root.kind = ERoot::Decap;
            return root;
        }
        root.error = FailAt(EErr::Format, pos, "a decap list is read from a .xml file only");
        return root;
    }
    root.error = FailAt(EErr::Format, pos,
                        fmt::format("the root element is '{}', expected 'ZOV_Lib'",
                                    ToValidUtf8(name.substr(0, 40))));
    return root;
}

class CDocumentReader
{
public:
    explicit CDocumentReader(CContext& context)
        : m_context(context)
        , m_discretes(context)
        , m_records(context)
    {
    }

    /// Children of the root, up to its end.
    bool ReadGroups()
    {
        return m_context.Children([this](std::string_view group) {
            if (SameName(group, "Discretes") || SameName(group, "Discrete")) {
                return m_context.scanner.ReadAttributes(m_none) &&
                       m_context.Children([this](std::string_view inner) {
                           return ReadGroup(inner, EKind::Discrete);
                       });
            }
            return ReadGroup(group, EKind::Other);
        });
    }

private:
    enum class EKind
    {
        Discrete,
        Other
    };

    bool ReadGroup(std::string_view group, EKind kind)
    {
        for (const SRecordTypeInfo& info : RecordTypes()) {
            if (IsDiscrete(info.type) == (kind == EKind::Discrete) && SameName(group, info.group)) {
                return m_context.scanner.ReadAttributes(m_none) &&
                       m_context.Children([&](std::string_view element) {
                           return SameName(element, info.element) ? ReadRecord(info.type)
                                                                  : m_context.scanner.Skip();
                       });
            }
        }
        return m_context.scanner.Skip();
    }

    bool ReadRecord(ERecordType type)
    {
        switch (type) {
        case ERecordType::Capacitor:
            return m_discretes.ReadCapacitor();
        case ERecordType::Inductor:
            return m_discretes.ReadInductor();
        case ERecordType::Resistor:
            return m_discretes.ReadResistor();
        case ERecordType::Ic:
            return m_records.ReadIc();
        case ERecordType::Vrm:
            return m_records.ReadVrmRecord();
        case ERecordType::Connector:
        case ERecordType::Package:
        case ERecordType::Spice:
        case ERecordType::Any:
            break;
        }
        return m_records.ReadCircuit(type);
    }

    CContext& m_context;
    CAttributeTable m_none;
    CDiscreteReader m_discretes;
    CRecordReader m_records;
};

/// The text as UTF-8: itself, or converted from UTF-16 when its byte-order mark says so.
std::string_view AsUtf8(std::string_view text, std::string& converted)
{
    const bool little = text.starts_with("\xFF\xFE");
    if (!little && !text.starts_with("\xFE\xFF")) {
        return text;
    }
    std::u16string units((text.size() - 2) / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto first = static_cast<unsigned char>(text[2 + 2 * i]);
        const auto second = static_cast<unsigned char>(text[3 + 2 * i]);
        units[i] = static_cast<char16_t>(little ? first | second << 8U : second | first << 8U);
    }
    converted = Utf16ToUtf8(units);
    return converted;
}

SError WholeFileFailure(const SError& reason, std::string text)
{
    SError error = FailAt(reason.code, reason.pos, std::move(text));
    std::string place;
    if (reason.pos.line != 0) {
        place = fmt::format("line {}", reason.pos.line);
        place += reason.pos.column != 0 ? fmt::format(", column {}: ", reason.pos.column) : ": ";
    }
    error.notes.push_back(place + reason.text);
    return error;
}

SError NotImportable(const SImportOptions& options, const SError& reason)
{
    return WholeFileFailure(
        reason, fmt::format("Cannot load the zovx file '{}' to ZOV because the format of the file "
                            "is invalid. Ensure that the format of the zovx file is correct and "
                            "try again.",
                            PathText(options.shown)));
}

/// Of a text whose root is ours, but which could not be read to its end.
SError CannotRead(const SImportOptions& options, const SError& reason)
{
    if (reason.code == EErr::Format) { // no XML
        return NotImportable(options, reason);
    }
    return WholeFileFailure(reason, fmt::format("Cannot import models from '{}'. Ensure that the "
                                                "selected file is correct and try again.",
                                                PathText(options.shown)));
}

/// True when the text has a root of ours and reads as XML to its end, or to where the reader gives
/// up on what XML allows.
bool IsImportableText(std::string_view text, bool allowDecapRoot)
{
    CToleranceLog tolerance;
    CExchangeScanner scanner(text, tolerance);
    if (ReadRoot(scanner, allowDecapRoot).kind == ERoot::Other) {
        return false;
    }
    const bool content = !scanner.HasContent() || scanner.SkipRest();
    const auto last = content ? scanner.Next() : CExchangeScanner::EToken::Bad;
    return last == CExchangeScanner::EToken::End ||
           (last == CExchangeScanner::EToken::Bad && scanner.Error().code != EErr::Format);
}

} // namespace

} // namespace exchange

// --- entry points --------------------------------------------------------------------------------

CResult<std::size_t> ImportExchangeText(CZovLibrary& library, std::string_view text,
                                        const SImportOptions& options, CLogSink& log)
{
    using namespace exchange;
    std::string converted;
    CContext context(library, AsUtf8(text, converted), options, log);
    const SRoot root = ReadRoot(context.scanner, options.allowDecapRoot);
    if (root.kind == ERoot::Other) {
        return NotImportable(options, root.error);
    }
    const bool read =
        root.kind == ERoot::Decap ? ReadDecapList(context) : CDocumentReader(context).ReadGroups();
    if (context.IsCancelled()) {
        return Fail(EErr::Cancelled, "cancelled");
    }
    if (!read) {
        return CannotRead(options, context.scanner.Error());
    }
    switch (context.scanner.Next()) {
    case CExchangeScanner::EToken::End:
        break;
    case CExchangeScanner::EToken::Bad:
        return CannotRead(options, context.scanner.Error());
    default:
        return CannotRead(options, FailAt(EErr::Format, {{}, context.scanner.Line(), 1},
                                          "a second root element"));
    }
    library.Reserve(library.Count() + context.Pending().size());
    for (CZovRcdProps* record : context.Pending()) {
        library.Append(record);
    }
    const std::string shown = PathText(options.shown);
    if (const std::size_t untold = context.Tolerance().Untold(); untold != 0) {
        context.Say(EImportMsg::ToleratedMore, shown, untold);
    }
    context.Say(EImportMsg::Imported, shown, context.Pending().size());
    return context.Pending().size();
}

CResult<std::size_t> ImportLibrary(CZovLibrary& library, const std::filesystem::path& path,
                                   CLogSink& log, const FLibraryProgress& progress)
{
    const ELibraryForm form = FormOf(path);
    SImportOptions options;
    options.progress = progress;
    options.folder = path.parent_path();
    options.shown = path;
    options.allowDecapRoot = form == ELibraryForm::Xml;
    if (form != ELibraryForm::Xml && form != ELibraryForm::Exchange) {
        return exchange::NotImportable(
            options, Fail(EErr::Unsupported, "the extension is neither .zovx nor .xml"));
    }
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        return exchange::NotImportable(options, view.Error());
    }
    return ImportExchangeText(library, view->Bytes(), options, log);
}

bool IsImportable(const std::filesystem::path& path)
{
    const ELibraryForm form = FormOf(path);
    if (form != ELibraryForm::Xml && form != ELibraryForm::Exchange) {
        return false;
    }
    const CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        return false;
    }
    std::string converted;
    return exchange::IsImportableText(exchange::AsUtf8(view->Bytes(), converted),
                                      form == ELibraryForm::Xml);
}

} // namespace zov
