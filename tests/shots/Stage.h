// SPDX-License-Identifier: Apache-2.0
/// Where pictures of windows are taken: the main frame over the example libraries, and the table of
/// the pictures. A new window is one row in Shots.cpp.
#pragma once

#include "app/manager/MainFrame.h"

#include <QSettings>

#include <functional>
#include <memory>
#include <span>

namespace zov::shots {

class CStage
{
public:
    /// @param files the first as project, others as external libraries
    CStage(const QString& settingsFile, const QStringList& files, bool dark);

    [[nodiscard]] app::CZovMainFrm& Frame() { return *m_frame; }
    void Trigger(unsigned command);
    /// Until nothing is loaded or searched any more and all is painted.
    void Settle();
    /// Writes what the widget shows as `folder`/NAME.png.
    void Save(QWidget& widget, const QString& path);

private:
    QSettings m_layout;
    CMemorySettings m_store;
    std::unique_ptr<app::CZovMainFrm> m_frame;
};

struct SShot
{
    const char* name;
    /// Brings the window up; what is returned is taken and destroyed. Null: the main frame as it
    /// is.
    std::function<std::unique_ptr<QWidget>(CStage& stage)> make;
};
std::span<const SShot> Shots();

} // namespace zov::shots
