// SPDX-License-Identifier: Apache-2.0
#include "curve/Curve.h"

#include "base/Text.h"
#include "curve/CurveNumber.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fmt/format.h>

namespace zov::curve {

namespace {

/// Text is handed on in pieces of about this size.
constexpr std::size_t kPiece = std::size_t{1} << 16U;
/// Longest form of a number with the tab before it.
constexpr std::size_t kNumberRoom = 32;

constexpr std::string_view kNoName = "Curve";
constexpr std::string_view kNoValueName = "Value";

/// A text as one token of a header line.
std::string Token(std::string_view text, std::string_view fallback)
{
    std::string token(text.empty() ? fallback : text);
    std::replace_if(token.begin(), token.end(), IsSpace, '_');
    return token;
}

std::string WithTitles(std::string line, const std::string& titles)
{
    if (!titles.empty()) {
        line += '\n';
        line += titles;
    }
    return line;
}

std::string FullLine(const SCurveHeader& header, std::string_view name, std::string_view valueName)
{
    const std::string nameToken = Token(name, kNoName);
    return fmt::format("{}\t{}\t{}\t{}", nameToken, Token(valueName, kNoValueName),
                       StyleWord(header.style), Token(header.legend, nameToken));
}

/// Columns of the points that are written, in order; null stands for zeros.
struct SColumns
{
    std::array<const double*, kPointNumbers> data{};
    std::size_t count = 0;

    void Add(std::span<const double> column) { data[count++] = column.data(); }
};

SColumns ColumnsOf(const CCurvePoints& points, TValueMask values, bool pairsOnly)
{
    SColumns columns;
    columns.Add(points.Column(0));
    for (TValueMask rest = values & kAllValues; rest != 0; rest &= rest - 1) {
        columns.Add(points.Column(static_cast<std::size_t>(std::countr_zero(rest)) + 1));
        if (pairsOnly) {
            break;
        }
    }
    return columns;
}

bool WritePoints(CCurveStream& stream, const SColumns& columns, std::size_t count, EDigits digits)
{
    std::string piece(kPiece + columns.count * kNumberRoom, '\0');
    char* const begin = piece.data();
    char* out = begin;
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t c = 0; c < columns.count; ++c) {
            if (c != 0) {
                *out++ = '\t';
            }
            const double value = columns.data[c] == nullptr ? 0.0 : columns.data[c][i];
            out = WriteExponentForm(out, value, digits == EDigits::SameDoubles);
        }
        *out++ = '\n';
        const auto used = static_cast<std::size_t>(out - begin);
        if (used >= kPiece) {
            if (!stream.Write({begin, used})) {
                return false;
            }
            out = begin;
        }
    }
    return out == begin || stream.Write({begin, static_cast<std::size_t>(out - begin)});
}

} // namespace

CCurve::CCurve(SCurveHeader header, CCurvePoints points)
    : m_header(std::move(header))
    , m_points(std::move(points))
{
}

TValueMask CCurve::StoredValues() const
{
    return (TValueMask{1} << (m_points.Columns() - 1)) - 1;
}

std::string CCurve::HeaderLine(SMatrixEntry entry) const
{
    std::string name = m_header.name;
    if (entry.row > 0 && entry.column > 0) {
        name += fmt::format("({},{})", entry.row, entry.column);
    }
    if (name.empty() && m_header.valueName.empty()) {
        std::string line(StyleWord(m_header.style));
        if (!m_header.legend.empty()) {
            line += '\t' + Token(m_header.legend, {});
        }
        return WithTitles(line, m_header.columnTitles);
    }
    return WithTitles(FullLine(m_header, name, m_header.valueName), m_header.columnTitles);
}

std::string CCurve::PairHeaderLine(SMatrixEntry entry, TValueMask value) const
{
    static constexpr std::array<std::string_view, 6> kParts = {"real",  "imag",  "real2",
                                                               "imag2", "real3", "imag3"};
    if (m_points.Columns() <= 2 || (value & kAllValues) == 0) {
        return HeaderLine(entry);
    }
    CCurve part(m_header, {});
    const std::string_view name = kParts[static_cast<std::size_t>(std::countr_zero(value))];
    part.m_header.valueName += (part.m_header.valueName.empty() ? "" : ":") + std::string(name);
    return part.HeaderLine(entry);
}

bool CCurve::Write(CCurveStream* stream, SMatrixEntry entry, TValueMask values, bool pairsOnly,
                   EDigits digits) const
{
    if (stream == nullptr) {
        return false;
    }
    const std::string header = pairsOnly ? PairHeaderLine(entry, values) : HeaderLine(entry);
    return stream->Write(AttributeLines(m_header)) &&
           stream->Write(fmt::format("{}\n{}\n", kCurveBanner, header)) &&
           WritePoints(*stream, ColumnsOf(m_points, values, pairsOnly), m_points.Count(), digits) &&
           stream->Write(fmt::format("{}\n", kEndBanner));
}

std::string AttributeLines(const SCurveHeader& header)
{
    std::string text;
    for (const SAttribute& attribute : header.attributes) {
        text += fmt::format("*[{}={}]\n", attribute.key, attribute.value);
    }
    for (const TAttributeGroup& group : header.attributeGroups) {
        std::string entries;
        for (const SAttribute& entry : group) {
            entries += fmt::format("[{}={}]", entry.key, entry.value);
        }
        text += fmt::format("*{}\n", entries);
    }
    return text;
}

} // namespace zov::curve
