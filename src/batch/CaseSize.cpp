// SPDX-License-Identifier: Apache-2.0
#include "batch/CaseSize.h"

#include "base/Text.h"
#include "batch/CellText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace zov::batch {

namespace {

constexpr std::array<std::string_view, 27> kEnglishCodes = {
    "008004", "009005", "01005", "015015", "0201", "0204", "0302", "0303", "0306",
    "0402",   "0504",   "0508",  "0603",   "0612", "0805", "1111", "1206", "1210",
    "1218",   "1806",   "1808",  "1812",   "1825", "2010", "2220", "2225", "2512"};
// 0402, 0603 and a few more are codes of both systems; without a mark they are English.
constexpr std::array<std::string_view, 19> kMetricOnlyCodes = {
    "0510", "0816", "1005", "1220", "1608", "1632", "2012", "2520", "2828", "3216",
    "3225", "4516", "4520", "4532", "4564", "5025", "5664", "5750", "6332"};
// Codes that lose their leading zero when a cell holds them as a number.
constexpr std::array<std::string_view, 4> kShortened = {"201", "402", "603", "805"};

template <std::size_t N>
bool Contains(const std::array<std::string_view, N>& codes, std::string_view code)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

struct SCandidate
{
    std::string_view code;
    bool metric = false; ///< marked so, or a code of that system only
};

/// The letter or word that marks the system of the code that ends at `at`.
std::optional<ESizeSystem> MarkAt(std::string_view text, std::size_t at)
{
    std::string_view behind = text.substr(at);
    const bool adjacent = !behind.empty() && !IsSpace(behind[0]);
    behind = Trim(behind);
    const auto endsWord = [&](std::size_t length) {
        return behind.size() == length || !IsAlpha(behind[length]);
    };
    if (StartsWithNoCase(behind, "metric") || (StartsWithNoCase(behind, "mm") && endsWord(2))) {
        return ESizeSystem::Metric;
    }
    if (StartsWithNoCase(behind, "english") || StartsWithNoCase(behind, "imperial") ||
        StartsWithNoCase(behind, "inch")) {
        return ESizeSystem::English;
    }
    if (adjacent && endsWord(1) && (behind.size() == 1 || !IsDigit(behind[1]))) {
        const char letter = ToUpper(behind[0]);
        return letter == 'M'   ? std::optional(ESizeSystem::Metric)
               : letter == 'E' ? std::optional(ESizeSystem::English)
                               : std::nullopt;
    }
    return std::nullopt;
}

std::vector<SCandidate> FindCodes(std::string_view text)
{
    std::vector<SCandidate> found;
    for (std::size_t at = 0; at < text.size();) {
        if (!IsDigit(text[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && IsDigit(text[end])) {
            ++end;
        }
        const std::string_view code = text.substr(at, end - at);
        const bool metricOnly = Contains(kMetricOnlyCodes, code);
        if (metricOnly || Contains(kEnglishCodes, code)) {
            const auto mark = MarkAt(text, end);
            found.push_back({code, mark ? *mark == ESizeSystem::Metric : metricOnly});
        }
        at = end;
    }
    return found;
}

char LetterOf(bool metric)
{
    return metric ? 'M' : 'E';
}

/// "0402", "0402E", "402", "7343M": the cell is a code and nothing else.
std::optional<SSizeReading> ReadPlainCode(std::string_view text, ESizeSystem system)
{
    const std::size_t digits = static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), IsDigit) - text.begin());
    const char letter = text.size() == digits + 1 ? ToUpper(text.back()) : '\0';
    if (digits < 3 || (text.size() != digits && letter != 'E' && letter != 'M')) {
        return std::nullopt;
    }
    SSizeReading reading = {.state = ECell::Value, .size = std::string(text.substr(0, digits))};
    if (Contains(kShortened, reading.size)) {
        reading.size.insert(0, "0");
        reading.completed = true;
    }
    if (reading.size.size() < kMinSizeLength) {
        return std::nullopt;
    }
    const bool metric = letter != '\0'                    ? letter == 'M'
                        : system == ESizeSystem::FromFile ? Contains(kMetricOnlyCodes, reading.size)
                                                          : system == ESizeSystem::Metric;
    reading.size += LetterOf(metric);
    return reading;
}

} // namespace

SSizeReading ReadSize(std::string_view cell, ESizeSystem system)
{
    const std::string_view text = TrimCell(cell);
    if (IsEmptyWord(text)) {
        return {};
    }
    if (IsErrorValue(text)) {
        return {.state = ECell::Bad, .why = "the sheet shows an error"};
    }
    if (auto plain = ReadPlainCode(text, system)) {
        return *std::move(plain);
    }
    const std::vector<SCandidate> codes = FindCodes(text);
    if (!codes.empty()) {
        const bool metric = system == ESizeSystem::Metric;
        const auto wanted = std::find_if(codes.begin(), codes.end(), [&](const SCandidate& code) {
            return code.metric == metric;
        });
        const SCandidate& code = wanted == codes.end() ? codes.front() : *wanted;
        return {.state = ECell::Value, .size = std::string(code.code) + LetterOf(code.metric)};
    }
    if (text.size() < kMinSizeLength) {
        return {.state = ECell::Bad, .why = "shorter than four characters"};
    }
    return {.state = ECell::Value,
            .size = std::string(text) + LetterOf(system == ESizeSystem::Metric),
            .unknown = true};
}

} // namespace zov::batch
