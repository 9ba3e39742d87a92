// SPDX-License-Identifier: Apache-2.0
#include "batch/BatchLog.h"

namespace zov::batch {

CBatchLog::CBatchLog(const std::filesystem::path& path)
    : m_file(path)
{
}

void CBatchLog::Write(std::string_view text)
{
    if (text.ends_with('\n')) {
        m_file.Append(text);
        return;
    }
    m_line.assign(text);
    m_line += '\n';
    m_file.Append(m_line);
}

} // namespace zov::batch
