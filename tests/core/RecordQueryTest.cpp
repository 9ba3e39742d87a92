// SPDX-License-Identifier: Apache-2.0
#include "core/RecordQuery.h"

#include "core/ZovLibrary.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

/// Five records whose first letters say which of them a query finds.
CZovLibrary Sample()
{
    CZovLibrary library;
    CZovRcdProps& a = library.Add(ERecordType::Capacitor);
    a.SetString(EPropId::ModelName, "A_GRM155R71C104KA88");
    a.SetString(EPropId::Manuf, "Northcap");
    a.SetString(EPropId::Size, "0402E");
    a.SetString(EPropId::Tcc, "X7R");
    a.SetDouble(EPropId::Cnom, 100e-9);
    a.SetDouble(EPropId::Volt, 16);
    a.SetDouble(EPropId::Rv, 0.01);
    a.SetDouble(EPropId::Cv, 9e-8);
    CZovRcdProps& b = library.Add(ERecordType::Capacitor);
    b.SetString(EPropId::ModelName, "B_low ESR");
    b.SetString(EPropId::Manuf, "Süd Kondensator");
    b.SetString(EPropId::Size, "1206E");
    b.SetDouble(EPropId::Cnom, 0.1 * 1e-6); // not the same double as 100e-9
    b.SetDouble(EPropId::Volt, 6.3);
    CZovRcdProps& l = library.Add(ERecordType::Inductor);
    l.SetString(EPropId::ModelName, "L_coil");
    l.SetDouble(EPropId::Inductance, 2.2e-6);
    l.SetDouble(EPropId::Lv, 2.2e-6);
    CZovRcdProps& r = library.Add(ERecordType::Resistor);
    r.SetString(EPropId::ModelName, "R_shunt");
    r.SetString(EPropId::Comment, "ratio:2, X7R no");
    r.SetDouble(EPropId::UpTolerance, 0.01);
    CZovRcdProps& u = library.Add(ERecordType::Ic);
    u.SetString(EPropId::ModelName, "U_fpga");
    u.SetString(EPropId::Description, "low loss, not low ESR");
    return library;
}

TEST(RecordQuery, FindsWhatIsTyped)
{
    struct SCase
    {
        const char* query;
        const char* found;
    };
    static constexpr SCase kCases[] = {
        {"", "ABLRU"},
        {"  ", "ABLRU"},
        {"grm155", "A"},
        {"0402 x7r", "A"},
        {"x7r", "AR"},
        {"GRM*104?A", "A"},
        {"GRM?104", ""},
        {"low esr", "BU"},
        {"\"low esr\"", "BU"},
        {"\"esr low\"", ""},
        {"SÜD", "B"},
        {"maker:nor", "A"},
        {"maker=nor", ""},
        {"MANUF=northcap", "A"},
        {"size=0402E", "A"},
        {"size=0402*", "A"},
        {"Cnom 90nF..110nF", "AB"},
        {"c:100nF", "AB"},
        {"c=100n", "AB"},
        {"c 110nF..90nF", "AB"},
        {"cnom 101nF..", ""},
        {"cnom ..0.1uF", "AB"},
        {"c<100nF", ""},
        {"c<=100nF", "AB"},
        {"c>0.1uF", ""},
        {"volt>=16", "A"},
        {"volt>6.3V", "A"},
        {"v<16", "B"},
        {"l<3uH", "L"},
        {"esr<1Ohm", "A"},
        {"tol=1%", "R"},
        {"type:ind", "L"},
        {"type:cap -x7r", "B"},
        {"-type:cap -type:ic", "LR"},
        {"is:incomplete", "BR"},
        {"-is:incomplete", "ALU"},
        {"ratio:2", "R"},
        {"-maker:northcap type:capacitor", "B"},
        {"\"-x7r\"", ""},
    };
    const CZovLibrary library = Sample();
    for (const SCase& c : kCases) {
        const CResult<CRecordQuery> query = CRecordQuery::Parse(c.query);
        ASSERT_TRUE(query.Ok()) << c.query << ": " << query.Error().text;
        std::string found;
        for (const CZovRcdProps* record : library.Records()) {
            if (query->Matches(*record)) {
                found += record->Name().front();
            }
        }
        EXPECT_EQ(found, c.found) << c.query;
    }
}

TEST(RecordQuery, SaysWhatItDoesNotUnderstand)
{
    struct SCase
    {
        const char* query;
        std::size_t column;
        const char* part;
    };
    static constexpr SCase kCases[] = {
        {"x7r \"open", 5, "quote is not closed"},
        {"cnom 90xF..", 6, "'90xF' is no value of Cnom"},
        {"c 1nF..2V", 3, "nF"},
        {"cnom:..", 1, "'..' is no value"},
        {"volt>=1..2", 1, "'1..2' is no value of Volt"},
        {"ab is:compelte", 4, "expected is:incomplete"},
        {"maker>5", 1, "write maker:5"},
    };
    for (const SCase& c : kCases) {
        const CResult<CRecordQuery> query = CRecordQuery::Parse(c.query);
        ASSERT_FALSE(query.Ok()) << c.query;
        EXPECT_EQ(query.Error().pos.column, c.column) << c.query;
        EXPECT_NE(query.Error().text.find(c.part), std::string::npos) << query.Error().text;
    }
    EXPECT_FALSE(CRecordQuery::Parse(std::string(2000, 'x') + std::string(200, ' ') +
                                     [] {
                                         std::string many;
                                         for (int i = 0; i < 100; ++i) {
                                             many += "a ";
                                         }
                                         return many;
                                     }())
                     .Ok());
}

TEST(RecordQuery, NamesWhatIsMissing)
{
    const CZovLibrary library = Sample();
    EXPECT_EQ(MissingIn(library.At(1)), std::vector<std::string>{"model"});
    EXPECT_EQ(MissingIn(library.At(3)), (std::vector<std::string>{"Resistance", "model"}));
    CZovLibrary empty;
    EXPECT_EQ(MissingIn(empty.Add(ERecordType::Capacitor)),
              (std::vector<std::string>{"ModelName", "Cnom", "Size of at least four characters",
                                        "model"}));
    CZovRcdProps& vrm = empty.Add(ERecordType::Vrm);
    vrm.SetString(EPropId::ModelName, "V");
    vrm.SetComposite(SVrmModel{.spice = {}, .rails = {SVrmRail{}}});
    EXPECT_EQ(MissingIn(vrm), std::vector<std::string>{"NominalVoltage of every rail"});
}

} // namespace
} // namespace zov
