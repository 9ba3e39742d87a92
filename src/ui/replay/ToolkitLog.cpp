// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/ToolkitLog.h"

#include "base/File.h"

#include <QString>

#include <memory>
#include <mutex>

namespace zov::ui::replay {
namespace {

struct SToolkitLog
{
    std::mutex mutex;
    std::unique_ptr<CAppendFile> file;
};

SToolkitLog& Log()
{
    static SToolkitLog log;
    return log;
}

void Write(QtMsgType, const QMessageLogContext&, const QString& text)
{
    SToolkitLog& log = Log();
    const std::lock_guard lock(log.mutex);
    if (log.file) {
        log.file->Append(text.toStdString() + '\n');
    }
}

} // namespace

CToolkitLog::CToolkitLog(const std::filesystem::path& file)
{
    Log().file = std::make_unique<CAppendFile>(file);
    m_ok = Log().file->Ok();
    m_before = qInstallMessageHandler(Write);
}

CToolkitLog::~CToolkitLog()
{
    qInstallMessageHandler(m_before);
    const std::lock_guard lock(Log().mutex);
    Log().file.reset();
}

} // namespace zov::ui::replay
