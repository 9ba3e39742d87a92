// SPDX-License-Identifier: Apache-2.0
#include "core/RecordFields.h"

#include "core/ZovLibrary.h"
#include "support/Libraries.h"

#include <gtest/gtest.h>
#include <set>

namespace zov {
namespace {

TEST(RecordFields, FieldsHoldEverythingOfARecord)
{
    // A record that is built from nothing but another's fields is its equal.
    test::CRandomLibrary random(11);
    const CZovLibrary library = random.Make(400, true);
    CZovLibrary built;
    for (const CZovRcdProps* record : library.Records()) {
        CZovRcdProps& copy = built.Add(record->Type());
        for (const SRecordPage& page : PagesOf(record->Type())) {
            if (page.IsOptional() && record->Has(page.optional)) {
                copy.SetComposite(page.make());
            }
            for (const SRecordField& field : page.fields) {
                const SFieldValue value = field.Get(*record);
                if (!value.IsNone()) {
                    field.Set(copy, value);
                }
            }
        }
        EXPECT_TRUE(SameProperties(copy, *record)) << record->Name();
    }
}

TEST(RecordFields, EveryPropertyOfATypeHasOneField)
{
    for (const SRecordTypeInfo& type : RecordTypes()) {
        std::set<EPropId> owners;
        for (const SRecordPage& page : PagesOf(type.type)) {
            for (const SRecordField& field : page.fields) {
                owners.insert(field.owner);
            }
        }
        for (const EPropId id : PropertiesOf(type.type)) {
            EXPECT_TRUE(owners.contains(id)) << type.name << " " << FindProperty(id)->name;
        }
    }
}

TEST(RecordFields, TypedTextsAndTheirWayBack)
{
    using enum EFieldKind;
    const CDisplayUnits units;
    static constexpr std::array<std::string_view, 2> kChoices = {"Average", "Worst"};
    struct
    {
        SFieldInfo info;
        const char* typed;
        const char* shown; ///< begins with "!": the message
    } const cases[] = {
        {{"n", "", Number, EQuantity::Capacitance}, " 4.7uF ", "4700nF"},
        {{"n", "", Number, EQuantity::Capacitance}, "4.7", "4.7nF"},
        {{"n", "", Number, EQuantity::Capacitance}, "1e-7F", "100nF"},
        {{"n", "", Number, EQuantity::Tolerance}, "12.5", "12.5%"},
        {{"n", "", Number}, "1e9", "1e+09"},
        {{"n", "", Number}, "", ""},
        {{"n", "", Number, EQuantity::Capacitance},
         "4.7V",
         "!'4.7V' is not understood, expected a number with its unit, such as 4.7nF"},
        {{"n", "", Number}, "5V", "!'5V' is not understood, expected a number"},
        {{"n", "", Choice, EQuantity::None, false, kChoices}, "worst", "Worst"},
        {{"n", "", Choice, EQuantity::None, false, kChoices},
         "Best",
         "!'Best' is not understood, expected one of Average, Worst"},
        {{"n", "", Names}, " A1,A2\tA3 ", "A1 A2 A3"},
        {{"n", "", Pairs}, "A B;; C,D", "A B; C D"},
        {{"n", "", Pairs},
         "A B; C",
         "!'C' is not understood, expected pairs of names, such as 'A B; C D'"},
        {{"n", "", Text}, "  a b ", "a b"},
        {{"n", "", LongText}, " a\n b ", " a\n b "},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.typed);
        const CResult<SFieldValue> value = ParseField(test.typed, test.info, units);
        EXPECT_EQ(value ? FieldText(*value, test.info, units) : "!" + value.Error().text,
                  test.shown);
        if (value) {
            EXPECT_EQ(*ParseField(FieldText(*value, test.info, units, true), test.info, units),
                      *value);
        }
    }
}

} // namespace
} // namespace zov
