// SPDX-License-Identifier: Apache-2.0
#include "ibischk/AmiSupport.h"

#include <gtest/gtest.h>

namespace zov::ibischk::test {

namespace {

std::string FileOf(const SAmiCase& row, std::string_view text)
{
    switch (row.part) {
    case EAmiPart::Reserved:
        return AmiFile(row.version, text);
    case EAmiPart::Specific:
        return AmiFile(row.version, "", text);
    case EAmiPart::Whole:
        break;
    }
    return Expand(text);
}

} // namespace

std::string Expand(std::string_view text)
{
    std::string out;
    while (true) {
        const std::size_t open = text.find('<');
        out += text.substr(0, open);
        if (open == std::string_view::npos) {
            return out;
        }
        const std::size_t blank = text.find(' ', open);
        const std::size_t close = text.find('>', open);
        out.append("(Usage ").append(text.substr(open + 1, blank - open - 1)).append(")(Type ");
        out.append(text.substr(blank + 1, close - blank - 1)).append(")");
        text.remove_prefix(close + 1);
    }
}

std::string AmiFile(std::string_view version, std::string_view reserved, std::string_view specific)
{
    std::string text = "(r (Reserved_Parameters ";
    if (!version.empty()) {
        text.append("(AMI_Version <Info String> (Value \"").append(version).append("\")) ");
    }
    text += "(Init_Returns_Impulse <Info Boolean> (Value True)) "
            "(GetWave_Exists <Info Boolean> (Value True)) ";
    text.append(reserved).append(")");
    if (!specific.empty()) {
        text.append(" (Model_Specific ").append(specific).append(")");
    }
    return Expand(text + ")\n");
}

void ExpectAmiRule(const SAmiCase& row, const SCheckHow& how)
{
    SCOPED_TRACE(std::string(row.rule) + ": " + std::string(row.bad));
    const SChecked bad = CheckText(FileOf(row, row.bad), how);
    bool found = false;
    for (const STaken& finding : bad.findings) {
        const std::string code =
            std::string(1, "NCWEBI"[static_cast<std::size_t>(finding.severity)]) +
            std::to_string(finding.code);
        if (code == row.expected) {
            found = true;
            EXPECT_EQ(FindMessage(finding.code)->rule, row.rule);
            EXPECT_EQ(finding.message.find('%'), std::string::npos) << finding.message;
        }
    }
    EXPECT_TRUE(found) << "expected " << row.expected << " in\n" << bad.text;
    if (!row.good.empty()) {
        const SChecked good = CheckText(FileOf(row, row.good), how);
        EXPECT_EQ(good.text, "") << row.good;
    }
}

} // namespace zov::ibischk::test
