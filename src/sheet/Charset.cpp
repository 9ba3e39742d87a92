// SPDX-License-Identifier: Apache-2.0
#include "sheet/Charset.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <memory>
#include <uchardet/uchardet.h>

namespace zov::sheet {
namespace {

// Enough for statistics; the tail of a large file tells nothing new.
constexpr std::size_t kDetectBytes = std::size_t{1} << 20U;

class CConverter
{
public:
    explicit CConverter(const std::string& encoding)
        : m_handle(iconv_open("UTF-8", encoding.c_str()))
    {
    }
    CConverter(const CConverter&) = delete;
    CConverter& operator=(const CConverter&) = delete;
    ~CConverter()
    {
        if (Ok()) {
            iconv_close(m_handle);
        }
    }
    [[nodiscard]] bool Ok() const
    {
        return m_handle != reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    }

    std::string Convert(std::string_view bytes)
    {
        std::string out;
        std::array<char, 8192> block{};
        std::string input(bytes); // iconv asks for writable input
        char* from = input.data();
        std::size_t left = input.size();
        while (left > 0) {
            char* to = block.data();
            std::size_t room = block.size();
            const std::size_t done = iconv(m_handle, &from, &left, &to, &room);
            const int reason = errno;
            out.append(block.data(), block.size() - room);
            if (done == static_cast<std::size_t>(-1) && reason != E2BIG) {
                AppendUtf8(out, kReplacementChar);
                ++from;
                --left;
            }
        }
        return out;
    }

private:
    iconv_t m_handle;
};

// Eight bytes at a time: any with the top bit, any that is NUL.
struct SByteKinds
{
    bool ascii = true;
    bool nul = false;
};

SByteKinds Survey(std::string_view bytes)
{
    std::size_t pos = 0;
    unsigned char high = 0;
    unsigned nul = 0;
    // Blocks, so that the compiler may use the widest registers without leaving early.
    constexpr std::size_t kBlock = 4096;
    for (; pos + kBlock <= bytes.size(); pos += kBlock) {
        unsigned char lowest = 0xFF;
        for (std::size_t i = 0; i < kBlock; ++i) {
            const auto byte = static_cast<unsigned char>(bytes[pos + i]);
            high |= byte;
            lowest = std::min(lowest, byte);
        }
        nul |= static_cast<unsigned>(lowest == 0);
    }
    for (; pos < bytes.size(); ++pos) {
        const auto byte = static_cast<unsigned char>(bytes[pos]);
        high |= byte;
        nul |= static_cast<unsigned>(byte == 0);
    }
    return {high < 0x80, nul != 0};
}

std::string FromUtf16(std::string_view bytes, bool little)
{
    std::u16string units(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i + (little ? 0 : 1)]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + (little ? 1 : 0)]);
        units[i] = static_cast<char16_t>(low | (high << 8U));
    }
    return Utf16ToUtf8(units);
}

// Without a mark: Latin text in UTF-16 has a NUL in nearly every other place, always the same one.
bool LooksLikeUtf16(std::string_view bytes, std::size_t nulOffset)
{
    const std::string_view head = bytes.substr(0, 4096);
    std::size_t nuls = 0;
    for (std::size_t i = nulOffset; i < head.size(); i += 2) {
        nuls += head[i] == '\0' ? 1 : 0;
    }
    return nuls * 10 > head.size() / 2 * 8 && nuls > 0;
}

std::string DetectedEncoding(std::string_view bytes)
{
    const std::unique_ptr<std::remove_pointer_t<uchardet_t>, decltype(&uchardet_delete)> detector(
        uchardet_new(), &uchardet_delete);
    const std::string_view sample = bytes.substr(0, kDetectBytes);
    if (uchardet_handle_data(detector.get(), sample.data(), sample.size()) != 0) {
        return {};
    }
    uchardet_data_end(detector.get());
    return uchardet_get_charset(detector.get());
}

} // namespace

std::string CodePageName(int codePage)
{
    switch (codePage) {
    case 932:
        return "SHIFT_JIS";
    case 936:
        return "GBK";
    case 949:
        return "UHC";
    case 950:
        return "BIG5";
    case 1200:
        return "UTF-16LE";
    case 10000:
    case 32768:
        return "MACINTOSH";
    case 0:
    case 367:
    case 32769:
        return "WINDOWS-1252";
    default:
        return (codePage >= 1250 && codePage <= 1258 ? "WINDOWS-" : "CP") +
               std::to_string(codePage);
    }
}

std::string ToUtf8(std::string_view bytes, std::string_view encoding)
{
    if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; })) {
        return std::string(bytes);
    }
    if (!EqualsNoCase(encoding, "WINDOWS-1252") && !EqualsNoCase(encoding, "ISO-8859-1")) {
        CConverter converter{std::string(encoding)};
        if (converter.Ok()) {
            return converter.Convert(bytes);
        }
    }
    return Windows1252ToUtf8(bytes);
}

SDecodedText DecodeTextFile(std::string_view bytes)
{
    SDecodedText text;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        text.converted = FromUtf16(bytes.substr(2), bytes[0] == '\xFF');
    } else {
        text.skip = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
        const SByteKinds kinds = Survey(bytes);
        if (kinds.nul && (LooksLikeUtf16(bytes, 1) || LooksLikeUtf16(bytes, 0))) {
            text.converted = FromUtf16(bytes, LooksLikeUtf16(bytes, 1));
        } else if (kinds.nul) {
            text.binary = true;
        } else if (!kinds.ascii && !IsValidUtf8(bytes)) {
            text.converted = ToUtf8(bytes.substr(text.skip), DetectedEncoding(bytes));
        }
    }
    text.binary = text.binary || text.converted.find('\0') != std::string::npos;
    return text;
}

} // namespace zov::sheet
