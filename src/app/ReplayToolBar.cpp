// SPDX-License-Identifier: Apache-2.0
#include "app/ReplayToolBar.h"

#include "app/BackgroundJob.h"
#include "app/Images.h"
#include "ui/replay/ReplayBar.h"

#include <QMainWindow>

namespace zov::app {

ui::replay::CReplayBar* AddReplayToolBar(QMainWindow& frame, const FEnvironment& environment,
                                         CLogSink& log)
{
    auto* bar = new ui::replay::CReplayBar(frame, environment, log);
    bar->setIconSize({20, 20});
    bar->SetIcons([](const QString& name) { return Images().Icon(name); });
    bar->SetBusy([] { return CJobState::AnyAlive(); });
    frame.addToolBar(Qt::TopToolBarArea, bar);
    bar->hide();
    return bar;
}

} // namespace zov::app
