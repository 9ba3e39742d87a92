// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/CheckPointText.h"

#include "base/File.h"
#include "base/Text.h"
#include "ui/replay/RecordFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

namespace zov::ui::replay {
namespace {

constexpr std::uint64_t kMaxStateBytes = std::uint64_t{256} << 20U;

std::vector<std::string_view> Lines(std::string_view text)
{
    std::vector<std::string_view> lines = Split(text, '\n');
    for (std::string_view& line : lines) {
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
    }
    return lines;
}

CResult<void> WriteInto(const std::filesystem::path& path, std::string_view text)
{
    std::error_code ignored; // the write tells what is wrong with the folder
    std::filesystem::create_directories(path.parent_path(), ignored);
    return WriteFileAtomic(path, text);
}

std::filesystem::path WithSuffix(std::filesystem::path path, const char* suffix)
{
    path += suffix;
    return path;
}

} // namespace

std::string WithoutOrder(std::string_view text)
{
    std::vector<std::string_view> lines = Lines(text);
    std::ranges::sort(lines);
    std::string out;
    for (const std::string_view line : lines) {
        if (!line.empty()) {
            out.append(line) += '\n';
        }
    }
    return out;
}

bool SameState(std::string_view golden, std::string_view result, bool anyOrder)
{
    return anyOrder ? WithoutOrder(golden) == WithoutOrder(result) : Lines(golden) == Lines(result);
}

std::string WithRecPath(const std::string& state, const std::string& value)
{
    return value.empty() ? state : ReplaceAll(state, value, kRecPathMark);
}

CResult<SVerified> VerifyState(const std::filesystem::path& golden,
                               const std::filesystem::path& result, std::string_view state,
                               bool anyOrder)
{
    RETURN_IF_ERROR(WriteInto(result, state));
    ASSIGN_OR_RETURN(const std::string expected, ReadWholeFile(golden, kMaxStateBytes));
    std::filesystem::path goldenShown = golden;
    std::filesystem::path resultShown = result;
    if (anyOrder) {
        goldenShown = std::filesystem::path(result).replace_extension(".golden.ckp.noorder");
        resultShown = WithSuffix(result, ".noorder");
        RETURN_IF_ERROR(WriteInto(goldenShown, WithoutOrder(expected)));
        RETURN_IF_ERROR(WriteInto(resultShown, WithoutOrder(state)));
    }
    const std::string name = PathText(result.stem());
    if (SameState(expected, state, anyOrder)) {
        return SVerified{true, fmt::format("Verifying: Passed for {}.", name)};
    }
    return SVerified{false,
                     fmt::format("Verifying: Failed for {}, compare the following two files for "
                                 "details:\n\t[Golden]{}\n\t[TestResult]{}",
                                 name, PathText(goldenShown), PathText(resultShown))};
}

} // namespace zov::ui::replay
