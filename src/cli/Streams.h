// SPDX-License-Identifier: Apache-2.0
/// Where a command's texts go. Results are for `out`, everything else for `err`; tests hand in
/// strings.
#pragma once

#include <fmt/format.h>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace zov::cli {

class COutput
{
public:
    COutput() = default;
    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;
    virtual ~COutput() = default;

    virtual void Write(std::string_view text) = 0;
    /// False when nobody takes the text any more (a closed pipe, a full disk); long listings stop
    /// then.
    [[nodiscard]] virtual bool Ok() const { return true; }
};

/// Collects what is written.
class CStringOutput final : public COutput
{
public:
    void Write(std::string_view text) override { m_text += text; }
    [[nodiscard]] const std::string& Text() const { return m_text; }

private:
    std::string m_text;
};

struct SStreams
{
    COutput& out;
    COutput& err;
};

/// Formats as {fmt} does and writes the result.
template <class... Args>
void Print(COutput& to, fmt::format_string<Args...> format, Args&&... args)
{
    fmt::memory_buffer buffer;
    fmt::format_to(std::back_inserter(buffer), format, std::forward<Args>(args)...);
    to.Write({buffer.data(), buffer.size()});
}

/// Exit status of the program; the values are a promise to scripts.
enum EExit : int
{
    kExitGood = 0,
    kExitNotRight = 1, ///< done, and what was asked about is not right: things differ, faults found
    kExitUsage = 2,
    kExitFile = 3, ///< an input could not be read or an output not written
    kExitInPart = 4,
    kExitBug = 70
};

} // namespace zov::cli
