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
    if (row.badMask != 0 || (row.naMask & 1U) != 0 || count < 2) {
        AddUnread(line);
        return;
    }
    for (std::size_t i = 0; i < ibischk::SRow::kMax; ++i) {
        m_columns[i].push_back(i < count ? row.value[i] : kNoValue);
    }
    m_texts.push_back(line.text);
    m_lines.push_back(line.number);
    if (row.count != ibischk::SRow::kMax) {
        Mark(row.count < ibischk::SRow::kMax ? EIPMark::Missing : EIPMark::Extra, line.number);
    }
}

bool CIPDataTable::HasCorner(std::size_t corner) const
{
    return std::ranges::any_of(Corner(corner), [](double value) { return value == value; });
}

SIPNumber CIPDataTable::Cell(std::size_t row, std::size_t column) const
{
    std::string_view rest = m_texts[row];
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
    for (const std::string_view row : m_texts) {
        out += row;
        out += '\n';
    }
    for (const auto& child : Children()) {
        if (child->Form() != nullptr) {
            child->Print(out);
        }
    }
}

} // namespace zov::ibis
