// SPDX-License-Identifier: Apache-2.0
/// `zovra -replay FILE [-speed N]`: plays a record and ends the program.
#pragma once

#include <QString>

namespace zov::app {

class CZovMainFrm;

struct SReplayRun
{
    QString file;
    double speed = 1.0;
    QString trouble; ///< why the arguments can't be used; empty: they can
};

/// Takes "-replay FILE" and "-speed N" out of the arguments.
/// @return a file name that is empty when no play is asked for
SReplayRun TakeReplayRun(QStringList& arguments);

/// Begins as soon as the event loop runs. The program's exit status is then 0 when everything was
/// played and every check point passed, 1 otherwise; what went wrong is told on standard error.
/// @return false when the record can't be read, which is told
bool StartReplay(const SReplayRun& run, CZovMainFrm& frame);

} // namespace zov::app
