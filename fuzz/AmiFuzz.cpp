// SPDX-License-Identifier: Apache-2.0
// Parameter files: the tree and all checks over it. The first byte picks the type.
#include "ibischk/parse.h"

#include <cstdint>
#include <cstdlib>

namespace {

/// Every finding points into the file or nowhere.
class CPlaces final : public zov::ibischk::CFindingSink
{
public:
    explicit CPlaces(std::size_t lines)
        : m_lines(lines)
    {
    }
    void Take(const zov::ibischk::SFinding& finding) override
    {
        if (finding.place.line > m_lines || finding.message.empty()) {
            std::abort();
        }
    }

private:
    std::size_t m_lines;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::ibischk;
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    CMemoryFiles files;
    files.Add("file.ami", bytes);
    CPlaces places(bytes.size() + 1);
    CChecker checker;
    checker.SetOutputStream(nullptr);
    checker.Report().SetFindings(&places);
    static_cast<void>(checker.CheckFile(
        "file.ami", data[0] % 2 == 0 ? EFileType::Ami : EFileType::Parameters, files));
    return 0;
}
