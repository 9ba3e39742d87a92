// SPDX-License-Identifier: Apache-2.0
/// Reports the characters that a file of this format must not hold.
#pragma once

#include "ibischk/LineReader.h"
#include "ibischk/Report.h"

namespace zov::ibischk {

class CIllegalReport final : public CIllegalSink
{
public:
    explicit CIllegalReport(CReport& report)
        : m_report(report)
    {
    }

    void Illegal(const SIllegalCharacter& found) override
    {
        const std::string_view kind = found.code == 0    ? "NUL"
                                      : found.code < 128 ? "control"
                                                         : "non-7-bit ASCII";
        m_report.ErrorAt(found.place, 1917, kind, found.code,
                         found.bufferFull
                             ? ""
                             : "  To fix, save file in MS_DOS format and remove .txt extension.");
    }

private:
    CReport& m_report;
};

} // namespace zov::ibischk
