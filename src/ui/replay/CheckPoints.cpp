// SPDX-License-Identifier: Apache-2.0
#include "ui/replay/CheckPoints.h"

#include "base/File.h"
#include "ui/replay/CheckPointText.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/WidgetState.h"

#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include <fmt/format.h>

namespace zov::ui::replay {
namespace {

constexpr double kPictureTolerance = 0.001; ///< share of pixels: a blinking cursor is no change

QString Text(const std::filesystem::path& path)
{
    return QString::fromStdString(PathText(path));
}

} // namespace

CCheckPoints::CCheckPoints(std::filesystem::path record, const SReplayOptions& options,
                           CLogSink& log, FClock clock)
    : m_record(std::move(record))
    , m_options(options)
    , m_log(log)
    , m_clock(std::move(clock))
{
}

bool CCheckPoints::IsWatchPoint(const SRecordedEvent& event)
{
    return event.isCheckPoint && event.extraInfo == kWatchPointMark;
}

std::filesystem::path CCheckPoints::GoldenOf(const SRecordedEvent& event) const
{
    const std::string name =
        event.extraInfo.empty()
            ? fmt::format("{}_CheckPoint{}.ckp", PathText(m_record.stem()), m_passed + m_failed + 1)
            : event.extraInfo;
    const std::filesystem::path path = TextPath(name);
    return path.is_absolute() ? path : m_record.parent_path() / path;
}

std::string CCheckPoints::StateNow(const QWidget& widget) const
{
    return WithRecPath(StateOf(widget).toStdString(), m_options.recPath);
}

bool CCheckPoints::Holds(const SRecordedEvent& event, const QWidget& widget) const
{
    const CResult<std::string> golden = ReadWholeFile(GoldenOf(event));
    return golden.Ok() && SameState(*golden, StateNow(widget), m_options.noOrder);
}

void CCheckPoints::Verify(const SRecordedEvent& event, QWidget& widget)
{
    const std::filesystem::path golden = GoldenOf(event);
    const std::filesystem::path result = CheckPointResult(m_record, m_passed + m_failed + 1);
    const CResult<SVerified> verified =
        VerifyState(golden, result, StateNow(widget), m_options.noOrder);
    bool passed = false;
    if (verified) {
        passed = verified->passed;
        m_log.Write(verified->message);
    } else {
        m_log.Write("Error: " + verified.Error().Full());
    }
    if (m_options.snapCheck) {
        passed = SamePicture(TwinOf(golden, ".png"), widget) && passed;
    }
    if (!passed) {
        SaveSnapshots(*widget.window(),
                      QString::fromStdString(PathText(result.stem())) + QLatin1Char('_'));
    }
    ++(passed ? m_passed : m_failed);
}

void CCheckPoints::Watch(const QWidget& widget)
{
    const std::filesystem::path path = WatchPointResult(m_record, ++m_watched);
    std::error_code ignored; // the write tells
    std::filesystem::create_directories(path.parent_path(), ignored);
    const CResult<void> written = WriteFileAtomic(path, StateNow(widget));
    m_log.Write(written.Ok()
                    ? fmt::format("Info: Watch point {} has been generated.", PathText(path))
                    : "Error: " + written.Error().Full());
}

bool CCheckPoints::SamePicture(const std::filesystem::path& golden, QWidget& widget) const
{
    const QImage expected = QImage(Text(golden)).convertToFormat(QImage::Format_RGB32);
    const QImage now = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const std::filesystem::path result =
        CheckPointResult(m_record, m_passed + m_failed + 1).replace_extension(".png");
    now.save(Text(result), "PNG");
    int different = 0;
    for (int y = 0; y < now.height() && now.size() == expected.size(); ++y) {
        for (int x = 0; x < now.width(); ++x) {
            different += now.pixel(x, y) != expected.pixel(x, y) ? 1 : 0;
        }
    }
    const bool same = !expected.isNull() && now.size() == expected.size() &&
                      different <= kPictureTolerance * now.width() * now.height();
    const std::string name = PathText(result.filename());
    m_log.Write(same ? fmt::format("Verifying: Passed for {}.", name)
                     : fmt::format("Verifying: Failed for {}, compare the following two files for "
                                   "details:\n\t[Golden]{}\n\t[TestResult]{}",
                                   name, PathText(golden), PathText(result)));
    return same;
}

void CCheckPoints::SaveSnapshots(QWidget& window, const QString& prefix) const
{
    const std::filesystem::path folder = CheckPointResult(m_record, 1).parent_path();
    std::error_code ignored; // without its folder no picture is saved, which is told
    std::filesystem::create_directories(folder, ignored);
    const SLocalTime now = m_clock();
    const std::string name = prefix.toStdString();
    bool saved = window.grab().save(Text(folder / WindowSnapshotName(name, now)), "PNG");
    // Not every platform lets a program look at the screen.
    if (const QPixmap screen = window.screen()->grabWindow(0); !screen.isNull()) {
        saved = screen.save(Text(folder / ScreenSnapshotName(name, now)), "PNG") && saved;
    }
    if (!saved) {
        m_log.Write("Warning: The snapshots cannot be saved in '" + PathText(folder) + "'.");
    }
}

} // namespace zov::ui::replay
