// SPDX-License-Identifier: Apache-2.0
#include "ibischk/mtx.h"

#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/cmn.h"
#include "ibischk/table.h"
#include "ibischk/tables.h"

#include <algorithm>
#include <cmath>

namespace zov::ibischk {

namespace {

const SPackageModel& Package(SCheck& check)
{
    return check.data.packageModels.back();
}

std::string_view PinName(SCheck& check, std::size_t pin)
{
    return Package(check).pins[pin];
}

/// Pins that are listed behind the matrix's head are not part of it.
std::optional<std::size_t> FindPin(SCheck& check, std::string_view name)
{
    const auto pin = Package(check).pinNames.Find(name);
    return pin && *pin < check.data.matrix.rowSeen.size() ? std::optional<std::size_t>(*pin)
                                                          : std::nullopt;
}

// --- the whole matrix ---------------------------------------------------------------------------

void CheckComplete(SCheck& check, const SMatrix& matrix)
{
    STally rows;
    STally diagonals;
    const bool needsAll = matrix.kind != EMatrix::Sparse;
    for (std::size_t i = 0; i < matrix.diagonal.size(); ++i) {
        if (needsAll && !matrix.rowSeen[i]) {
            rows.Add(PinName(check, i), matrix.place);
        } else if (!STriple::Has(matrix.diagonal[i])) {
            diagonals.Add(PinName(check, i), matrix.place);
        }
    }
    const std::string_view keyword = KeywordText(matrix.keyword);
    if (rows) {
        check.report.ErrorAt(matrix.place, 3709, keyword, rows.count, rows.first);
    }
    if (diagonals && matrix.keyword != EKeyword::ResistanceMatrix) {
        // Before 6.1 the text left it open whether a sparse matrix may leave diagonals out.
        const bool strict = check.state.AtLeast(EVersion::V61);
        check.report.At(strict ? EReport::Error : EReport::Warning, matrix.place, 3716, keyword,
                        diagonals.count, diagonals.first);
    }
}

struct SRange
{
    double least;
    double most;
};

/// Diagonal values of packages as they are built, in ohm, henry, farad.
SRange Plausible(EKeyword keyword)
{
    switch (keyword) {
    case EKeyword::InductanceMatrix:
        return {1e-12, 100e-9};
    case EKeyword::CapacitanceMatrix:
        return {1e-15, 100e-12};
    default:
        return {0.0, 100.0};
    }
}

void CheckDiagonal(SCheck& check, const SMatrix& matrix)
{
    const SRange range = Plausible(matrix.keyword);
    std::size_t doubtful = 0;
    std::size_t first = 0;
    for (std::size_t i = 0; i < matrix.diagonal.size(); ++i) {
        const double value = matrix.diagonal[i];
        const bool good = matrix.keyword == EKeyword::ResistanceMatrix ? value >= 0 : value > 0;
        if (!STriple::Has(value) || !good) {
            continue; // told where it stands
        }
        if ((value < range.least || value > range.most) && doubtful++ == 0) {
            first = i;
        }
    }
    if (doubtful != 0) {
        check.report.Caution(matrix.place, 3721, KeywordText(matrix.keyword), Package(check).name,
                             doubtful, matrix.diagonal[first], PinName(check, first));
    }
}

/// What off-diagonal values are at most, given the two diagonals up to their rounding: full
/// coupling of inductances, the smaller total of capacitances.
double Most(const SMatrix& matrix, const SSparseEntry& entry)
{
    const double a = matrix.diagonal[entry.row] + matrix.digit[entry.row];
    const double b = matrix.diagonal[entry.column] + matrix.digit[entry.column];
    return matrix.keyword == EKeyword::InductanceMatrix ? std::sqrt(a * b) : std::min(a, b);
}

void CheckCoupling(SCheck& check, const SMatrix& matrix)
{
    if (matrix.keyword == EKeyword::ResistanceMatrix) {
        return;
    }
    constexpr double kFloatRounding = 1e-6;
    const SSparseEntry* first = nullptr;
    std::size_t count = 0;
    bool positive = false;
    bool negative = false;
    for (const SSparseEntry& entry : matrix.entries) {
        const double value = static_cast<double>(entry.value);
        positive = positive || value > 0;
        negative = negative || value < 0;
        const double least = std::abs(value) - static_cast<double>(entry.digit);
        if (least > Most(matrix, entry) * (1 + kFloatRounding) && count++ == 0) {
            first = &entry;
        }
    }
    const bool inductance = matrix.keyword == EKeyword::InductanceMatrix;
    if (first != nullptr) {
        check.report.WarningAt(matrix.place, inductance ? 3718 : 3720,
                               static_cast<double>(first->value), PinName(check, first->row),
                               PinName(check, first->column), Most(matrix, *first), count);
    }
    if (!inductance && positive && negative) {
        check.report.NoteAt(matrix.place, 3719, KeywordText(matrix.keyword));
    }
}

void FinishMatrix(SCheck& check)
{
    SMatrix& matrix = check.data.matrix;
    if (matrix.keyword == EKeyword::NotKey) {
        return;
    }
    const CPathScope scope(check.report,
                           {{}, Package(check).name, KeywordText(matrix.keyword), {}});
    if (matrix.kind == EMatrix::Banded && !matrix.hasBandwidth) {
        check.report.ErrorAt(matrix.place, 3702, KeywordText(matrix.keyword));
    }
    if (matrix.kind != EMatrix::None && !matrix.spoiled) {
        CheckComplete(check, matrix);
    }
    CheckDiagonal(check, matrix);
    CheckCoupling(check, matrix);
    matrix.keyword = EKeyword::NotKey;
}

// --- keywords -----------------------------------------------------------------------------------

EMatrix KindOf(std::string_view word)
{
    return EqualsNoCase(word, "Full_matrix")     ? EMatrix::Full
           : EqualsNoCase(word, "Banded_matrix") ? EMatrix::Banded
           : EqualsNoCase(word, "Sparse_matrix") ? EMatrix::Sparse
                                                 : EMatrix::None;
}

void OpenModelData(SCheck& check, const SLine& /*line*/)
{
    if (!check.state.Has(EKeyword::PinNumbers)) {
        check.report.ErrorAt(check.state.keywordPlace, 3102, KeywordText(EKeyword::PinNumbers),
                             KeywordText(EKeyword::ModelData));
    }
}

void OpenMatrix(SCheck& check, const SLine& line)
{
    FinishMatrix(check);
    SMatrix& matrix = check.data.matrix;
    const std::size_t pins = Package(check).pins.size();
    matrix.keyword = check.state.current;
    matrix.place = check.state.keywordPlace;
    matrix.diagonal.assign(pins, kAbsent);
    matrix.digit.assign(pins, 0.0);
    matrix.rowSeen.assign(pins, false);
    matrix.rowOfColumn.assign(pins, 0);
    matrix.entries.clear();
    matrix.bandwidth = 0;
    matrix.hasBandwidth = false;
    matrix.rowOpen = false;
    matrix.spoiled = false;
    matrix.lastRow = 0;
    CTokens tokens(line.text);
    const std::string_view kind = tokens.Next();
    matrix.kind = KindOf(kind);
    if (matrix.kind == EMatrix::None) {
        check.report.ErrorAt(matrix.place, 3700, KeywordText(matrix.keyword), kind);
    } else if (!tokens.AtEnd()) {
        check.report.ErrorAt(line.Place(tokens.Rest()), 3701, tokens.Rest(),
                             KeywordText(matrix.keyword));
    }
}

void OpenBandwidth(SCheck& check, const SLine& line)
{
    SMatrix& matrix = check.data.matrix;
    const SPlace place = check.state.keywordPlace;
    if (matrix.keyword == EKeyword::NotKey || matrix.kind != EMatrix::Banded ||
        matrix.hasBandwidth || matrix.lastRow != 0) {
        check.report.ErrorAt(place, 3703);
        return;
    }
    matrix.hasBandwidth = true;
    const auto width = ParseInt(line.text);
    if (!width || *width < 0) {
        check.report.ErrorAt(place, 3704, line.text);
        matrix.hasBandwidth = true;
        matrix.spoiled = true;
        matrix.bandwidth = matrix.diagonal.size();
        return;
    }
    matrix.bandwidth = static_cast<std::size_t>(*width);
    if (!matrix.diagonal.empty() && matrix.bandwidth > matrix.diagonal.size() - 1) {
        check.report.WarningAt(place, 3705, matrix.bandwidth, matrix.diagonal.size() - 1);
    }
}

void OpenRow(SCheck& check, const SLine& line)
{
    SMatrix& matrix = check.data.matrix;
    matrix.rowOpen = false;
    if (matrix.keyword == EKeyword::NotKey) {
        check.report.ErrorAt(check.state.keywordPlace, 3722);
        return;
    }
    const std::string_view name = TakeName(check, line, std::string_view::npos, EReserved::Allowed);
    if (name.empty()) {
        matrix.spoiled = true;
        return;
    }
    const std::optional<std::size_t> pin = FindPin(check, name);
    if (!pin) {
        matrix.spoiled = true;
        ReportUnresolved(check, Package(check).pinNames, name, line.Place(name), 3706);
        return;
    }
    if (matrix.rowSeen[*pin]) {
        check.report.ErrorAt(line.Place(name), 3707, name, KeywordText(matrix.keyword));
        return;
    }
    if (*pin + 1 < matrix.lastRow) {
        const bool sparse = matrix.kind == EMatrix::Sparse;
        check.report.At(sparse ? EReport::Warning : EReport::Error, line.Place(name), 3708, name);
    }
    matrix.rowSeen[*pin] = true;
    matrix.rowOpen = matrix.kind != EMatrix::None;
    matrix.row = *pin;
    matrix.lastRow = *pin + 1;
    matrix.rowPlace = line.Place(name);
    matrix.valuesInRow = 0;
}

// --- rows ---------------------------------------------------------------------------------------

/// Values that the open row of a full or banded matrix has.
std::size_t ExpectedValues(const SMatrix& matrix)
{
    const std::size_t full = matrix.diagonal.size() - matrix.row;
    return matrix.kind == EMatrix::Banded && matrix.hasBandwidth
               ? std::min(matrix.bandwidth + 1, full)
               : full;
}

void CheckDiagonalSign(SCheck& check, const SMatrix& matrix, double value, SPlace place)
{
    const std::string_view keyword = KeywordText(matrix.keyword);
    const std::string_view pin = PinName(check, matrix.row);
    if (matrix.keyword == EKeyword::ResistanceMatrix) {
        if (value < 0) {
            check.report.ErrorAt(place, 3717, value, pin, keyword, "negative");
        }
    } else if (value <= 0) {
        const bool inductance = matrix.keyword == EKeyword::InductanceMatrix;
        check.report.At(inductance ? EReport::Error : EReport::Warning, place, 3717, value, pin,
                        keyword, "not above zero");
    }
}

void TakeMatrixValue(SCheck& check, const SLine& line, std::string_view token, std::size_t column)
{
    SMatrix& matrix = check.data.matrix;
    std::optional<double> value;
    if (IsNa(token)) {
        check.report.ErrorAt(line.Place(token), 3723);
    } else {
        value = TakeNumber(check, KeywordText(matrix.keyword), token, line.Place(token));
    }
    if (column != matrix.row) {
        if (value && *value != 0) {
            matrix.entries.push_back(
                {static_cast<std::uint32_t>(matrix.row), static_cast<std::uint32_t>(column),
                 static_cast<float>(*value), static_cast<float>(LastDigitOf(token))});
        }
        return;
    }
    if (!value) {
        matrix.spoiled = true;
        return;
    }
    matrix.diagonal[column] = *value;
    matrix.digit[column] = LastDigitOf(token);
    CheckDiagonalSign(check, matrix, *value, line.Place(token));
}

void TakeSparseLine(SCheck& check, const SLine& line)
{
    SMatrix& matrix = check.data.matrix;
    CTokens tokens(line.text);
    const std::string_view pin = tokens.Next();
    const std::string_view value = tokens.Next();
    if (value.empty() || !tokens.AtEnd()) {
        check.report.ErrorAt(line.Place(), 3712, line.text);
        return;
    }
    const std::optional<std::size_t> column = FindPin(check, pin);
    if (!column) {
        ReportUnresolved(check, Package(check).pinNames, pin, line.Place(pin), 3713);
        return;
    }
    if (*column < matrix.row) {
        check.report.ErrorAt(line.Place(pin), 3714, pin, PinName(check, matrix.row));
        return;
    }
    const auto row = static_cast<std::uint32_t>(matrix.row + 1);
    if (matrix.rowOfColumn[*column] == row) {
        check.report.ErrorAt(line.Place(pin), 3715, pin, PinName(check, matrix.row));
        return;
    }
    matrix.rowOfColumn[*column] = row;
    TakeMatrixValue(check, line, value, *column);
}

void TakeRowLine(SCheck& check, const SLine& line)
{
    SMatrix& matrix = check.data.matrix;
    if (!matrix.rowOpen) {
        return;
    }
    if (matrix.kind == EMatrix::Sparse) {
        TakeSparseLine(check, line);
        return;
    }
    const std::size_t expected = ExpectedValues(matrix);
    for (CTokens tokens(line.text); !tokens.AtEnd();) {
        const std::string_view token = tokens.Next();
        if (matrix.valuesInRow == expected) {
            check.report.ErrorAt(line.Place(token), 3711, PinName(check, matrix.row), expected);
            matrix.rowOpen = false;
            return;
        }
        TakeMatrixValue(check, line, token, matrix.row + matrix.valuesInRow);
        ++matrix.valuesInRow;
    }
}

void CloseRow(SCheck& check)
{
    SMatrix& matrix = check.data.matrix;
    if (!matrix.rowOpen || matrix.kind == EMatrix::Sparse) {
        return;
    }
    const std::size_t expected = ExpectedValues(matrix);
    if (matrix.valuesInRow < expected) {
        check.report.ErrorAt(matrix.rowPlace, 3710, PinName(check, matrix.row), matrix.valuesInRow,
                             expected);
        matrix.spoiled = matrix.spoiled || matrix.valuesInRow == 0;
    }
}

void OpenEnd(SCheck& check, const SLine& /*line*/)
{
    FinishMatrix(check);
}

void CloseMatrices(SCheck& check)
{
    FinishMatrix(check);
    if (check.state.Has(EKeyword::ModelData)) {
        RequireKeyword(check, EKeyword::InductanceMatrix);
        RequireKeyword(check, EKeyword::CapacitanceMatrix);
    }
}

constexpr SHandler kHandlers[] = {
    {EKeyword::ModelData, &OpenModelData, nullptr, nullptr},
    {EKeyword::EndModelData, &OpenEnd, nullptr, nullptr},
    {EKeyword::ResistanceMatrix, &OpenMatrix, nullptr, nullptr},
    {EKeyword::InductanceMatrix, &OpenMatrix, nullptr, nullptr},
    {EKeyword::CapacitanceMatrix, &OpenMatrix, nullptr, nullptr},
    {EKeyword::Bandwidth, &OpenBandwidth, nullptr, nullptr},
    {EKeyword::Row, &OpenRow, &TakeRowLine, &CloseRow},
};
constexpr SSectionHandler kSections[] = {{EScope::PackageModel, &CloseMatrices}};

} // namespace

const SFamily kMtxFamily = {"mtx", kHandlers, kSections, nullptr};

} // namespace zov::ibischk
