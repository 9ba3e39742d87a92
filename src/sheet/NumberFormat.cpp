// SPDX-License-Identifier: Apache-2.0
#include "sheet/NumberFormat.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zov::sheet {
namespace {

using EKind = SFormatPart::EKind;
using ECompare = SFormatSection::ECompare;

// A number that needs more decimals than this is told exactly with an exponent, whatever its
// format.
constexpr int kMaxExactDecimals = 20;

bool Meets(double value, ECompare compare, double limit)
{
    switch (compare) {
    case ECompare::Less:
        return value < limit;
    case ECompare::LessEqual:
        return value <= limit;
    case ECompare::Equal:
        return value == limit;
    case ECompare::NotEqual:
        return value != limit;
    case ECompare::Greater:
        return value > limit;
    case ECompare::GreaterEqual:
        return value >= limit;
    case ECompare::None:
        break;
    }
    return true;
}

bool OnlyNegative(ECompare compare, double limit)
{
    return (compare == ECompare::Less && limit <= 0) ||
           (compare == ECompare::LessEqual && limit < 0) ||
           (compare == ECompare::Equal && limit < 0);
}

/// Writes the digits of a number into placeholders from left to right.
class CDigitWriter
{
public:
    CDigitWriter(std::string& out, const SFormatSection& section, const SDecimal& number)
        : m_out(out)
        , m_number(number)
        , m_grouped(section.grouped)
        , m_wholeLeft(section.wholeDigits)
    {
    }

    void Whole(char placeholder)
    {
        --m_wholeLeft;
        if (!m_started) {
            LeadingDigits(m_wholeLeft + 1);
        }
        WholeDigit(m_wholeLeft, placeholder);
    }
    // The first placeholder takes all digits that have none of their own.
    void LeadingDigits(int placeholders)
    {
        m_started = true;
        for (int power = m_number.point - 1; power >= placeholders; --power) {
            WholeDigit(power, '#');
        }
    }
    void Decimal(char placeholder)
    {
        ++m_decimal;
        if (m_decimal <= m_number.DecimalsNeeded() || placeholder == '0') {
            m_out += m_number.DigitAt(-m_decimal);
        } else if (placeholder == '?') {
            m_out += ' ';
        }
    }
    void RemainingDecimals()
    {
        while (m_decimal < m_number.DecimalsNeeded()) {
            Decimal('0');
        }
    }
    [[nodiscard]] bool HasRemainingDecimals() const
    {
        return m_decimal < m_number.DecimalsNeeded();
    }

private:
    void WholeDigit(int power, char placeholder)
    {
        if (power < m_number.point || placeholder == '0') {
            m_out += m_number.DigitAt(power);
            m_shown = true;
        } else if (placeholder == '?') {
            m_out += ' ';
        }
        if (m_grouped && m_shown && power > 0 && power % 3 == 0) {
            m_out += ',';
        }
    }

    std::string& m_out;
    const SDecimal& m_number;
    bool m_grouped;
    int m_wholeLeft;
    int m_decimal = 0;
    bool m_started = false;
    bool m_shown = false;
};

// Takes the power of ten out of the number that the exponent will show. More than one placeholder
// before the point makes it a multiple of their count ("##0.0E+0" shows thousands).
int TakeExponent(const SFormatSection& section, SDecimal& number, int decimals)
{
    if (number.IsZero()) {
        return 0;
    }
    const int step = std::max(1, section.wholeDigits);
    const auto exponentOf = [&](const SDecimal& value) {
        const int first = value.point - 1 + (section.wholeDigits == 0 ? 1 : 0);
        return (first >= 0 ? first / step : -((-first + step - 1) / step)) * step;
    };
    int exponent = exponentOf(number);
    SDecimal rounded = number;
    RoundToDecimals(rounded, decimals - exponent);
    exponent = exponentOf(rounded); // 9.99 may have become 10.0
    number.point -= exponent;
    return exponent;
}

void AppendExponent(std::string& out, int exponent, bool plusSign, int digits)
{
    out += 'E';
    out += exponent < 0 ? "-" : plusSign ? "+" : "";
    const std::string text = std::to_string(std::abs(exponent));
    const auto width = static_cast<std::size_t>(digits);
    out.append(text.size() < width ? width - text.size() : 0, '0').append(text);
}

struct SRatio
{
    std::int64_t numerator;
    std::int64_t denominator;
};

// The closest fraction whose denominator is at most `limit`: continued fraction, last step
// shortened.
SRatio Approximate(double value, std::int64_t limit)
{
    SRatio before{0, 1};
    SRatio last{1, 0};
    double rest = value;
    for (int step = 0; step < 64; ++step) {
        const double whole = std::floor(rest);
        const auto factor = static_cast<std::int64_t>(whole);
        const std::int64_t denominator = factor * last.denominator + before.denominator;
        if (denominator > limit && last.denominator > 0) {
            const std::int64_t part = (limit - before.denominator) / last.denominator;
            const SRatio between{before.numerator + part * last.numerator,
                                 before.denominator + part * last.denominator};
            const auto distance = [&](const SRatio& ratio) {
                return std::fabs(value - static_cast<double>(ratio.numerator) /
                                             static_cast<double>(ratio.denominator));
            };
            return distance(between) < distance(last) ? between : last;
        }
        before = std::exchange(last, {factor * last.numerator + before.numerator, denominator});
        if (rest - whole < 1e-10 || denominator == 0) {
            break;
        }
        rest = 1.0 / (rest - whole);
        if (rest > 1e9) {
            break;
        }
    }
    return last;
}

/// Number of placeholders that stand side by side up to `end` (exclusive), going back.
std::size_t RunBefore(const std::vector<SFormatPart>& parts, std::size_t end)
{
    std::size_t begin = end;
    while (begin > 0 && parts[begin - 1].kind == EKind::Digit) {
        --begin;
    }
    return end - begin;
}

/// Where the parts of a fraction stand in its section.
struct SFractionForm
{
    std::size_t begin = 0; ///< first placeholder of the numerator
    std::size_t slash = 0;
    std::size_t end = 0;  ///< behind the denominator
    int digits = 0;       ///< placeholders of numerator and denominator
    bool isMixed = false; ///< whole numbers stand before the fraction
    std::int64_t largestDenominator = 1;
};

SFractionForm FormOf(const SFormatSection& section)
{
    const std::vector<SFormatPart>& parts = section.parts;
    SFractionForm form;
    while (parts[form.slash].kind != EKind::Slash) {
        ++form.slash;
    }
    form.begin = form.slash - RunBefore(parts, form.slash);
    form.end = form.slash + 1;
    while (form.end < parts.size() && parts[form.end].kind == EKind::Digit) {
        ++form.end;
    }
    const std::size_t denominator = form.end - form.slash - 1;
    for (std::size_t i = 0; i < std::min<std::size_t>(denominator, 7); ++i) {
        form.largestDenominator *= 10;
    }
    --form.largestDenominator;
    form.digits = static_cast<int>(form.slash - form.begin + denominator);
    form.isMixed = section.wholeDigits > form.digits;
    if (section.fixedDenominator > 0) {
        form.end += std::to_string(section.fixedDenominator).size();
    }
    return form;
}

struct SMixed
{
    double whole = 0;
    SRatio ratio{0, 1};
};

// False for numbers too large for a fraction, and for one that is not the number when it should be.
bool Divide(const SFormatSection& section, const SFractionForm& form, double value, EText mode,
            SMixed& mixed)
{
    constexpr double kLargest = 1e15;
    if (!(value < kLargest) || !(value * section.fixedDenominator < kLargest * 100)) {
        return false;
    }
    mixed.whole = form.isMixed ? std::floor(value) : 0.0;
    const double rest = value - mixed.whole;
    if (section.fixedDenominator > 0) {
        mixed.ratio.denominator = section.fixedDenominator;
        mixed.ratio.numerator = std::llround(rest * section.fixedDenominator);
    } else {
        mixed.ratio = Approximate(rest, form.largestDenominator);
    }
    if (form.isMixed && mixed.ratio.numerator == mixed.ratio.denominator) {
        mixed.whole += 1;
        mixed.ratio.numerator = 0;
    }
    const double shown = mixed.whole + static_cast<double>(mixed.ratio.numerator) /
                                           static_cast<double>(mixed.ratio.denominator);
    return mode == EText::Shown || std::fabs(shown - value) <= value * 1e-15;
}

std::string_view TrimBlanks(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos
               ? std::string_view{}
               : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void AppendLiterals(std::string& out, const SFormatSection& section)
{
    for (const SFormatPart& part : section.parts) {
        if (part.kind == EKind::Literal || part.kind == EKind::Percent) {
            out += part.text;
        }
    }
}

void AppendWithText(std::string& out, const SFormatSection& section, std::string_view text)
{
    for (const SFormatPart& part : section.parts) {
        out += part.kind == EKind::Text || part.kind == EKind::General
                   ? text
                   : std::string_view(part.text);
    }
}

} // namespace

void AppendDigits(std::string& out, const SFormatSection& section, SDecimal number, EText mode)
{
    if (!number.IsZero()) {
        number.point += section.power;
    }
    const int exponent = section.hasExponent ? TakeExponent(section, number, section.decimals) : 0;
    if (mode == EText::Shown) {
        RoundToDecimals(number, section.decimals);
    }
    CDigitWriter writer(out, section, number);
    const bool hasPoint = std::any_of(section.parts.begin(), section.parts.end(),
                                      [](const auto& part) { return part.kind == EKind::Point; });
    int wholeSeen = 0;
    int decimalsSeen = 0;
    const auto pointDue = [&] { return !hasPoint && wholeSeen == section.wholeDigits; };
    for (const SFormatPart& part : section.parts) {
        switch (part.kind) {
        case EKind::Digit:
            if (wholeSeen < section.wholeDigits) {
                ++wholeSeen;
                writer.Whole(part.text[0]);
                if (pointDue() && writer.HasRemainingDecimals()) {
                    out += '.';
                    writer.RemainingDecimals();
                }
            } else if (decimalsSeen < section.decimals) {
                ++decimalsSeen;
                writer.Decimal(part.text[0]);
                if (decimalsSeen == section.decimals) {
                    writer.RemainingDecimals();
                }
            }
            break;
        case EKind::Point:
            if (section.wholeDigits == 0) {
                writer.LeadingDigits(0);
            }
            out += '.';
            if (section.decimals == 0) {
                writer.RemainingDecimals();
            }
            break;
        case EKind::Exponent:
            AppendExponent(out, exponent, part.text == "+", section.exponentDigits);
            break;
        case EKind::Text:
        case EKind::General:
            break;
        default:
            out += part.text;
            break;
        }
    }
}

bool AppendFraction(std::string& out, const SFormatSection& section, double magnitude, EText mode)
{
    const SFractionForm form = FormOf(section);
    SMixed mixed;
    if (!Divide(section, form, magnitude * std::pow(10.0, section.power), mode, mixed)) {
        return false;
    }
    const std::vector<SFormatPart>& parts = section.parts;
    SFormatSection before;
    before.parts.assign(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(form.begin));
    before.wholeDigits = section.wholeDigits - form.digits;
    before.grouped = section.grouped;
    const std::size_t start = out.size();
    AppendDigits(out, before, ToDecimal(mixed.whole), EText::Shown);
    const SRatio& ratio = mixed.ratio;
    if (ratio.numerator != 0 || !form.isMixed) {
        const std::string numerator = std::to_string(ratio.numerator);
        const char pad = parts[form.slash - 1].text[0];
        const std::size_t width = form.slash - form.begin;
        if (pad != '#' && numerator.size() < width) {
            out.append(width - numerator.size(), pad == '0' ? '0' : ' ');
        }
        out += numerator + '/' + std::to_string(ratio.denominator);
    } else if (TrimBlanks(std::string_view(out).substr(start)).empty()) {
        out += '0';
    }
    for (std::size_t i = form.end; i < parts.size(); ++i) {
        out += parts[i].text;
    }
    return true;
}

CNumberFormat::SChoice CNumberFormat::Choose(double value) const
{
    const std::size_t count = m_sections.size();
    const SFormatSection& first = m_sections[0];
    if (count == 1) {
        return Meets(value, first.compare, first.limit) ? SChoice{&first, false}
                                                        : SChoice{nullptr, false};
    }
    const bool firstGiven = first.compare != ECompare::None;
    const ECompare firstCompare = firstGiven  ? first.compare
                                  : count > 2 ? ECompare::Greater
                                              : ECompare::GreaterEqual;
    const double firstLimit = firstGiven ? first.limit : 0.0;
    if (Meets(value, firstCompare, firstLimit)) {
        return {&first, OnlyNegative(firstCompare, firstLimit)};
    }
    const SFormatSection& second = m_sections[1];
    if (second.compare != ECompare::None) {
        if (Meets(value, second.compare, second.limit)) {
            return {&second, OnlyNegative(second.compare, second.limit)};
        }
        return {count > 2 ? &m_sections[2] : nullptr, false};
    }
    if (count > 2) {
        return value < 0 ? SChoice{&second, true} : SChoice{&m_sections[2], false};
    }
    const bool restIsNegative =
        (firstCompare == ECompare::GreaterEqual || firstCompare == ECompare::Greater) &&
        firstLimit == 0.0;
    return {&second, restIsNegative};
}

void CNumberFormat::AppendNumber(std::string& out, double value,
                                 const SFormatContext& context) const
{
    if (!std::isfinite(value)) {
        out += "#NUM!";
        return;
    }
    const SChoice choice = m_general ? SChoice{nullptr, false} : Choose(value);
    if (choice.section == nullptr) {
        AppendGeneral(out, value);
        return;
    }
    const SFormatSection& section = *choice.section;
    const SDecimal number = ToDecimal(value);
    std::string text;
    bool done = true;
    switch (section.kind) {
    case SFormatSection::EKind::Literal:
        done = context.text == EText::Shown;
        if (section.hasText) {
            std::string general;
            AppendGeneral(general, number);
            AppendWithText(text, section, general);
            done = true;
        } else {
            text = value < 0 && !choice.dropSign && !section.parts.empty() ? "-" : "";
            AppendLiterals(text, section);
            done = done || (value == 0.0 && !text.empty());
        }
        break;
    case SFormatSection::EKind::General: {
        SDecimal shown = number;
        shown.negative = number.negative && !choice.dropSign;
        std::string general;
        AppendGeneral(general, shown);
        AppendWithText(text, section, general);
        break;
    }
    case SFormatSection::EKind::Number: {
        done = context.text == EText::Shown || section.hasExponent ||
               number.DecimalsNeeded() - section.power <= kMaxExactDecimals;
        if (!done) {
            break;
        }
        AppendDigits(text, section, number, context.text);
        const bool isZero = text.find_first_of("123456789") == std::string::npos;
        if (number.negative && !choice.dropSign && !isZero) {
            text.insert(0, "-");
        }
        break;
    }
    case SFormatSection::EKind::Fraction:
        done = AppendFraction(text, section, std::fabs(value), context.text);
        if (number.negative && !choice.dropSign &&
            text.find_first_of("123456789") != std::string::npos) {
            const std::size_t first = text.find_first_not_of(' ');
            text.insert(first, "-");
        }
        break;
    case SFormatSection::EKind::Date:
        done =
            AppendDate(text, section, choice.dropSign ? std::fabs(value) : value, context.date1904);
        break;
    }
    if (done) {
        out += TrimBlanks(text);
    } else {
        AppendGeneral(out, number);
    }
}

void CNumberFormat::AppendText(std::string& out, std::string_view text,
                               const SFormatContext& context) const
{
    if (!ChangesText() || (context.text == EText::Exact && !m_text.hasText)) {
        out += text;
        return;
    }
    AppendWithText(out, m_text, text);
}

} // namespace zov::sheet
