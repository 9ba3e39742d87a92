// SPDX-License-Identifier: Apache-2.0
#include "core/PreferenceFile.h"

#include "base/File.h"
#include "base/Text.h"
#include "core/ExchangeScanner.h"

#include <array>

namespace zov {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>\n"
                                   "<ZOVP Version = \"1.0\">\n"
                                   "<Library>\n";
constexpr std::string_view kTail = "</Library>\n</ZOVP>\n";

enum ELibAttribute : std::size_t
{
    kPath,
    kOn,
    kVersion
};
constexpr std::array<std::string_view, 3> kAttributes = {"Path", "On", "Version"};

std::string Latin1ToUtf8(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size());
    for (const char c : bytes) {
        AppendUtf8(out, static_cast<unsigned char>(c));
    }
    return out;
}

/// None when a character is outside Latin-1 or the text is no UTF-8; `bad` is then the character.
std::optional<std::string> Utf8ToLatin1(std::string_view text, std::string& bad)
{
    std::string out;
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t before = pos;
        const char32_t c = DecodeUtf8(text, pos);
        if (c > 0xFF) {
            bad = text.substr(before, pos - before);
            return std::nullopt;
        }
        out += static_cast<char>(static_cast<unsigned char>(c));
    }
    return out;
}

bool SaysUtf8(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        return true;
    }
    const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
    return bytes.starts_with("<?xml") &&
           LowerCase(declaration.substr(0, 200)).find("utf-8") != std::string::npos;
}

void AppendLib(std::string& out, std::string_view path, bool on)
{
    out += "<Lib Path=\"";
    out += path;
    out += "\" On=\"";
    out += on ? "YES" : "NO";
    out += "\"/>\n";
}

struct SRawLib
{
    std::string path;
    bool on = true;
};

using EToken = CExchangeScanner::EToken;

/// The `Lib` children of the `Library` element that was just opened.
bool ReadLibs(CExchangeScanner& scanner, CAttributeTable& values, std::vector<SRawLib>& libs)
{
    EToken token = scanner.Next();
    for (; token == EToken::Open; token = scanner.Next()) {
        const bool isLib = EqualsNoCase(scanner.Name(), "Lib");
        if (!scanner.ReadAttributes(values)) {
            return false;
        }
        if (isLib && !values[kPath].empty()) {
            libs.push_back({std::string(values[kPath]), !EqualsNoCase(values[kOn], "NO")});
        }
        if (scanner.HasContent() && !scanner.SkipRest()) {
            return false;
        }
    }
    return token == EToken::Close;
}

/// The children of the root, which was just opened and has content.
bool ReadRoot(CExchangeScanner& scanner, CAttributeTable& values, std::vector<SRawLib>& libs)
{
    EToken token = scanner.Next();
    for (; token == EToken::Open; token = scanner.Next()) {
        if (!EqualsNoCase(scanner.Name(), "Library")) {
            if (!scanner.Skip()) {
                return false;
            }
            continue;
        }
        if (!scanner.ReadAttributes(values) ||
            (scanner.HasContent() && !ReadLibs(scanner, values, libs))) {
            return false;
        }
    }
    return token == EToken::Close;
}

CResult<std::vector<SRawLib>> ReadRaw(std::string_view utf8)
{
    CToleranceLog tolerance;
    CExchangeScanner scanner(utf8, tolerance);
    CAttributeTable values(kAttributes);
    std::vector<SRawLib> libs;
    switch (scanner.Next()) {
    case EToken::Open:
        break;
    case EToken::Bad:
        return scanner.Error();
    default:
        return Fail(EErr::Format, "it holds no element");
    }
    if (!scanner.ReadAttributes(values)) {
        return scanner.Error();
    }
    if (!values.Has(kVersion)) {
        return Fail(EErr::Format, "its root element has no 'Version'");
    }
    if (scanner.HasContent() && !ReadRoot(scanner, values, libs)) {
        return scanner.Error();
    }
    return libs;
}

/// `Lib` elements without their document.
CResult<std::vector<SRawLib>> ReadLines(std::string_view text)
{
    return ReadRaw("<List Version=\"1.0\"><Library>" + std::string(text) + "</Library></List>");
}

/// A path that would not be read back as it stands.
std::string Escaped(std::string_view path)
{
    return ReplaceAll(ReplaceAll(ReplaceAll(path, "&", "&amp;"), "\"", "&quot;"), "<", "&lt;");
}

std::vector<SListedLibrary> Resolve(const std::vector<SRawLib>& raw, const fs::path& folder)
{
    std::vector<SListedLibrary> entries;
    for (const SRawLib& lib : raw) {
        entries.push_back({ListedPath(lib.path, folder), lib.on});
    }
    return entries;
}

bool Exists(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

} // namespace

CResult<std::vector<SListedLibrary>>
ParsePreferences(std::string_view bytes, const std::string& shown, const fs::path& folder)
{
    const bool isUtf8 = SaysUtf8(bytes);
    CResult<std::vector<SRawLib>> raw = isUtf8 ? ReadRaw(bytes) : ReadRaw(Latin1ToUtf8(bytes));
    if (!raw) {
        SError error = Fail(EErr::Format, "cannot load the preference file '" + shown + "'");
        error.notes.push_back(raw.Error().Full());
        return error;
    }
    return Resolve(*raw, folder);
}

CResult<std::string> FormatPreferences(std::span<const SListedLibrary> entries,
                                       const fs::path& folder)
{
    std::string out(kHead);
    std::vector<std::string> written;
    for (const SListedLibrary& entry : entries) {
        written.push_back(ListedPathText(entry.path, folder));
        std::string bad;
        const auto latin1 = Utf8ToLatin1(written.back(), bad);
        if (!latin1) {
            return Fail(
                EErr::Argument,
                "the library path '" + written.back() + "' holds '" + bad +
                    "', which the preference file (Latin-1) cannot hold; move or rename it");
        }
        AppendLib(out, *latin1, entry.on);
    }
    out += kTail;
    // The form escapes nothing, so only reading it back tells whether a path survives.
    const CResult<std::vector<SRawLib>> read = ReadRaw(Latin1ToUtf8(out));
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (!read || i >= read->size() || (*read)[i].path != written[i]) {
            return Fail(EErr::Argument, "the library path '" + written[i] +
                                            "' holds quotes or markup, which the preference file "
                                            "cannot hold; move or rename it");
        }
    }
    return out;
}

std::string FormatLibraryList(std::span<const SListedLibrary> entries)
{
    std::string out;
    for (const SListedLibrary& entry : entries) {
        const std::string path = PathText(fs::absolute(entry.path).lexically_normal());
        std::string line;
        AppendLib(line, path, entry.on);
        const auto read = ReadLines(line);
        const bool survives = read && read->size() == 1 && read->front().path == path;
        AppendLib(out, survives ? path : Escaped(path), entry.on);
    }
    return out;
}

std::vector<SListedLibrary> ParseLibraryList(std::string_view text)
{
    const auto raw = ReadLines(text);
    return raw ? Resolve(*raw, {}) : std::vector<SListedLibrary>();
}

std::string ListedPathText(const fs::path& path, const fs::path& folder)
{
    const fs::path whole = fs::absolute(path).lexically_normal();
    const fs::path base = fs::absolute(folder).lexically_normal();
    const bool shared = whole.root_path() == base.root_path() && !whole.relative_path().empty() &&
                        !base.relative_path().empty() &&
                        *whole.relative_path().begin() == *base.relative_path().begin();
    const fs::path relative = shared ? whole.lexically_relative(base) : fs::path();
    const auto utf8 = (relative.empty() ? whole : relative).generic_u8string();
    return {utf8.begin(), utf8.end()};
}

fs::path ListedPath(std::string_view text, const fs::path& folder)
{
    const auto under = [&](const fs::path& path) {
        return (path.is_absolute() ? path : folder / path).lexically_normal();
    };
    fs::path path = under(TextPath(text));
    if (!Exists(path) && text.find('\\') != std::string_view::npos) {
        fs::path other = under(TextPath(ReplaceAll(text, "\\", "/")));
        if (Exists(other)) {
            return other;
        }
    }
    return path;
}

} // namespace zov
