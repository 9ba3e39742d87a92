// SPDX-License-Identifier: Apache-2.0
/// One curve: names, how it is drawn, attributes and points, and how it is written to a curve
/// file.
#pragma once

#include "curve/CurveKinds.h"
#include "curve/CurvePoints.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zov::curve {

/// Takes the text of a file that is being written. False means that it could not.
class CCurveStream
{
public:
    CCurveStream() = default;
    CCurveStream(const CCurveStream&) = delete;
    CCurveStream& operator=(const CCurveStream&) = delete;
    virtual ~CCurveStream() = default;

    [[nodiscard]] virtual bool Write(std::string_view text) = 0;
};

/// [key=value]
struct SAttribute
{
    std::string key;
    std::string value;

    friend bool operator==(const SAttribute&, const SAttribute&) = default;
};
/// The entries of one attribute line.
using TAttributeGroup = std::vector<SAttribute>;

/// What a curve says about itself.
struct SCurveHeader
{
    std::string name;
    std::string valueName; ///< for example "Z0_real_imag"
    std::string legend;
    ELineStyle style = ELineStyle::Solid;
    EModePair modes = EModePair::None;
    std::string columnTitles;           ///< title line of the points, as read; may be empty
    std::vector<SAttribute> attributes; ///< general ones, a line each
    std::vector<TAttributeGroup> attributeGroups; ///< a line each, as read

    friend bool operator==(const SCurveHeader&, const SCurveHeader&) = default;
};

/// Which entry of a matrix a curve is, counted from 1; 0 for a curve that belongs to no matrix.
struct SMatrixEntry
{
    int row = 0;
    int column = 0;
};

/// A bit per number of a point: 1 the real part of the first value, 2 its imaginary part, up to 32.
using TValueMask = unsigned;
constexpr TValueMask kFirstValue = 3;
constexpr TValueMask kSecondValue = 12;
constexpr TValueMask kThirdValue = 48;
constexpr TValueMask kAllValues = 63;

enum class EDigits
{
    SameDoubles, ///< 15 digits behind the point, 16 for a value that would come back different
    Fifteen      ///< 15 digits behind the point, always
};

class CCurve
{
public:
    CCurve() = default;
    CCurve(SCurveHeader header, CCurvePoints points);
    CCurve(const CCurve&) = default;
    CCurve& operator=(const CCurve&) = default;
    CCurve(CCurve&&) = default;
    CCurve& operator=(CCurve&&) = default;
    virtual ~CCurve() = default;

    [[nodiscard]] const SCurveHeader& Header() const { return m_header; }
    [[nodiscard]] SCurveHeader& Header() { return m_header; }
    [[nodiscard]] const CCurvePoints& Points() const { return m_points; }
    [[nodiscard]] CCurvePoints& Points() { return m_points; }
    [[nodiscard]] EValueClass ValueClass() const { return ClassOf(m_header.valueName); }

    /// The numbers that the curve holds, from the first up to the last that is kept.
    [[nodiscard]] TValueMask StoredValues() const;

    /// Writes attribute lines, banners, header and points.
    /// @param stream     null gives false
    /// @param entry      entry of the matrix that the curve is, for the header
    /// @param values     numbers to write; with `pairsOnly` the lowest of them
    /// @param pairsOnly  x and one number a line
    /// @return true when every write succeeded
    [[nodiscard]] bool Write(CCurveStream* stream, SMatrixEntry entry, TValueMask values,
                             bool pairsOnly, EDigits digits = EDigits::SameDoubles) const;

    /// Header line as the reader expects it, without its line feed: name, value name, style and
    /// legend, or style and legend for a curve without names. White space in a text becomes "_",
    /// since it would end it. The title line of the points, if there is one, follows.
    [[nodiscard]] virtual std::string HeaderLine(SMatrixEntry entry) const;
    /// The same when only one number of each point is written.
    [[nodiscard]] virtual std::string PairHeaderLine(SMatrixEntry entry, TValueMask value) const;

private:
    SCurveHeader m_header;
    CCurvePoints m_points;
};

/// Curves are shared between a set and the views that draw them; nobody copies points.
using TCurvePtr = std::shared_ptr<CCurve>;

/// Attribute lines as they stand in a file, a line feed behind each.
[[nodiscard]] std::string AttributeLines(const SCurveHeader& header);

} // namespace zov::curve
