// SPDX-License-Identifier: Apache-2.0
// Files made of the table of forms: any sections that may stand below each other, with any of their
// sub-parameters and rows.
#include "ibis/DataFile.h"
#include "ibis/Forms.h"
#include "ibis/Parser.h"

#include <algorithm>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace zov::ibis {

namespace {

constexpr int kKeywords = 126;

class CFileMaker
{
public:
    CFileMaker(unsigned seed, std::uint8_t files)
        : m_random(seed)
        , m_files(files)
    {
    }

    std::string Make()
    {
        m_text.clear();
        m_made.clear();
        Below(EIPKeyword::None, 2);
        Keyword(*IPFormOf(EIPKeyword::End), "");
        return m_text;
    }
    /// How often each keyword was written.
    [[nodiscard]] const std::map<EIPKeyword, std::size_t>& Made() const { return m_made; }

private:
    std::size_t Upto(std::size_t most) { return m_random() % (most + 1); }
    bool Now(std::size_t oneIn) { return m_random() % oneIn == 0; }
    std::string Word() { return fmt::format("{}{}", "nxyz"[Upto(3)], Upto(999)); }
    std::string Number()
    {
        constexpr std::string_view kScales[] = {"", "", "n", "pF", "mA", "k", "e-3", "u"};
        return fmt::format("{}{}.{}{}", Now(3) ? "-" : "", Upto(99), Upto(999), kScales[Upto(7)]);
    }
    std::string NumberOrNa() { return Now(5) ? "NA" : Number(); }
    std::string Triple(const char* separator = "  ")
    {
        return fmt::format("{}{}{}{}{}", Number(), separator, NumberOrNa(), separator,
                           NumberOrNa());
    }
    std::string Words(std::size_t count, std::uint32_t numbers)
    {
        std::string words;
        for (std::size_t i = 0; i < count; ++i) {
            words += (i == 0 ? "" : "  ") + ((numbers >> i & 1U) != 0 ? NumberOrNa() : Word());
        }
        return words;
    }

    void Below(EIPKeyword container, std::size_t oneIn)
    {
        for (int id = 0; id < kKeywords; ++id) {
            const SIPForm* form = IPFormOf(static_cast<EIPKeyword>(id));
            if (form == nullptr || !IPBelongs(*form, container) || (form->files & m_files) == 0 ||
                form->keyword == EIPKeyword::End || form->keyword == EIPKeyword::CommentChar) {
                continue;
            }
            for (std::size_t i = Now(oneIn) ? 1 + Upto(1) : 0; i > 0; --i) {
                Section(*form);
            }
        }
    }
    void Keyword(const SIPForm& form, const std::string& argument)
    {
        m_text += fmt::format("{} {}\n", IPKeywordText(form.keyword), argument);
        ++m_made[form.keyword];
    }
    std::string Argument(const SIPForm& form)
    {
        switch (form.keyword) {
        case EIPKeyword::Pin:
            return "signal_name  model_name  R_pin  L_pin  C_pin";
        case EIPKeyword::ResistanceMatrix:
        case EIPKeyword::InductanceMatrix:
        case EIPKeyword::CapacitanceMatrix:
            m_sparse = Now(2);
            return m_sparse ? "Sparse_matrix" : Now(2) ? "Full_matrix" : "Banded_matrix";
        default:
            break;
        }
        return form.argument == EIPArgument::Number  ? Number()
               : form.argument == EIPArgument::Range ? Triple()
                                                     : Word();
    }
    void Section(const SIPForm& form)
    {
        Keyword(form, Argument(form));
        Lines(form);
        if (IPIsContainer(form.keyword)) {
            Below(form.keyword, 3);
        }
        if (form.closer != EIPKeyword::None) {
            m_text += fmt::format("{}\n", IPKeywordText(form.closer));
        }
    }
    void Lines(const SIPForm& form)
    {
        for (const SIPField& field : form.fields) {
            if (Now(2)) {
                Field(field);
            }
        }
        for (std::size_t i = Upto(3); i > 0; --i) {
            m_text += Line(form);
        }
    }
    void Field(const SIPField& field)
    {
        switch (field.value) {
        case EIPValue::Text:
            m_text += fmt::format("{}  {}\n", field.name, Words(1 + Upto(2), 0));
            break;
        case EIPValue::Number:
            m_text += fmt::format("{} = {}\n", field.name, Number());
            break;
        case EIPValue::Range:
            m_text += fmt::format("{}  {}\n", field.name, Triple());
            break;
        case EIPValue::Slopes:
            m_text += fmt::format("{}  {}/{}  {}/{}  NA\n", field.name, Number(), Number(),
                                  Number(), Number());
            break;
        }
    }
    std::string Line(const SIPForm& form)
    {
        switch (form.lines) {
        case EIPLines::None:
        case EIPLines::Fields:
            return "";
        case EIPLines::Text:
            return "free " + Words(1 + Upto(4), 0) + "\n";
        case EIPLines::Rows: {
            const std::size_t least = form.minWords == kAnyWords ? 1 : form.minWords;
            const std::size_t most = form.maxWords == kAnyWords ? 4 : form.maxWords;
            // A pin has all three values or none.
            const bool isPin = form.keyword == EIPKeyword::Pin;
            const std::size_t count = isPin ? (Now(2) ? least : most) : least + Upto(most - least);
            return Words(count, form.numberColumns) + "\n";
        }
        case EIPLines::Terminals:
            return fmt::format("{}  {}\n", 1 + Upto(8), Words(2 + Upto(2), 0));
        case EIPLines::Table:
            return fmt::format("{}  {}\n", Number(), Triple());
        case EIPLines::Paths:
            return fmt::format("{}{}  Len = {} L={} /\nFork\nLen = 0  C = 2p /\nEndfork\n",
                               form.keyword == EIPKeyword::PathDescription ? "Pin " : "", Word(),
                               Number(), Number());
        case EIPLines::Matrix:
            return m_sparse ? fmt::format("{}  {}\n", Word(), Number())
                            : fmt::format("{}  {}  {}\n", Number(), Number(), Number());
        }
        return "";
    }

    std::mt19937 m_random;
    std::uint8_t m_files;
    std::string m_text;
    std::map<EIPKeyword, std::size_t> m_made;
    bool m_sparse = false;
};

std::unique_ptr<CIPDataFile> Parse(const std::string& text, std::uint8_t files)
{
    CParserIBS ibs;
    CParserEBD ebd;
    return files == kInEbd ? ebd.Parse(text) : ibs.Parse(text);
}

std::string Printed(const CIPDataFile& file)
{
    std::string text;
    file.Print(text);
    return text;
}

struct SSeen
{
    std::map<EIPKeyword, std::size_t> keywords;
    std::string marked; ///< first of them
};

void Look(const CIPDataObject& object, std::size_t above, SSeen& seen)
{
    if (object.Keyword() != EIPKeyword::None) {
        ++seen.keywords[object.Keyword()];
    }
    if (!object.Marks().empty() && seen.marked.empty()) {
        seen.marked = fmt::format("line {}, '{}' '{}': {}", object.Line(), object.Name(),
                                  object.Value(), IPMarkText(object.Marks().front().mark));
    }
    EXPECT_GE(object.Line(), above);
    for (const auto& child : object.Children()) {
        Look(*child, object.Line(), seen);
    }
}

} // namespace

TEST(GeneratedFiles, EverySectionIsReadWholeAndPrintsBack)
{
    std::map<EIPKeyword, std::size_t> all;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const std::uint8_t files = seed % 4 == 0 ? kInEbd : kInIbs;
        CFileMaker maker(seed, files);
        const std::string text = maker.Make();
        const auto file = Parse(text, files);
        SSeen seen;
        Look(*file, 0, seen);
        ASSERT_EQ(seen.marked, "") << "seed " << seed << '\n' << text;
        ASSERT_EQ(seen.keywords, maker.Made()) << "seed " << seed << '\n' << text;
        const auto again = Parse(Printed(*file), files);
        ASSERT_TRUE(again->Equals(*file)) << "seed " << seed << '\n' << Printed(*file);
        ASSERT_EQ(Printed(*again), Printed(*file)) << "seed " << seed;
        for (const auto& [keyword, count] : maker.Made()) {
            all[keyword] += count;
        }
    }
    std::size_t forms = 0;
    for (int id = 0; id < kKeywords; ++id) {
        forms += IPFormOf(static_cast<EIPKeyword>(id)) != nullptr ? 1U : 0U;
    }
    EXPECT_EQ(all.size(), forms - 1) << "all but [Comment Char]";
}

/// Whatever is broken, what was kept of it reads back, and no line is lost.
TEST(GeneratedFiles, BrokenOnesKeepEveryWord)
{
    std::mt19937 random(77);
    const auto words = [](std::string text) {
        std::map<std::string, std::size_t> counted;
        // Equals signs may come or go.
        std::replace(text.begin(), text.end(), '=', ' ');
        std::string_view rest = text;
        while (!rest.empty()) {
            std::string_view line = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            for (auto word = TakeWord(line); !word.empty(); word = TakeWord(line)) {
                ++counted[std::string(word)];
            }
        }
        return counted;
    };
    for (unsigned seed = 100; seed < 160; ++seed) {
        const std::uint8_t files = seed % 4 == 0 ? kInEbd : kInIbs;
        std::string text = CFileMaker(seed, files).Make();
        for (int i = 0; i < 12; ++i) {
            const std::size_t at = random() % text.size();
            const std::size_t lineEnd = text.find('\n', at);
            switch (random() % 4) {
            case 0: // a line less
                text.erase(at, lineEnd == std::string::npos ? lineEnd : lineEnd + 1 - at);
                break;
            case 1:
                text.insert(at, "q1 ");
                break;
            case 2:
                text.insert(at, "\n[Pulldown]\n");
                break;
            default:
                text.insert(at, "\nodd line 7\n");
                break;
            }
            if (text.empty()) {
                text = "\n";
            }
        }
        const auto file = Parse(text, files);
        const std::string printed = Printed(*file);
        ASSERT_TRUE(Parse(printed, files)->Equals(*file)) << "seed " << seed << '\n' << text;
        const auto before = words(text);
        const auto after = words(printed);
        for (const auto& [word, count] : before) {
            // Keywords get their usual spelling; all other words made here have a digit.
            if (word.find_first_of("[]") == std::string::npos &&
                word.find_first_of("0123456789") != std::string::npos) {
                const auto found = after.find(word);
                ASSERT_TRUE(found != after.end() && found->second >= count)
                    << "seed " << seed << " '" << word << "'\n"
                    << text << "\n---\n"
                    << printed;
            }
        }
    }
}

} // namespace zov::ibis
