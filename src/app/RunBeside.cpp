// SPDX-License-Identifier: Apache-2.0
#include "app/RunBeside.h"

#include "app/BackgroundJob.h"

#include <QApplication>
#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>

#include <algorithm>
#include <thread>

namespace zov::app {
namespace {

constexpr int kShowAfterMs = 300;
constexpr int kPollMs = 100;
constexpr int kThousand = 1000;

} // namespace

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

void RunBeside(const QString& what, const std::function<void(CJobState&)>& work)
{
    QEventLoop loop;
    CJobState state;
    bool isDone = false;
    std::thread thread([&] {
        work(state);
        const auto end = [&] {
            isDone = true;
            loop.quit();
        };
        QMetaObject::invokeMethod(&loop, end, Qt::QueuedConnection);
    });
    QTimer::singleShot(kShowAfterMs, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!isDone) {
        QProgressDialog box(what, QApplication::translate("RunBeside", "Cancel"), 0, 0,
                            QApplication::activeWindow());
        box.setObjectName(QStringLiteral("WorkBeside"));
        box.setWindowModality(Qt::ApplicationModal);
        box.setMinimumDuration(0);
        // It stays until the work has ended: nothing else may be clicked before.
        QObject::disconnect(&box, &QProgressDialog::canceled, &box, &QProgressDialog::cancel);
        QObject::connect(&box, &QProgressDialog::canceled, &loop, [&state] { state.Cancel(); });
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &box, [&box, &state] {
            if (const int permille = state.Permille(); permille > 0 && !state.Cancelled()) {
                box.setMaximum(kThousand);
                box.setValue(std::min(permille, kThousand - 1)); // the last would close it
            }
        });
        poll.start(kPollMs);
        box.show();
        loop.exec();
    }
    thread.join();
}

} // namespace zov::app
