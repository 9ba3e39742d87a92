// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveCsv.h"

#include "base/Number.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::curve {

namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16U;

std::string Quoted(std::string_view text)
{
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(text);
    }
    return '"' + ReplaceAll(text, "\"", "\"\"") + '"';
}

const std::string& NameOf(const CCurve& curve)
{
    const SCurveHeader& header = curve.Header();
    return header.name.empty() ? header.legend : header.name;
}

/// The name, or the legend of a curve that shares its name with another ("S21" of two files).
const std::string& TellingName(const CCurve& curve, std::span<const TCurvePtr> curves)
{
    const auto sharesName = [&](const TCurvePtr& other) { return NameOf(*other) == NameOf(curve); };
    const bool isOnly = std::count_if(curves.begin(), curves.end(), sharesName) <= 1;
    return isOnly || curve.Header().legend.empty() ? NameOf(curve) : curve.Header().legend;
}

void WritePoints(const CCurve& curve, std::string_view title, std::size_t columns, CByteWriter& out)
{
    const std::string name = Quoted(title);
    std::string piece;
    for (std::size_t i = 0; i < curve.Points().Count(); ++i) {
        piece += name;
        for (std::size_t c = 0; c < columns; ++c) {
            const auto column = curve.Points().Column(c);
            piece += ',';
            piece += FormatShortest(column.empty() ? 0.0 : column[i]);
        }
        piece += '\n';
        if (piece.size() >= kPiece) {
            out.Append(piece);
            piece.clear();
        }
    }
    out.Append(piece);
}

} // namespace

void WriteCurveCsv(std::span<const TCurvePtr> curves, CByteWriter& out)
{
    static constexpr std::array<std::string_view, kPointNumbers> kTitles = {
        "x", "real", "imag", "real2", "imag2", "real3", "imag3"};
    std::size_t columns = 2;
    for (const TCurvePtr& curve : curves) {
        columns = std::max(columns, curve->Points().Columns());
    }
    std::string titles = "curve,x,value";
    if (columns > 2) {
        titles = "curve";
        for (std::size_t c = 0; c < columns; ++c) {
            titles += ',';
            titles += kTitles[c];
        }
    }
    out.Append(titles + '\n');
    for (const TCurvePtr& curve : curves) {
        WritePoints(*curve, TellingName(*curve, curves), columns, out);
    }
}

} // namespace zov::curve
