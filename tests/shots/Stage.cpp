// SPDX-License-Identifier: Apache-2.0
#include "Stage.h"

#include "app/manager/CommandIds.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPixmap>
#include <QThread>

namespace zov::shots {

CStage::CStage(const QString& settingsFile, const QStringList& files, bool dark)
    : m_layout(settingsFile, QSettings::IniFormat)
    , m_frame(std::make_unique<app::CZovMainFrm>(m_layout, m_store,
                                                 [](const char*) { return std::nullopt; }))
{
    Trigger(dark ? app::ID_THEME_DARK : app::ID_THEME_LIGHT);
    m_frame->resize(1280, 800);
    m_frame->OpenAtStart(files);
    m_frame->show();
    Settle();
}

void CStage::Trigger(unsigned command)
{
    m_frame->Actions().Action(command)->trigger();
}

void CStage::Settle()
{
    constexpr int kMost = 10000;
    QElapsedTimer clock;
    clock.start();
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    } while (!m_frame->IsIdle() && clock.elapsed() < kMost);
    for (int i = 0; i < 20; ++i) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
}

void CStage::Save(QWidget& widget, const QString& path)
{
    const QImage image = widget.grab().toImage().convertToFormat(QImage::Format_RGB888);
    if (!image.save(path, "PNG", 0)) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

} // namespace zov::shots
