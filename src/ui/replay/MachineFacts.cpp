// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/MachineFacts.h"

#include "base/Machine.h"
#include "ui/replay/ReplayOptions.h"

#include <QCoreApplication>
#include <QScreen>
#include <QSysInfo>
#include <QWidget>
#include <QWindow>

#include <cstring>
#include <thread>

namespace zov::ui::replay {
namespace {

[[maybe_unused]] constexpr std::int64_t kOldestWindows = 22;
[[maybe_unused]] constexpr std::int64_t kNewestWindows = 30;

/// The code whose name the system's own begins with, the longest of them.
std::int64_t OsCode(const QString& prettyName)
{
#ifdef Q_OS_WIN
    std::int64_t best = kNewestWindows + 1;
    std::size_t length = 0;
    for (std::int64_t code = kOldestWindows; code <= kNewestWindows; ++code) {
        const std::size_t size = std::strlen(OsName(code));
        if (size > length && prettyName.startsWith(QLatin1String(OsName(code)))) {
            best = code;
            length = size;
        }
    }
    return best;
#else
    static_cast<void>(prettyName);
    return 0;
#endif
}

} // namespace

SRecordHeader HeaderOf(const QWidget& main, const FEnvironment& environment)
{
    SRecordHeader header;
    const QString name = QSysInfo::prettyProductName();
    header.osVersion = OsCode(name);
    header.osPrettyName = name.toStdString();
    header.cpuCount = std::thread::hardware_concurrency();
    header.physicalMemory = PhysicalMemoryBytes();
    header.dpi = {main.logicalDpiX(), main.logicalDpiY()};
    if (const QScreen* screen = main.screen()) {
        header.resolution = {screen->size().width(), screen->size().height()};
    }
    header.envVarList = SReplayOptions::EnvVarList(environment);
    header.toolVersion = QCoreApplication::applicationVersion().toStdString();
    header.mainWindowSize = {main.width(), main.height()};
    return header;
}

} // namespace zov::ui::replay
