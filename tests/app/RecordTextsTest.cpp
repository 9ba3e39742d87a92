// SPDX-License-Identifier: Apache-2.0
#include "app/RecordTexts.h"

#include <gtest/gtest.h>
#include <random>

namespace zov::app {
namespace {

/// Names, makers and notes of a few pieces each, some of them no valid UTF-8.
CZovLibrary RandomLibrary(std::size_t count)
{
    static const std::vector<std::string> kPieces = {
        "GRM", "188",  "R71", "x7r", "X7R", "0402", "Müller", "µF", "ÄÖÜ",
        "a",   "bb c", ".",   "*",   "?",   "Ω",    "\xFF",   "-",  "long piece of text"};
    std::mt19937 random(7);
    const auto text = [&] {
        std::string made;
        for (unsigned i = random() % 4; i > 0; --i) {
            made += kPieces[random() % kPieces.size()];
        }
        return made;
    };
    CZovLibrary library;
    for (std::size_t i = 0; i < count; ++i) {
        CZovRcdProps& record =
            library.Add(i % 2 == 0 ? ERecordType::Capacitor : ERecordType::Resistor);
        record.SetString(EPropId::ModelName, text());
        record.SetString(EPropId::Manuf, text());
        record.SetString(EPropId::Comment, text());
        record.SetDouble(i % 2 == 0 ? EPropId::Cnom : EPropId::Resistance,
                         static_cast<double>(i % 10) * 1e-9);
    }
    return library;
}

const FGoOn kGoOn = [] { return true; };

TEST(RecordTexts, FindsWhatTheQueryMatchesRecordByRecord)
{
    const CZovLibrary library = RandomLibrary(5000);
    const auto block = CRecordTexts::Make(library, kGoOn);
    ASSERT_NE(block, nullptr);
    for (const char* text : {"x7r", "X7r 0402", "müller", "äöü", "GRM*71", "g?m", "bb", "\"bb c\"",
                             "a -bb", "grm -x7r is:incomplete", "µf type:cap", "188 Cnom 2nF..5nF",
                             "*", "grm*", "\xFF", "piece", "nothing has this", "Ω 0402 a"}) {
        const CResult<CRecordQuery> query = CRecordQuery::Parse(text);
        ASSERT_TRUE(query) << text;
        if (!CRecordTexts::Helps(*query)) {
            continue;
        }
        const std::vector<std::uint8_t> found = block->Matches(library, *query);
        ASSERT_EQ(found.size(), library.Count());
        for (std::size_t i = 0; i < library.Count(); ++i) {
            ASSERT_EQ(found[i] != 0, query->Matches(library.At(i)))
                << text << " in record " << i << " " << library.At(i).Name();
        }
    }
}

TEST(RecordTexts, HelpsWhereThereIsAWord)
{
    const auto helps = [](const char* text) {
        return CRecordTexts::Helps(*CRecordQuery::Parse(text));
    };
    EXPECT_TRUE(helps("x7r"));
    EXPECT_TRUE(helps("-a b"));
    EXPECT_FALSE(helps("-a"));
    EXPECT_FALSE(helps("*"));
    EXPECT_FALSE(helps("volt>=16 maker:x"));
    EXPECT_FALSE(helps(""));
}

TEST(RecordTexts, ALibraryThatChangesGetsANewBlock)
{
    CZovLibrary library = RandomLibrary(100);
    CRecordTextCache cache;
    const auto first = cache.Of(library, kGoOn);
    EXPECT_EQ(cache.Of(library, kGoOn), first);
    library.Remove(library.At(0));
    const auto second = cache.Of(library, kGoOn);
    EXPECT_NE(second, first) << "fewer records";
    library.At(0).SetString(EPropId::Comment, "another note");
    cache.Forget(library);
    EXPECT_NE(cache.Of(library, kGoOn), second);
    cache.Forget(library);
    EXPECT_EQ(cache.Of(library, [] { return false; }), nullptr);
}

} // namespace
} // namespace zov::app
