// SPDX-License-Identifier: Apache-2.0
#include "sheet/XlsxPackage.h"

#include "base/Text.h"
#include "sheet/ReadAhead.h"

#include <algorithm>
#include <charconv>
#include <expat.h>
#include <zip.h>

namespace zov::sheet {
namespace {

// Cells compress well, but a part of more than this that shrank to less than a 300th is no sheet.
constexpr std::uint64_t kHarmlessBytes = std::uint64_t{64} << 20U;
constexpr std::uint64_t kMaxRatio = 300;
constexpr std::uint64_t kMaxPartBytes = std::uint64_t{64} << 30U;
constexpr std::uint64_t kMaxSmallPartBytes = std::uint64_t{256} << 20U;
constexpr std::uint64_t kWorthAThread = std::uint64_t{1} << 19U; // packed bytes, some 10 ms of work
constexpr char kNamespaceEnd = '\x1F';

std::string Quoted(std::string_view name)
{
    return "'" + std::string(name) + "'";
}

std::string PercentDecoded(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(text.data() + i + 1, text.data() + i + 3, value, 16).ptr ==
                text.data() + i + 3) {
            out += static_cast<char>(value);
            i += 2;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string FolderOf(const std::string& part)
{
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? "" : part.substr(0, slash + 1);
}

std::string_view LastWord(std::string_view address)
{
    return address.substr(address.find_last_of("/\\") + 1);
}

} // namespace

std::string NormalPartName(std::string_view name)
{
    std::string unified = LowerCase(name);
    std::replace(unified.begin(), unified.end(), '\\', '/');
    std::vector<std::string_view> folders;
    for (std::string_view piece : Split(unified, '/')) {
        if (piece == ".." && !folders.empty()) {
            folders.pop_back();
        } else if (!piece.empty() && piece != "." && piece != "..") {
            folders.push_back(piece);
        }
    }
    std::string out;
    for (std::string_view folder : folders) {
        out.append(out.empty() ? "" : "/").append(folder);
    }
    return out;
}

CXlsxPart::CXlsxPart(zip_file* file, std::string name, std::uint64_t packedBytes,
                     std::uint64_t limit)
    : m_file(file)
    , m_name(std::move(name))
    , m_packedBytes(packedBytes)
    , m_limit(limit)
{
}

CXlsxPart::~CXlsxPart()
{
    zip_fclose(m_file);
}

CResult<std::size_t> CXlsxPart::Read(char* buffer, std::size_t size)
{
    std::size_t filled = 0;
    while (filled < size) {
        const zip_int64_t got = zip_fread(m_file, buffer + filled, size - filled);
        if (got < 0) {
            return Fail(EErr::Format,
                        "the part " + Quoted(m_name) + " of the workbook is damaged (" +
                            zip_file_strerror(m_file) + "); get the file again or save it anew");
        }
        if (got == 0) {
            break;
        }
        filled += static_cast<std::size_t>(got);
    }
    m_unpacked += filled;
    if (m_unpacked > m_limit ||
        (m_unpacked > kHarmlessBytes && m_unpacked / kMaxRatio > m_packedBytes)) {
        return Fail(EErr::Limit, "the part " + Quoted(m_name) +
                                     " of the workbook unpacks to over " +
                                     std::to_string(m_unpacked >> 20U) +
                                     " MiB, more than its size in the file allows");
    }
    return filled;
}

CXlsxPackage::CXlsxPackage(CSourcePtr source, zip* archive)
    : m_source(std::move(source))
    , m_zip(archive)
{
}

CXlsxPackage::~CXlsxPackage()
{
    zip_discard(m_zip);
}

CResult<std::unique_ptr<CXlsxPackage>> CXlsxPackage::Open(CSourcePtr source)
{
    zip_error_t error;
    zip_error_init(&error);
    const std::string_view bytes = source->Bytes();
    zip_source_t* reader = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    zip_t* archive = reader == nullptr ? nullptr : zip_open_from_source(reader, ZIP_RDONLY, &error);
    if (archive == nullptr) {
        const std::string reason = zip_error_strerror(&error);
        zip_error_fini(&error);
        zip_source_free(reader);
        return source->Failure(EErr::Format,
                               "the workbook's zip container is broken or incomplete (" + reason +
                                   "); get the file again or save it anew");
    }
    zip_error_fini(&error);
    std::unique_ptr<CXlsxPackage> package(new CXlsxPackage(std::move(source), archive));
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        if (const char* name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS)) {
            package->m_parts.emplace(NormalPartName(name), index);
        }
    }
    return package;
}

bool CXlsxPackage::Has(std::string_view name) const
{
    return m_parts.contains(NormalPartName(name));
}

CResult<std::unique_ptr<CByteSource>> CXlsxPackage::OpenPart(std::string_view name)
{
    const auto found = m_parts.find(NormalPartName(name));
    if (found == m_parts.end()) {
        return m_source->Failure(EErr::NotFound, "the workbook has no part " + Quoted(name) +
                                                     " though another part names it");
    }
    zip_stat_t stat;
    zip_stat_init(&stat);
    zip_stat_index(m_zip, found->second, 0, &stat);
    zip_file_t* file = zip_fopen_index(m_zip, found->second, 0);
    if (file == nullptr) {
        const int code = zip_error_code_zip(zip_get_error(m_zip));
        if (code == ZIP_ER_NOPASSWD || code == ZIP_ER_ENCRNOTSUPP) {
            return m_source->Failure(EErr::Unsupported, "the zip container is encrypted; unpack it "
                                                        "with its password first");
        }
        return m_source->Failure(code == ZIP_ER_COMPNOTSUPP ? EErr::Unsupported : EErr::Format,
                                 "the part " + Quoted(name) +
                                     " of the workbook can't be unpacked (" + zip_strerror(m_zip) +
                                     ")");
    }
    const std::uint64_t packed = (stat.valid & ZIP_STAT_COMP_SIZE) != 0 ? stat.comp_size : 0;
    std::unique_ptr<CByteSource> part =
        std::make_unique<CXlsxPart>(file, std::string(name), packed, kMaxPartBytes);
    if (packed >= kWorthAThread) {
        part = std::make_unique<CReadAhead>(std::move(part));
    }
    return part;
}

CResult<std::string> CXlsxPackage::ReadPart(std::string_view name)
{
    constexpr std::size_t kStep = 65536;
    ASSIGN_OR_RETURN(std::unique_ptr<CByteSource> part, OpenPart(name));
    std::string text;
    for (std::size_t used = 0; used <= kMaxSmallPartBytes;) {
        if (text.size() - used < kStep) {
            text.resize(std::max(used + kStep, used * 2));
        }
        CResult<std::size_t> got = part->Read(text.data() + used, text.size() - used);
        if (!got.Ok()) {
            return m_source->Failure(got.Error().code, got.Error().text);
        }
        if (*got == 0) {
            text.resize(used);
            return text;
        }
        used += *got;
    }
    return m_source->Failure(EErr::Limit, "the part " + Quoted(name) +
                                              " of the workbook is larger than 256 MiB");
}

CResult<std::vector<SRelation>> CXlsxPackage::Relations(std::string_view name)
{
    const std::string part = NormalPartName(name);
    const std::string folder = FolderOf(part);
    const std::string file = folder + "_rels/" + part.substr(folder.size()) + ".rels";
    std::vector<SRelation> relations;
    if (!Has(file)) {
        return relations;
    }
    ASSIGN_OR_RETURN(const std::string xml, ReadPart(file));
    CResult<void> read =
        ForEachElement(xml, [&](std::string_view element, const auto& attributes, std::size_t) {
            if (element != "Relationship" ||
                EqualsNoCase(AttributeOf(attributes, "TargetMode"), "External")) {
                return;
            }
            const std::string target = PercentDecoded(AttributeOf(attributes, "Target"));
            const bool absolute = !target.empty() && (target[0] == '/' || target[0] == '\\');
            relations.push_back({std::string(AttributeOf(attributes, "Id")),
                                 std::string(LastWord(AttributeOf(attributes, "Type"))),
                                 NormalPartName(absolute ? target : folder + target)});
        });
    if (!read.Ok()) {
        return m_source->Failure(read.Error().code, file + ": " + read.Error().text);
    }
    return relations;
}

namespace {

struct SElementWalk
{
    const std::function<void(std::string_view, const std::vector<std::string_view>&, std::size_t)>&
        start;
    const std::function<void(std::string_view)>& end;
    XML_Parser parser;
    std::vector<std::string_view> attributes;
    std::size_t depth = 0;
    const char* refusal = nullptr;
};

std::string_view WithoutNamespace(const char* name)
{
    const std::string_view text(name);
    return text.substr(text.rfind(kNamespaceEnd) + 1);
}

void XMLCALL OnStart(void* data, const XML_Char* name, const XML_Char** attributes)
{
    constexpr std::size_t kMaxDepth = 256;
    SElementWalk& walk = *static_cast<SElementWalk*>(data);
    if (++walk.depth > kMaxDepth) {
        walk.refusal = "elements are nested more than 256 deep";
        XML_StopParser(walk.parser, XML_FALSE);
        return;
    }
    walk.attributes.clear();
    for (; *attributes != nullptr; attributes += 2) {
        walk.attributes.push_back(WithoutNamespace(attributes[0]));
        walk.attributes.emplace_back(attributes[1]);
    }
    walk.start(WithoutNamespace(name), walk.attributes, walk.depth);
}

void XMLCALL OnEnd(void* data, const XML_Char* name)
{
    SElementWalk& walk = *static_cast<SElementWalk*>(data);
    --walk.depth;
    if (walk.end) {
        walk.end(WithoutNamespace(name));
    }
}

void XMLCALL OnDocumentType(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int)
{
    SElementWalk& walk = *static_cast<SElementWalk*>(data);
    walk.refusal = "a document type is not allowed in a workbook";
    XML_StopParser(walk.parser, XML_FALSE);
}

} // namespace

CResult<void> ForEachElement(
    std::string_view xml,
    const std::function<void(std::string_view, const std::vector<std::string_view>&, std::size_t)>&
        start,
    const std::function<void(std::string_view)>& end)
{
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS(nullptr, kNamespaceEnd), &XML_ParserFree);
    if (!parser) {
        return Fail(EErr::Limit, "out of memory");
    }
    SElementWalk walk{start, end, parser.get(), {}, 0, nullptr};
    XML_SetUserData(parser.get(), &walk);
    XML_SetElementHandler(parser.get(), OnStart, OnEnd);
    XML_SetStartDoctypeDeclHandler(parser.get(), OnDocumentType);
    if (XML_Parse(parser.get(), xml.data(), static_cast<int>(xml.size()), XML_TRUE) ==
        XML_STATUS_OK) {
        return {};
    }
    const char* const reason =
        walk.refusal != nullptr ? walk.refusal : XML_ErrorString(XML_GetErrorCode(parser.get()));
    return FailAt(EErr::Format, {},
                  "line " + std::to_string(XML_GetCurrentLineNumber(parser.get())) + ", column " +
                      std::to_string(XML_GetCurrentColumnNumber(parser.get()) + 1) + ": " + reason);
}

std::string_view AttributeOf(const std::vector<std::string_view>& attributes, std::string_view name)
{
    for (std::size_t i = 0; i + 1 < attributes.size(); i += 2) {
        if (attributes[i] == name) {
            return attributes[i + 1];
        }
    }
    return {};
}

} // namespace zov::sheet
