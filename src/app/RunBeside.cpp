// SPDX-License-Identifier: Apache-2.0
#include "app/RunBeside.h"

#include "app/BackgroundJob.h"

#include <QEventLoop>

#include <thread>

namespace zov::app {

void RunBeside(const std::function<void()>& work)
{
    const CJobState running; // a play waits for this work as for any other
    QEventLoop loop;
    std::thread thread([&] {
        work();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    thread.join();
}

} // namespace zov::app
