// SPDX-License-Identifier: Apache-2.0
#include "app/program/ReplayRun.h"

#include "app/manager/MainFrame.h"
#include "base/Environment.h"
#include "base/File.h"
#include "base/Number.h"
#include "base/Sink.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/ReplayBar.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTimer>

#include <cstdio>

namespace zov::app {
namespace {

void Tell(const std::string& text)
{
    std::fprintf(stderr, "zovra: %s\n", text.c_str());
}

/// The value behind an option; a null text when there is none.
QString TakeValue(QStringList& arguments, const QString& option)
{
    const int at = arguments.indexOf(option);
    if (at < 0) {
        return {};
    }
    const QString value = at + 1 < arguments.size() ? arguments[at + 1] : QStringLiteral("");
    arguments.erase(arguments.begin() + at,
                    arguments.begin() + std::min(at + 2, int{arguments.size()}));
    return value;
}

void TellResult(const ui::replay::SPlayResult& result, const std::filesystem::path& record)
{
    std::printf("%s: %d of %d events played, %d check points passed, %d failed\n",
                PathText(record.filename()).c_str(), result.played, result.events,
                result.checkPointsPassed, result.checkPointsFailed);
    if (!result.Good()) {
        const std::filesystem::path log = ui::replay::TwinOf(record, ".playlog");
        Tell("the play failed; its log is " + PathText(log));
        if (const CResult<std::string> text = ReadWholeFile(log)) {
            std::fputs(text->c_str(), stderr);
        }
    }
    std::fflush(stdout);
}

} // namespace

SReplayRun TakeReplayRun(QStringList& arguments)
{
    SReplayRun run;
    const QString file = TakeValue(arguments, QStringLiteral("-replay"));
    const QString speed = TakeValue(arguments, QStringLiteral("-speed"));
    run.file = file;
    if (file.isNull() ? !speed.isNull() : file.isEmpty()) {
        run.trouble = QStringLiteral("usage: zovra -replay FILE [-speed N]");
    } else if (!speed.isNull()) {
        const std::optional<double> number = ParseDouble(speed.toStdString());
        run.speed = number.value_or(-1.0);
        if (run.speed < 0.0) {
            run.trouble =
                QStringLiteral("-speed is '%1', expected a number: 2 plays twice as fast, "
                               "0 without delays")
                    .arg(speed);
        }
    }
    return run;
}

bool StartReplay(const SReplayRun& run, CZovMainFrm& frame)
{
    using namespace ui::replay;
    CFunctionLog log([](std::string_view text) { Tell(std::string(text)); });
    const CResult<SLoadedRecord> loaded =
        LoadRecord(TextPath(run.file.toStdString()), SReplayOptions::Of(ProcessEnvironment()), log);
    if (!loaded) {
        Tell(loaded.Error().Full());
        return false;
    }
    CPlayer& player = frame.ReplayBar().Player();
    QObject::connect(&player, &CPlayer::Finished, &frame, [&player, path = loaded->path] {
        TellResult(player.Result(), path);
        QCoreApplication::exit(player.Result().Good() ? 0 : 1);
    });
    QTimer::singleShot(
        0, &frame, [&player, record = *loaded, speed = run.speed] { player.Play(record, speed); });
    return true;
}

} // namespace zov::app
