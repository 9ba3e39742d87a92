// SPDX-License-Identifier: Apache-2.0
/// Number formats of spreadsheets ("0000", "#,##0.00;[Red]-#,##0.00", "yyyy-mm-dd") as both binary
/// and XML workbooks hold them.
///
///     const CNumberFormat format = CNumberFormat::Parse("0.0%");
///     format.AppendNumber(out, 0.1234, {});   // "12.3%"
#pragma once

#include "sheet/NumberText.h"
#include "sheet/Workbook.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

/// What a number's text depends on besides its format.
struct SFormatContext
{
    EText text = EText::Shown;
    bool date1904 = false; ///< day 0 is 1904-01-01 instead of 1899-12-31
};

/// One piece of a format's section.
struct SFormatPart
{
    enum class EKind : std::uint8_t
    {
        Literal,  ///< text
        Digit,    ///< one placeholder: text is "0", "#" or "?"
        Point,    ///< the decimal point
        Comma,    ///< while parsing only
        Percent,  ///< shown as %, the value is multiplied by 100
        Exponent, ///< text is "+" or "-": which signs are shown
        Slash,    ///< of a fraction
        Text,     ///< @
        General,
        Year, ///< the kinds from here on make a section a date; width is the number of letters
        Month,
        Day,
        Hour,
        Minute,
        Second,
        SubSecond, ///< width digits behind the seconds
        AmPm,      ///< width 1: A/P
        ElapsedHour,
        ElapsedMinute,
        ElapsedSecond,
        BuddhistYear
    };
    EKind kind = EKind::Literal;
    int width = 0;
    std::string text;
};

/// One of the up to four sections of a format.
struct SFormatSection
{
    enum class EKind : std::uint8_t
    {
        Literal, ///< no number in it
        General,
        Number,
        Fraction,
        Date
    };
    enum class ECompare : std::uint8_t
    {
        None,
        Less,
        LessEqual,
        Equal,
        NotEqual,
        Greater,
        GreaterEqual
    };
    EKind kind = EKind::Literal;
    ECompare compare = ECompare::None;
    double limit = 0;
    std::vector<SFormatPart> parts;

    int wholeDigits = 0;    ///< placeholders before the point
    int decimals = 0;       ///< placeholders behind it
    int exponentDigits = 0; ///< placeholders behind the exponent sign
    int power = 0;          ///< the value is multiplied by 10 to this power
    bool grouped = false;   ///< thousands separators
    bool hasExponent = false;
    bool hasText = false; ///< has an @
    bool hasAmPm = false;
    bool hasSeconds = false;
    int secondDigits = 0;
    int fixedDenominator = 0; ///< of a fraction such as # ?/16, else 0
};

class CNumberFormat
{
public:
    /// General.
    CNumberFormat();
    /// Never fails: what has no meaning in a format is shown as it stands.
    static CNumberFormat Parse(std::string_view code);
    /// A format that files name by its number only; General for numbers that have no fixed meaning.
    /// Dates whose look depends on the regional settings (14 and 22) have their American form.
    static CNumberFormat BuiltIn(int id);

    [[nodiscard]] bool IsGeneral() const { return m_general; }
    /// A text in such a cell is shown differently from what it is.
    [[nodiscard]] bool ChangesText() const { return m_textSection >= 0; }
    [[nodiscard]] bool IsDate() const;

    /// Padding at the ends, there to align columns, is left out.
    void AppendNumber(std::string& out, double value, const SFormatContext& context) const;
    void AppendText(std::string& out, std::string_view text, const SFormatContext& context) const;

private:
    struct SChoice
    {
        const SFormatSection* section;
        bool dropSign;
    };
    [[nodiscard]] SChoice Choose(double value) const;

    std::vector<SFormatSection> m_sections; ///< for numbers
    SFormatSection m_text;
    int m_textSection = -1;
    bool m_general = true;
};

/// Reads one section's code; used by CNumberFormat::Parse.
[[nodiscard]] SFormatSection ParseFormatSection(std::string_view code);

/// Writes a date, time or elapsed time; false when the value is outside of the calendar (before the
/// first day, after the year 9999).
[[nodiscard]] bool AppendDate(std::string& out, const SFormatSection& section, double value,
                              bool date1904);

/// Writes a number with the placeholders of a Number section, without sign.
void AppendDigits(std::string& out, const SFormatSection& section, SDecimal number, EText mode);

/// Writes a number as a Fraction section asks, without sign; false when EText::Exact is asked for
/// and the fraction is not the number.
[[nodiscard]] bool AppendFraction(std::string& out, const SFormatSection& section, double magnitude,
                                  EText mode);

/// The serial number of "2024-03-05T10:00:00", "2024-03-05" or "10:00:00"; false for other texts.
[[nodiscard]] bool ParseIsoDate(std::string_view text, bool date1904, double& serial);

} // namespace zov::sheet
