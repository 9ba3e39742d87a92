// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataTables.h"

#include "base/Text.h"
#include "ibis/Forms.h"
#include "ibischk/Values.h"

#include <algorithm>

namespace zov::ibis {

namespace {

bool SameValue(double a, double b)
{
    return a == b || (a != a && b != b);
}

} // namespace

void CIPDataTable::TakeLine(const SIPLine& line, CArena& /*arena*/)
{
    if (IsAlpha(line.text.front()) && TakeIPField(*this, line)) {
        return;
    }
    ibischk::SRow row;
    ibischk::ScanRow(line.text, row);
    const std::size_t count = std::min(row.count, ibischk::SRow::kMax);
    if (m_places.empty()) {
        m_first = line;
    }
    const auto behind =
        static_cast<std::size_t>(line.text.data() + line.text.size() - m_first.text.data());
    if (row.badMask != 0 || (row.naMask & 1U) != 0 || count < 2 || behind > UINT32_MAX) {
        AddUnread(line);
        return;
    }
    for (std::size_t i = 0; i < ibischk::SRow::kMax; ++i) {
        m_columns[i].push_back(i < count ? row.value[i] : kNoValue);
    }
    m_places.push_back({static_cast<std::uint32_t>(behind - line.text.size()),
                        static_cast<std::uint32_t>(line.text.size())});
    if (row.count != ibischk::SRow::kMax) {
        Mark(row.count < ibischk::SRow::kMax ? EIPMark::Missing : EIPMark::Extra, line.number);
    }
}

bool CIPDataTable::HasCorner(std::size_t corner) const
{
    return std::ranges::any_of(Corner(corner), [](double value) { return value == value; });
}

std::size_t CIPDataTable::RowLine(std::size_t row) const
{
    const std::string_view before(m_first.text.data(), m_places[row].offset);
    return m_first.number + static_cast<std::size_t>(std::ranges::count(before, '\n'));
}

SIPNumber CIPDataTable::Cell(std::size_t row, std::size_t column) const
{
    std::string_view rest = RowText(row);
    std::string_view word = TakeWord(rest);
    for (std::size_t i = 0; i < column; ++i) {
        word = TakeWord(rest);
    }
    return {m_columns[column][row], word};
}

bool CIPDataTable::SameContent(const CIPDataObject& other) const
{
    const CIPDataTable& table = *other.Table();
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (!std::ranges::equal(m_columns[i], table.m_columns[i], SameValue)) {
            return false;
        }
    }
    return true;
}

/// Sub-parameters, rows, keywords: the order that the format asks for.
void CIPDataTable::Print(std::string& out) const
{
    out += Name();
    if (!Value().empty()) {
        out += "  ";
        out += Value();
    }
    out += '\n';
    for (const auto& child : Children()) {
        if (child->Form() == nullptr) {
            child->Print(out);
        }
    }
    for (std::size_t row = 0; row < RowCount(); ++row) {
        out += RowText(row);
        out += '\n';
    }
    for (const auto& child : Children()) {
        if (child->Form() != nullptr) {
            child->Print(out);
        }
    }
}

} // namespace zov::ibis
