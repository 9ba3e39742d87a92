// SPDX-License-Identifier: Apache-2.0
// Names that one section uses and another defines, wherever in the file both stand.
#include "ibischk/ComponentSupport.h"

#include <algorithm>

namespace zov::ibischk::test {

namespace {

struct SReference
{
    std::string_view what;
    std::string user;            ///< names "Good"
    std::string_view definition; ///< of "Good"
    int unresolved;
    int otherCase = 1950;
};

const std::string kPart = std::string(kComponentHead).append(kComponentPins);
constexpr std::string_view kInput = "[Model] Good\nModel_type Input\nC_comp 1p NA NA\n";
constexpr std::string_view kOutput = "[Model] Good\nModel_type Output\nC_comp 1p NA NA\n";

const SReference kReferences[] = {
    {"pin",
     std::string(kComponentHead) + "[Pin] signal_name model_name R_pin L_pin C_pin\nA1 s Good\n",
     kInput, 609, 610},
    {"selector", "[Model Selector] s\nGood text\n", kInput, 704},
    {"series row",
     kPart + "[Series Pin Mapping] pin_2 model_name function_table_group\nA1 A2 Good\n",
     "[Model] Good\nModel_type Series\n[R Series] 1 NA NA\n", 405},
    {"schedule", "[Model] top\nModel_type Output\n[Driver Schedule]\nGood 0 NA 0 NA\n", kOutput,
     1601},
    {"submodel", "[Model] m\nModel_type Input\n[Add Submodel]\nGood Non-Driving\n",
     "[Submodel] Good\nSubmodel_type Dynamic_clamp\n", 1701},
    {"driver of test data", "[Test Data] t\nTest_data_type Single_ended\nDriver_model Good\n",
     kOutput, 2104},
    {"load of test data", "[Test Data] t\nTest_data_type Single_ended\nTest_load Good\n",
     "[Test Load] Good\nTest_load_type Single_ended\n", 2105},
    {"receiver of test load", "[Test Load] l\nTest_load_type Single_ended\nReceiver_model Good\n",
     kInput, 2207},
    {"circuit call",
     kPart + "[Circuit Call] Good\nSignal_pin A1\nPort_map p A1\n[End Circuit Call]\n",
     "[External Circuit] Good\nLanguage SPICE\nCorner Typ e.sp e\nPorts p\n"
     "[End External Circuit]\n",
     2601},
};

bool TellsUnused(const SChecked& checked)
{
    return std::ranges::any_of(checked.findings, [](const STaken& finding) {
        return finding.code == 618 && finding.args.front() == "Good";
    });
}

TEST(References, HoldBeforeAndBehindTheDefinition)
{
    for (const SReference& row : kReferences) {
        SCOPED_TRACE(row.what);
        const std::string definition(row.definition);
        for (const std::string& body : {row.user + definition, definition + row.user}) {
            const SChecked checked = CheckText(Ibs("4.2", body));
            EXPECT_FALSE(Has(checked, row.unresolved)) << checked.text;
            EXPECT_FALSE(Has(checked, row.otherCase)) << checked.text;
            EXPECT_FALSE(TellsUnused(checked)) << checked.text;
        }
    }
}

TEST(References, ThatLeadNowhereAreTold)
{
    for (const SReference& row : kReferences) {
        SCOPED_TRACE(row.what);
        EXPECT_TRUE(Has(CheckText(Ibs("4.2", row.user)), row.unresolved));
        std::string other(row.definition);
        other.replace(other.find("Good"), 4, "GOOD");
        for (const std::string& body : {row.user + other, other + row.user}) {
            const SChecked checked = CheckText(Ibs("4.2", body));
            EXPECT_TRUE(Has(checked, row.otherCase)) << checked.text;
            EXPECT_FALSE(Has(checked, row.unresolved)) << checked.text;
        }
    }
}

} // namespace

} // namespace zov::ibischk::test
