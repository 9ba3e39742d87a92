// SPDX-License-Identifier: Apache-2.0
// Files of every type that the checker reads. The first byte picks the type; the same bytes checked
// twice by one checker must give the same report.
#include "ibischk/parse.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using namespace zov::ibischk;

class CTextLog final : public zov::CLogSink
{
public:
    void Write(std::string_view more) override { text += more; }
    std::string text;
};

std::string ReportOf(CChecker& checker, std::string_view bytes, EFileType type)
{
    const std::string name = "file" + std::string(ExtensionOf(type));
    CMemoryFiles files;
    files.Add(name, bytes);
    CTextLog log;
    checker.SetOutputStream(&log);
    static_cast<void>(checker.CheckFile(name, type, files));
    checker.PrintSummary();
    checker.SetOutputStream(nullptr);
    return log.text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr EFileType kTypes[] = {EFileType::Ibs,        EFileType::Pkg, EFileType::Ebd,
                                    EFileType::Ami,        EFileType::Ims, EFileType::Emd,
                                    EFileType::Parameters, EFileType::Ems};
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const EFileType type = kTypes[data[0] % std::size(kTypes)];
    CChecker checker;
    if (ReportOf(checker, bytes, type) != ReportOf(checker, bytes, type)) {
        std::abort();
    }
    return 0;
}
