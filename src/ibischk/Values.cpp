// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Values.h"

#include "base/DecimalScan.h"
#include "base/Text.h"
#include "ibischk/Tokens.h"

namespace zov::ibischk {

namespace {

int ScaleOf(char suffix)
{
    switch (suffix) {
    case 'T':
        return 12;
    case 'G':
        return 9;
    case 'M':
        return 6;
    case 'k':
        return 3;
    case 'm':
        return -3;
    case 'u':
        return -6;
    case 'n':
        return -9;
    case 'p':
        return -12;
    case 'f':
        return -15;
    default:
        return 0;
    }
}

/// Scale and oddities of the letters behind a number; returns their end.
const char* ScanSuffix(const char* at, const char* end, bool hasExponent, int& scale, SNumber& out)
{
    if (at == end || !IsAlpha(*at)) {
        return at;
    }
    const char first = *at;
    scale = ScaleOf(first);
    if (first == 'K' || first == 'N' || first == 'P' || first == 'U') {
        out.flags |= kCapitalScale;
    }
    if (scale != 0 && hasExponent) {
        out.flags |= kExponentAndScale;
    }
    for (; at != end && (IsAlpha(*at) || IsDigit(*at)); ++at) {
        if (IsDigit(*at)) {
            out.flags |= kDigitsInScale;
        }
    }
    return at;
}

/// The number at `at`, its end in `after`; null there when no number stands at `at`.
ENumber ScanNumber(const char* at, const char* end, SNumber& out, const char*& after)
{
    SDecimalScan d;
    out.flags = 0;
    if (!ScanDecimal(at, end, d)) {
        return ENumber::NoNumber;
    }
    int scale = 0;
    const char* const suffixEnd = ScanSuffix(d.end, end, d.hasExponent, scale, out);
    if (!ExactDecimal(d, scale, out.value)) {
        std::string_view digits(at, static_cast<std::size_t>(d.end - at));
        const auto value = ConsumeDouble(digits, scale);
        if (!value) {
            return ENumber::OutOfRange;
        }
        out.value = *value;
    }
    after = suffixEnd;
    return ENumber::Good;
}

} // namespace

ENumber ConsumeNumber(std::string_view& text, SNumber& out)
{
    const char* after = nullptr;
    const ENumber result = ScanNumber(text.data(), text.data() + text.size(), out, after);
    if (result == ENumber::Good) {
        text.remove_prefix(static_cast<std::size_t>(after - text.data()));
    }
    return result;
}

ENumber ReadNumber(std::string_view token, SNumber& out)
{
    const ENumber result = ConsumeNumber(token, out);
    return result == ENumber::Good && !token.empty() ? ENumber::NoNumber : result;
}

void ScanRow(std::string_view text, SRow& row)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    row.naMask = 0;
    row.badMask = 0;
    row.flags = 0;
    std::size_t count = 0;
    for (;; ++count) {
        while (at != end && IsSpaceOrTab(*at)) {
            ++at;
        }
        if (at == end) {
            break;
        }
        if (count == SRow::kMax) {
            ++count;
            break;
        }
        const char* const start = at;
        const char* after = nullptr;
        SNumber number;
        ENumber result = ScanNumber(start, end, number, after);
        if (result == ENumber::Good && (after == end || IsSpaceOrTab(*after))) {
            at = after;
        } else {
            while (at != end && !IsSpaceOrTab(*at)) {
                ++at;
            }
            const bool na = IsNa({start, static_cast<std::size_t>(at - start)});
            const auto bit = static_cast<std::uint8_t>(1U << count);
            row.naMask = na ? static_cast<std::uint8_t>(row.naMask | bit) : row.naMask;
            row.badMask = na ? row.badMask : static_cast<std::uint8_t>(row.badMask | bit);
            number.value = kAbsent;
            number.flags = 0;
        }
        row.token[count] = {start, static_cast<std::size_t>(at - start)};
        row.value[count] = number.value;
        row.flags = static_cast<std::uint8_t>(row.flags | number.flags);
    }
    row.count = count;
}

} // namespace zov::ibischk
