// SPDX-License-Identifier: Apache-2.0
#include "core/SearchOptions.h"
#include "support/PlainSearch.h"

#include <gtest/gtest.h>
#include <random>

namespace zov::test {

namespace {

using TLibraries = std::vector<std::shared_ptr<CZovLibrary>>;

FEnvironment ExactMatch(const std::string& value)
{
    return [value](const char* name) -> std::optional<std::string> {
        return std::string_view(name) == "KVE_TAVRELY_ZOVASSIGN_EXACTMATCH" && value != "unset"
                   ? std::optional(value)
                   : std::nullopt;
    };
}

struct SRow
{
    ERecordType type;
    const char* keywords;
    const char* name;
    const char* part;
};

std::shared_ptr<CZovLibrary> LibraryOf(const std::vector<SRow>& rows)
{
    auto library = std::make_shared<CZovLibrary>();
    for (const SRow& row : rows) {
        CZovRcdProps& record = library->Add(row.type);
        record.SetString(EPropId::Lookup, row.keywords);
        record.SetString(EPropId::ModelName, row.name);
        record.SetString(EPropId::MfgPartNumber, row.part);
    }
    return library;
}

std::string NameOf(const SModelRef& model)
{
    return model ? std::string(model.record->Name()) : "-";
}

/// Texts over a small alphabet, so that names meet; wildcards, separators, letters outside ASCII
/// and, in names, bytes that are no UTF-8.
class CRandomNames
{
public:
    explicit CRandomNames(unsigned seed)
        : m_random(seed)
    {
    }
    std::size_t Below(std::size_t limit) { return m_random() % limit; }
    std::string Text(std::size_t longest, bool hostile)
    {
        static const std::vector<std::string> plain = {"a", "B", "0", "1", "_", "C0402", "X7R"};
        static const std::vector<std::string> odd = {"*", "?",  ";",  ".", " ",  ",",
                                                     "Ω", "é",  "É",  "µ", "::", "\xEF\xBF\xBD",
                                                     "=", "\\", "!!", "ß"};
        static const std::vector<std::string> broken = {"\xA9", "\xC3", std::string(1, '\0')};
        std::string out;
        for (std::size_t i = Below(longest + 1); i > 0; --i) {
            const std::size_t kind = Below(hostile ? 24 : 20);
            out += kind < 17 ? plain[Below(plain.size())]
                             : (kind < 23 ? odd[Below(odd.size())] : broken[Below(broken.size())]);
        }
        return out;
    }
    TLibraries Libraries()
    {
        TLibraries libraries;
        for (std::size_t l = Below(3) + 1; l > 0; --l) {
            auto library = std::make_shared<CZovLibrary>();
            for (std::size_t i = Below(300); i > 0; --i) {
                CZovRcdProps& record = library->Add(RecordTypes()[Below(3)].type);
                record.SetString(EPropId::Lookup, Text(6, false));
                record.SetString(EPropId::ModelName, Text(9, false));
                record.SetString(EPropId::MfgPartNumber, Text(5, false));
                record.SetUsable(Below(10) != 0);
            }
            libraries.push_back(std::move(library));
        }
        return libraries;
    }
    /// A name of its own, or a piece of a record's text.
    std::string Name(const TLibraries& libraries)
    {
        const CZovLibrary& library = *libraries[Below(libraries.size())];
        if (Below(3) == 0 || library.Count() == 0) {
            return Text(6, true);
        }
        const CZovRcdProps& record = library.At(Below(library.Count()));
        const std::string_view text = record.GetString(CKeyIndex::kKeys[Below(3)]);
        std::string piece(Below(2) == 0 ? text : Split(text, ';')[0]);
        if (Below(2) == 0 && !piece.empty()) {
            piece = piece.substr(Below(piece.size()));
            piece.resize(Below(piece.size() + 1));
        }
        return Below(4) == 0 ? LowerCase(piece) : piece;
    }

private:
    std::mt19937 m_random;
};

} // namespace

TEST(Search, TheFastSearchAgreesWithTheStatedWalk)
{
    constexpr unsigned kRounds = 20;
    const unsigned first = std::random_device()();
    for (unsigned seed = first; seed != first + kRounds; ++seed) {
        CRandomNames random(seed);
        const TLibraries libraries = random.Libraries();
        const bool exactOnly = random.Below(4) == 0;
        CModelSearch search(ExactMatch(exactOnly ? "1" : "0"));
        std::vector<SWanted> wanted;
        for (std::size_t i = random.Below(2) == 0 ? 5 : 120; i > 0; --i) {
            wanted.push_back({random.Name(libraries), random.Below(3) == 0
                                                          ? RecordTypes()[random.Below(3)].type
                                                          : ERecordType::Any});
        }
        const std::vector<EPropId> keys = {EPropId::Lookup, EPropId::MfgPartNumber,
                                           EPropId::ModelName};
        const std::vector<SFound> all = search.FindAll(libraries, keys, wanted);
        const std::vector<std::size_t> counts = search.CountCandidates(libraries, wanted, 4);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const auto& [name, type] = wanted[i];
            SCOPED_TRACE("seed " + std::to_string(seed) + " name '" + name + "'");
            EXPECT_EQ(all[i].model, PlainMapping(libraries, keys, wanted[i], exactOnly));
            for (const EPropId key :
                 {EPropId::Lookup, EPropId::ModelName, EPropId::MfgPartNumber}) {
                EXPECT_EQ(search.FindModelByKey(libraries, type, key, name),
                          PlainFindByKey(libraries, type, key, name, exactOnly));
            }
            const auto expected = PlainCandidates(libraries, type, name, exactOnly);
            std::vector<SModelRef> candidates;
            EXPECT_EQ(search.CollectCandidates(libraries, type, name, candidates),
                      !expected.empty());
            EXPECT_EQ(candidates, expected);
            if (!name.empty()) {
                EXPECT_EQ(counts[i], std::min<std::size_t>(expected.size(), 4));
            }
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST(Search, ManyLongNamesGoThroughOnePass)
{
    // Enough texts for several segments; windows that many names and texts share.
    auto library = std::make_shared<CZovLibrary>();
    std::mt19937 random(7);
    const auto text = [&](std::size_t pieces) {
        std::string out;
        for (std::size_t i = 0; i < pieces; ++i) {
            out += random() % 4 == 0 ? "0000000000" : std::to_string(random() % 100);
        }
        return out;
    };
    for (std::size_t i = 0; i < 6000; ++i) {
        CZovRcdProps& record = library->Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, text(6));
        record.SetString(EPropId::Lookup, text(3) + ";" + text(4));
    }
    library->Add(ERecordType::Capacitor).SetString(EPropId::ModelName, std::string(2500000, '7'));
    const TLibraries libraries = {library};
    std::vector<SWanted> wanted;
    for (std::size_t i = 0; i < 400; ++i) {
        wanted.push_back({text(1 + random() % 5), ERecordType::Any});
    }
    CModelSearch search(ExactMatch("0"));
    const std::vector<EPropId> keys = {EPropId::Lookup, EPropId::ModelName};
    const std::vector<SFound> all = search.FindAll(libraries, keys, wanted);
    for (std::size_t i = 0; i < wanted.size(); i += 20) {
        EXPECT_EQ(all[i].model, PlainMapping(libraries, keys, wanted[i], false)) << wanted[i].name;
    }
}

TEST(Search, RulesOfTheSingleSearch)
{
    using enum ERecordType;
    const TLibraries libraries = {
        LibraryOf({{Capacitor, "", "C10-long", ""},
                   {Resistor, "x;c10;y", "R1", ""},
                   {Inductor, "", "prefix-LQ", "LQ-2"}}),
        LibraryOf({{Capacitor, "", "C10", "GRM155"}, {Resistor, "LQ-1;*", "A*B", "LQ"}})};
    struct SCase
    {
        const char* exactMatch;
        ERecordType type;
        EPropId key;
        const char* value;
        const char* expected;
    };
    const SCase cases[] = {
        {"unset", Any, EPropId::ModelName, "C10", "C10"}, // exact in a later library wins
        {"unset", Any, EPropId::ModelName, "C1", "C10-long"},
        {"unset", Any, EPropId::Lookup, "C10", "R1"},
        {"unset", Capacitor, EPropId::Lookup, "C10", "-"},
        {"unset", Any, EPropId::Lookup, "x;c10", "-"},
        {"unset", Any, EPropId::ModelName, "c?0-l*g", "C10-long"},
        {"unset", Any, EPropId::ModelName, "a*b", "A*B"},
        {"unset", Any, EPropId::MfgPartNumber, "lq", "A*B"},
        {"unset", Any, EPropId::MfgPartNumber, "q-", "prefix-LQ"},
        {"unset", Any, EPropId::Cnom, "1", "-"},
        {"0", Any, EPropId::ModelName, "C1", "C10-long"},
        {"no", Any, EPropId::ModelName, "C1", "C10-long"},
        {"1", Any, EPropId::ModelName, "C1", "-"},
        {"-3", Any, EPropId::ModelName, "c10", "C10"},
    };
    for (const SCase& one : cases) {
        CModelSearch search(ExactMatch(one.exactMatch));
        EXPECT_EQ(NameOf(search.FindModelByKey(libraries, one.type, one.key, one.value)),
                  one.expected)
            << one.value << " exact " << one.exactMatch;
    }
    CModelSearch search(ExactMatch("0"));
    EXPECT_EQ(search.FindBySchema(libraries, Any, "c10*").size(), 2U);
    EXPECT_EQ(search.FindBySchema(libraries, Resistor, "?").size(), 0U);
    std::vector<SModelRef> list;
    EXPECT_TRUE(search.CollectCandidates(libraries, Any, "lq", list));
    // The keyword "LQ-1" decides before the part number that equals the name.
    EXPECT_EQ(list.size(), 2U);
    EXPECT_FALSE(search.CollectCandidates(libraries, Any, "A*B", list)); // the text holds a star
}

TEST(Search, AutomaticMappingGoesLibraryByLibraryAndKeyByKey)
{
    const TLibraries libraries = {LibraryOf({{ERecordType::Capacitor, "", "part-C10-x", ""},
                                             {ERecordType::Resistor, "", "A_B__C_D", "P1"}}),
                                  LibraryOf({{ERecordType::Capacitor, "C10", "other", ""}})};
    CModelSearch search(ExactMatch("0"));
    const auto map = [&](const CSearchOptions& options, const char* name, ERecordType type) {
        const std::vector<SWanted> wanted = {{name, type}};
        return search.FindAll(libraries, options.EnabledKeys(), wanted)[0];
    };
    // A partial hit in the first library goes before an exact one in the second.
    EXPECT_EQ(NameOf(map({}, "C10", ERecordType::Any).model), "part-C10-x");
    EXPECT_EQ(
        NameOf(map(CSearchOptions::Parse("0 0 1;1 1 0;2 2 0;"), "C10", ERecordType::Any).model),
        "other");
    const SFound legal = map({}, "A.B, C::D", ERecordType::Any);
    EXPECT_EQ(NameOf(legal.model), "A_B__C_D");
    EXPECT_TRUE(legal.legalised);
    EXPECT_TRUE(legal.exact);
    EXPECT_EQ(NameOf(map({}, "A.B, C::D", ERecordType::Capacitor).model), "-");
    EXPECT_EQ(NameOf(map({}, "", ERecordType::Any).model), "-");
    EXPECT_EQ(NameOf(map({}, "  ", ERecordType::Any).model), "-");
}

TEST(Search, TheIndexFollowsTheLibraryAndCostsLessThanItsTexts)
{
    const auto library = LibraryOf({{ERecordType::Capacitor, "", "C1", ""}});
    const TLibraries libraries = {library};
    CModelSearch search(ExactMatch("0"));
    const auto find = [&](const char* name) {
        return NameOf(search.FindModelByKey(libraries, ERecordType::Any, EPropId::ModelName, name));
    };
    EXPECT_EQ(find("c1"), "C1");
    library->At(0).SetString(EPropId::ModelName, "C2");
    EXPECT_EQ(find("c1"), "-");
    CZovRcdProps& added = library->Add(ERecordType::Resistor);
    added.SetString(EPropId::ModelName, "R7");
    EXPECT_EQ(find("r7"), "R7");
    std::vector<SModelRef> list;
    EXPECT_TRUE(search.CollectCandidates(libraries, ERecordType::Any, "R7", list));
    added.SetUsable(false);
    EXPECT_FALSE(search.CollectCandidates(libraries, ERecordType::Any, "R7", list));
    library->Remove(added);
    EXPECT_EQ(find("r7"), "-");

    for (std::size_t i = 0; i < 20000; ++i) {
        CZovRcdProps& record = library->Add(ERecordType::Capacitor);
        for (const EPropId id : {EPropId::ModelName, EPropId::MfgPartNumber, EPropId::Manuf}) {
            record.SetString(id, "part number " + std::to_string(i * 7));
        }
    }
    EXPECT_LT(search.IndexOf(library).BytesHeld(), library->BytesHeld());
}

TEST(Search, LegalNames)
{
    const std::tuple<const char*, bool, const char*> cases[] = {
        {"A.B, C::D", false, "A_B__C_D"},
        {"A.B", true, "A_dot_B"},
        {"  a b\t", false, "a_b"},
        {"", false, ""},
        {" \t ", true, ""},
        {"a:b!c", false, "a:b!c"},
        {":::a!!!", false, "_:a_!"},
        {"x=y\\z", false, "x_y_z"},
        {"Ωµ\x7F\x01", false, "____"},
        {"\xC3(", false, "_("},
        {"..", true, "_dot__dot_"},
        {"R 0402, 10K", false, "R_0402__10K"},
    };
    for (const auto& [text, keepDots, expected] : cases) {
        EXPECT_EQ(LegaliseName(text, keepDots), expected) << text;
    }
}

} // namespace zov::test
