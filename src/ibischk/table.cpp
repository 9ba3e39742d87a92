// SPDX-License-Identifier: Apache-2.0
#include "ibischk/table.h"

#include "base/Text.h"
#include "ibischk/Guard.h"
#include "ibischk/cmn.h"

#include <algorithm>

namespace zov::ibischk {

SComponent& OpenComponent(SCheck& check)
{
    SComponent* last = check.data.components.empty() ? nullptr : &check.data.components.back();
    return *Guarded(last, "ibischk/cmpnt", __LINE__);
}

bool RequireEarlier(SCheck& check, EKeyword earlier, int code)
{
    if (check.state.Has(earlier)) {
        return true;
    }
    check.report.ErrorAt(check.state.keywordPlace, code, KeywordText(check.state.current),
                         KeywordText(earlier));
    return false;
}

void BeginTable(SCheck& check, const SLine& line, std::span<const std::string_view> headings,
                std::size_t required, int orderCode)
{
    if (check.state.current != EKeyword::Pin) {
        RequireEarlier(check, EKeyword::Pin, orderCode);
    }
    SOpenTable& table = OpenComponent(check).names->table;
    table = {};
    table.headings = CheckHeadings(check, line, headings, required);
    // One finding is enough for a heading line that is wrong.
    table.headingTold = table.headings < required || SWords(line.text).count > table.headings;
}

void CountRow(SCheck& check, const SLine& line, std::span<const std::string_view> headings,
              std::size_t columns, int code)
{
    SOpenTable& table = OpenComponent(check).names->table;
    ++table.rows;
    const std::size_t needed = std::min(columns - 1, headings.size());
    if (needed > table.headings && !table.headingTold) {
        table.headingTold = true;
        check.report.ErrorAt(line.Place(), code, columns, headings[table.headings]);
    }
}

const SPin* TakePin(SCheck& check, const SLine& line, std::string_view pin, int code)
{
    const SComponent& component = OpenComponent(check);
    if (component.pins.empty()) {
        return nullptr;
    }
    const SPin* found = component.FindPin(pin);
    if (found == nullptr) {
        ReportUnresolved(check, component.pinNames, pin, line.Place(pin), code);
    }
    return found;
}

bool IsNc(std::string_view word)
{
    return EqualsNoCase(word, "NC");
}

} // namespace zov::ibischk
