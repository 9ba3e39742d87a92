// SPDX-License-Identifier: Apache-2.0
/// While one lives, the toolkit's own messages go into a file.
#pragma once

#include <QtGlobal>

#include <filesystem>

namespace zov::ui::replay {

class CToolkitLog
{
public:
    explicit CToolkitLog(const std::filesystem::path& file);
    CToolkitLog(const CToolkitLog&) = delete;
    CToolkitLog& operator=(const CToolkitLog&) = delete;
    ~CToolkitLog();

    /// False: the file can't be written, the messages go nowhere.
    [[nodiscard]] bool Ok() const { return m_ok; }

private:
    QtMessageHandler m_before;
    bool m_ok = false;
};

} // namespace zov::ui::replay
