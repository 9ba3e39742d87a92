// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Catalogue.h"

#include <algorithm>
#include <array>

namespace zov::ibischk {

namespace {

using enum EReport;

constexpr SMessage kUnsorted[] = {
#define ZOV_MESSAGE(code, severity, rule, text) {code, severity, rule, text},
#include "ibischk/catalogue/Blocks.inc"
#include "ibischk/catalogue/Common.inc"
#include "ibischk/catalogue/Header.inc"
#include "ibischk/catalogue/Parser.inc"
// What stands per component.
#include "ibischk/catalogue/Calls.inc"
#include "ibischk/catalogue/Component.inc"
#include "ibischk/catalogue/Pin.inc"
#include "ibischk/catalogue/PinTables.inc"
#include "ibischk/catalogue/Rails.inc"
// Models and what they are made of.
#include "ibischk/catalogue/Algorithmic.inc"
#include "ibischk/catalogue/CCompModel.inc"
#include "ibischk/catalogue/Consistency.inc"
#include "ibischk/catalogue/Curve.inc"
#include "ibischk/catalogue/External.inc"
#include "ibischk/catalogue/Model.inc"
#include "ibischk/catalogue/Series.inc"
#include "ibischk/catalogue/Submodel.inc"
#include "ibischk/catalogue/TestData.inc"
#include "ibischk/catalogue/Waveform.inc"
// Packages, boards, interconnect and modules.
#include "ibischk/catalogue/Board.inc"
#include "ibischk/catalogue/CircuitBody.inc"
#include "ibischk/catalogue/Emd.inc"
#include "ibischk/catalogue/Interconnect.inc"
#include "ibischk/catalogue/Matrix.inc"
#include "ibischk/catalogue/PackageModel.inc"
// Parameter trees.
#include "ibischk/catalogue/Ami.inc"
#undef ZOV_MESSAGE
};

constexpr std::size_t kCount = std::size(kUnsorted);

constexpr auto MakeSorted()
{
    std::array<SMessage, kCount> rows{};
    std::ranges::copy(kUnsorted, rows.begin());
    std::ranges::sort(rows, {}, &SMessage::code);
    return rows;
}
constexpr auto kSorted = MakeSorted();

static_assert(std::ranges::adjacent_find(kSorted, {}, &SMessage::code) == kSorted.end(),
              "two messages have one number");

struct SCodeBlock
{
    int first;
    int last;
    std::string_view family;
};
constexpr SCodeBlock kBlocks[] = {
    {0, 99, "check"},
    {100, 199, "model"},
    {200, 299, "component"},
    {300, 399, "pin-mapping"},
    {400, 499, "series-pins"},
    {500, 599, "switch-groups"},
    {600, 699, "pin"},
    {700, 799, "model-selector"},
    {800, 899, "diff-pin"},
    {900, 999, "syntax"},
    {1000, 1099, "header"},
    {1100, 1199, "ramp"},
    {1200, 1299, "package"},
    {1300, 1399, "waveform"},
    {1400, 1499, "curve"},
    {1500, 1599, "consistency"},
    {1600, 1699, "driver-schedule"},
    {1700, 1799, "submodel"},
    {1800, 1899, "model-spec"},
    {1900, 1999, "common"},
    {2000, 2099, "receiver-thresholds"},
    {2100, 2199, "test-data"},
    {2200, 2299, "test-load"},
    {2300, 2399, "external-model"},
    {2400, 2499, "external-circuit"},
    {2500, 2599, "nodes"},
    {2600, 2699, "circuit-call"},
    {2700, 2799, "package-reference"},
    {2800, 2899, "series"},
    {2900, 2999, "terminator"},
    {3000, 3099, "supply"},
    {3100, 3399, "package-model"},
    {3400, 3699, "package-pins"},
    {3700, 3999, "package-matrix"},
    {4300, 4599, "board"},
    {4600, 4799, "ami"},
    {4800, 4999, "emi"},
    {5000, 5099, "c-comp-corner"},
    {5100, 5199, "current-timing"},
    {6000, 6199, "interconnect"},
    {6200, 6249, "interconnect-group"},
    {6250, 6299, "bus-label"},
    {6300, 6349, "supply-pads"},
    {6350, 6399, "clock-pins"},
    {6400, 6449, "repeater"},
    {6500, 6649, "emd"},
    {6650, 6799, "emd-set"},
    {6800, 6879, "c-comp-model"},
    {6880, 6929, "pdn"},
};

constexpr std::string_view FindFamily(int code)
{
    for (const SCodeBlock& block : kBlocks) {
        if (code >= block.first && code <= block.last) {
            return block.family;
        }
    }
    return {};
}

static_assert(std::ranges::all_of(kSorted,
                                  [](const SMessage& m) { return !FindFamily(m.code).empty(); }),
              "a message lies outside all blocks");

constexpr bool ConversionsKnown(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            continue;
        }
        ++i;
        if (i == text.size() ||
            std::string_view("sducxg%").find(text[i]) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

static_assert(std::ranges::all_of(kSorted,
                                  [](const SMessage& m) { return ConversionsKnown(m.text); }),
              "a message has a conversion that the reports don't know");

} // namespace

std::span<const SMessage> Catalogue()
{
    return kSorted;
}

const SMessage* FindMessage(int code)
{
    const auto row = std::ranges::lower_bound(kSorted, code, {}, &SMessage::code);
    return row == kSorted.end() || row->code != code ? nullptr : &*row;
}

std::string_view FamilyOf(int code)
{
    return FindFamily(code);
}

} // namespace zov::ibischk
