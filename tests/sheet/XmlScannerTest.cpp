// SPDX-License-Identifier: Apache-2.0
#include "sheet/XmlScanner.h"

#include "sheet/Charset.h"
#include "sheet/ReadAhead.h"

#include <cstring>
#include <gtest/gtest.h>

namespace zov::sheet {
namespace {

using namespace std::string_literals;

/// Hands out a text in pieces of a given size, and then an error when one is wanted.
class CPieces final : public CByteSource
{
public:
    CPieces(std::string text, std::size_t piece, bool fails = false)
        : m_text(std::move(text))
        , m_piece(piece)
        , m_fails(fails)
    {
    }
    CResult<std::size_t> Read(char* buffer, std::size_t size) override
    {
        const std::size_t count = std::min({size, m_piece, m_text.size() - m_pos});
        if (count == 0 && m_fails) {
            return Fail(EErr::Io, "the device failed");
        }
        std::memcpy(buffer, m_text.data() + m_pos, count);
        m_pos += count;
        return count;
    }

private:
    std::string m_text;
    std::size_t m_pos = 0;
    std::size_t m_piece;
    bool m_fails;
};

std::string Tokens(CByteSource& source)
{
    CXmlScanner scanner(source);
    std::string out;
    std::string text;
    for (;;) {
        const EXmlToken token = scanner.Next();
        if (token != EXmlToken::Text && !text.empty()) {
            out += "'" + text + "' ";
            text.clear();
        }
        switch (token) {
        case EXmlToken::Start:
            out += std::string(scanner.SelfClosing() ? "-" : "+") + std::string(scanner.Name());
            out += "(" + std::string(scanner.Attribute("a")) + ") ";
            break;
        case EXmlToken::End:
            out += "/" + std::string(scanner.Name()) + " ";
            break;
        case EXmlToken::Text:
            AppendXmlText(text, scanner.Text(), scanner.IsLiteral());
            break;
        case EXmlToken::Eof:
            return out + "end";
        case EXmlToken::Error:
            return out + scanner.Failure().text;
        }
    }
}

TEST(XmlScanner, ReadsTokensHoweverTheyArrive)
{
    const std::string text =
        "\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- <no> -->\n<x:r a = '1>2' b=\"\">"
        "t&amp;<c x:a=\"q\"/><![CDATA[<&amp;>]]>u<?p >?><d\na='z' ></d>µ</x:r >\n";
    const std::string expected = "+r(1>2) 't&' -c(q) '<&amp;>u' +d(z) /d 'µ' /r end";
    for (std::size_t piece = 8; piece < text.size() + 2; ++piece) {
        CPieces source(text, piece);
        EXPECT_EQ(Tokens(source), expected) << piece;
        CReadAhead ahead(std::make_unique<CPieces>(text, piece));
        EXPECT_EQ(Tokens(ahead), expected) << piece;
    }
}

TEST(XmlScanner, TellsWhatIsWrong)
{
    for (const auto& [text, words] : std::vector<std::pair<std::string, std::string>>{
             {"", "ends within an element"},
             {"<a>", "+a() ends within an element"},
             {"<a", "ends within an element"},
             {"<a b='", "ends within an element"},
             {"<a><!-- x", "+a() ends within an element"},
             {"</a>", "an element ends that has not begun"},
             {"<a/><b/>", "-a() more than one root element"},
             {"<!DOCTYPE a>", "a document type is not allowed in a workbook"},
             {"<?xml version='1.0' encoding='EBCDIC'?><a/>",
              "the text encoding 'EBCDIC' is not read"}}) {
        CPieces source(text, 4096);
        EXPECT_EQ(Tokens(source), words) << text;
    }
    CReadAhead failing(std::make_unique<CPieces>("<a>x", 4096, true));
    EXPECT_EQ(Tokens(failing), "+a() the device failed");
}

TEST(XmlScanner, ReadsOldEncodings)
{
    CPieces latin("<?xml version='1.0' encoding=\"ISO-8859-1\"?><a>\xB5</a>", 4096);
    EXPECT_EQ(Tokens(latin), "+a() 'µ' /a end");
    // A character of two units, cut by the blocks that arrive.
    std::string wide = "\xFE\xFF\0<\0a\0>"s;
    for (int i = 0; i < 20; ++i) {
        wide += "\xD8\x3D\xDE\x00"s;
    }
    wide += "\0<\0/\0a\0>"s;
    std::string faces;
    for (int i = 0; i < 20; ++i) {
        faces += "\xF0\x9F\x98\x80";
    }
    for (std::size_t piece = 8; piece < 40; ++piece) {
        CPieces source(wide, piece);
        EXPECT_EQ(Tokens(source), "+a() '" + faces + "' /a end") << piece;
    }
}

TEST(Charset, ReadsCodePages)
{
    EXPECT_EQ(ToUtf8("\xCA\xEE\xED\xE4", CodePageName(1251)), "Конд");
    EXPECT_EQ(ToUtf8("\x83\x52\x83\x93", CodePageName(932)), "コン");
    EXPECT_EQ(ToUtf8("\xB5\x80", CodePageName(1252)), "µ€");
    EXPECT_EQ(ToUtf8("\xB5", "no-such-encoding"), "µ");
    EXPECT_EQ(ToUtf8("a\x83", CodePageName(932)), "a\xEF\xBF\xBD");
}

} // namespace
} // namespace zov::sheet
