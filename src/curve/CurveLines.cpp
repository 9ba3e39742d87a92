// SPDX-License-Identifier: Apache-2.0
#include "curve/CurveLines.h"

#include "base/DecimalScan.h"

#include <charconv>
#include <limits>

namespace zov::curve {

namespace {

/// What a double that is no number is written as.
std::optional<double> SpecialNumber(std::string_view token)
{
    const bool negative = !token.empty() && token.front() == '-';
    if (!token.empty() && (token.front() == '-' || token.front() == '+')) {
        token.remove_prefix(1);
    }
    if (EqualsNoCase(token, "inf") || EqualsNoCase(token, "infinity")) {
        const double infinity = std::numeric_limits<double>::infinity();
        return negative ? -infinity : infinity;
    }
    if (EqualsNoCase(token, "nan")) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return std::nullopt;
}

/// As ScanDouble, but numbers of 16 and 17 digits, which fill curve files, are converted without
/// being looked at once more.
const char* TakeNumber(const char* at, const char* end, double& out)
{
    SDecimalScan scan;
    if (!ScanDecimal(at, end, scan)) {
        return nullptr;
    }
    if (scan.end != end && !IsSpace(*scan.end)) {
        return ScanDouble(at, end, out);
    }
    if (ExactDecimal(scan, 0, out)) {
        return scan.end;
    }
    const auto [after, error] = std::from_chars(at + (*at == '+' ? 1 : 0), scan.end, out);
    return error == std::errc{} && after == scan.end ? after : ScanDouble(at, end, out);
}

} // namespace

bool IsBanner(const SLine& line, std::string_view banner, EBannerEnd end)
{
    if (!StartsWithNoCase(line.text, banner)) {
        return false;
    }
    const std::string_view behind = line.text.substr(banner.size());
    return behind.empty() || end == EBannerEnd::Anything || (line.ended && Trim(behind).empty());
}

TAttributeGroup ReadAttributes(std::string_view line)
{
    TAttributeGroup group;
    std::string_view rest = Trim(line);
    for (std::size_t open = rest.find('['); open != std::string_view::npos; open = rest.find('[')) {
        const std::size_t close = rest.find(']', open);
        if (close == std::string_view::npos) {
            break;
        }
        const std::string_view entry = rest.substr(open + 1, close - open - 1);
        const std::size_t equals = entry.find('=');
        group.push_back({std::string(entry.substr(0, equals)),
                         equals == std::string_view::npos ? std::string()
                                                          : std::string(entry.substr(equals + 1))});
        rest.remove_prefix(close + 1);
    }
    return group;
}

std::optional<double> NextNumber(std::string_view& rest)
{
    while (!rest.empty() && IsSpace(rest.front())) {
        rest.remove_prefix(1);
    }
    const char* const end = rest.data() + rest.size();
    double number = 0.0;
    const char* const after = TakeNumber(rest.data(), end, number);
    if (after != nullptr && (after == end || IsSpace(*after))) {
        rest.remove_prefix(static_cast<std::size_t>(after - rest.data()));
        return number;
    }
    std::string_view behind = rest;
    const auto value = SpecialNumber(NextToken(behind));
    if (value) {
        rest = behind;
    }
    return value;
}

} // namespace zov::curve
