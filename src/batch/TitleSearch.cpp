// SPDX-License-Identifier: Apache-2.0
#include "batch/TitleSearch.h"

#include "base/Text.h"
#include "batch/CellText.h"
#include "batch/ColumnTitles.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zov::batch {

namespace {

unsigned MappedTitleCount(std::span<const std::string_view> cells,
                          const std::vector<SMappingLine>& mapping)
{
    std::vector<std::string> titles;
    titles.reserve(cells.size());
    for (const std::string_view cell : cells) {
        titles.push_back(FoldSpaces(cell));
    }
    return static_cast<unsigned>(
        std::count_if(mapping.begin(), mapping.end(), [&](const SMappingLine& line) {
            return !line.title.empty() &&
                   std::any_of(titles.begin(), titles.end(), [&](const std::string& title) {
                       return EqualsNoCase(title, line.title);
                   });
        }));
}

} // namespace

CResult<STitleRowFound> FindTitleRow(CWorkbook& book, const SMappingRequest& request)
{
    STitleRowFound best;
    std::uint32_t seen = 0;
    RETURN_IF_ERROR(book.ReadRows([&](const SSheetRow& row) {
        const unsigned score = request.mapping ? MappedTitleCount(row.cells, *request.mapping)
                                               : TitleScore(row.cells, request.type);
        if (score > best.score) {
            best = {row.number, score};
        }
        return ++seen < kTitleSearchRows ? EVisit::Continue : EVisit::Stop;
    }));
    return best;
}

CResult<void> SelectTitledSheet(CWorkbook& book, const SMappingRequest& request)
{
    std::size_t best = book.SelectedSheet();
    unsigned bestScore = 0;
    for (std::size_t i = 0; i < book.Sheets().size(); ++i) {
        if (book.Sheets()[i].hidden) {
            continue;
        }
        RETURN_IF_ERROR(book.SelectSheet(i));
        ASSIGN_OR_RETURN(const STitleRowFound found, FindTitleRow(book, request));
        if (found.score > bestScore) {
            best = i;
            bestScore = found.score;
        }
    }
    return book.SelectSheet(best);
}

} // namespace zov::batch
