// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataComponent.h"

#include "base/Text.h"

namespace zov::ibis {

namespace {

constexpr std::size_t kShortPinRow = 3;
constexpr std::size_t kLongPinRow = 6;

} // namespace

CIPDataPin::CIPDataPin(const SIPForm& form, std::size_t line, std::string_view value)
    : CIPDataSection(form, line, value)
{
    constexpr std::string_view kHeadings[] = {"R_pin", "L_pin", "C_pin"};
    std::array<std::size_t, 3> found{};
    std::string_view rest = value;
    std::size_t column = 1;
    for (auto word = TakeWord(rest); !word.empty(); word = TakeWord(rest), ++column) {
        for (std::size_t i = 0; i < found.size(); ++i) {
            if (EqualsNoCase(word, kHeadings[i])) {
                found[i] = column;
            }
        }
    }
    // Headings that aren't all there say nothing of the order.
    if (found[0] * found[1] * found[2] != 0) {
        m_columns = found;
    }
}

std::unique_ptr<CIPDataRowItem> CIPDataPin::MakeRow(std::size_t line, std::string_view text,
                                                    std::span<const std::string_view> words)
{
    auto item = std::make_unique<CIPDataPinItem>(*this, line, text, words);
    if (words.size() > kShortPinRow && words.size() < kLongPinRow) {
        item->Mark(EIPMark::Missing, line);
    }
    return item;
}

SIPNumber CIPDataPinItem::R() const
{
    return NumberAt(m_table->ColumnOf(0));
}

SIPNumber CIPDataPinItem::L() const
{
    return NumberAt(m_table->ColumnOf(1));
}

SIPNumber CIPDataPinItem::C() const
{
    return NumberAt(m_table->ColumnOf(2));
}

std::unique_ptr<CIPDataRowItem> CIPDataPinMapping::MakeRow(std::size_t line, std::string_view text,
                                                           std::span<const std::string_view> words)
{
    return std::make_unique<CIPDataPinMappingItem>(line, text, words);
}

std::vector<SIPDiffPair> CIPDataDiffPin::Pairs() const
{
    std::vector<SIPDiffPair> pairs;
    for (const CIPDataRowItem* row : Rows()) {
        pairs.push_back({row->Word(0), row->Word(1), row->NumberAt(2), row->NumberAt(3),
                         row->NumberAt(4), row->NumberAt(5), row->Line()});
    }
    return pairs;
}

std::vector<SIPSeriesPair> CIPDataSeriesPinMapping::Pairs() const
{
    std::vector<SIPSeriesPair> pairs;
    for (const CIPDataRowItem* row : Rows()) {
        pairs.push_back({row->Word(0), row->Word(1), row->Word(2), row->Word(3), row->Line()});
    }
    return pairs;
}

/// A statement ends with "/" and may go over several lines.
std::vector<SIPSwitchState> CIPDataSeriesSwitchGroups::States() const
{
    std::vector<SIPSwitchState> states;
    bool open = false;
    for (const CIPDataRowItem* row : Rows()) {
        for (std::string_view word : row->Words()) {
            if (!open) {
                states.push_back({EqualsNoCase(word, "On"), {}, row->Line()});
                open = true;
                continue;
            }
            const bool ends = word.ends_with('/');
            word.remove_suffix(ends ? 1 : 0);
            if (!word.empty()) {
                states.back().groups.push_back(word);
            }
            open = !ends;
        }
    }
    return states;
}

std::vector<std::string_view> CIPDataAlternatePkgMdls::Models() const
{
    std::vector<std::string_view> models;
    for (const CIPDataRowItem* row : Rows()) {
        models.push_back(row->Name());
    }
    return models;
}

std::vector<std::string_view> CIPDataNodeDeclarations::Nodes() const
{
    std::vector<std::string_view> nodes;
    for (const CIPDataRowItem* row : Rows()) {
        nodes.insert(nodes.end(), row->Words().begin(), row->Words().end());
    }
    return nodes;
}

std::vector<SIPPortMap> CIPDataCircuitCall::PortMaps() const
{
    std::vector<SIPPortMap> maps;
    for (const auto& child : Children()) {
        if (EqualsNoCase(child->Name(), "Port_map")) {
            std::string_view rest = child->Value();
            const std::string_view port = TakeWord(rest);
            maps.push_back({port, TakeWord(rest)});
        }
    }
    return maps;
}

std::unique_ptr<CIPDataRowItem>
CIPDataInterconnectModelGroup::MakeRow(std::size_t line, std::string_view text,
                                       std::span<const std::string_view> words)
{
    return std::make_unique<CIPDataInterconnectModelGroupItem>(line, text, words);
}

std::string_view CIPDataComponent::Manufacturer() const
{
    const CIPDataObject* part = CIPDataObject::Part(EIPKeyword::Manufacturer);
    return part != nullptr ? part->Value() : std::string_view();
}

} // namespace zov::ibis
