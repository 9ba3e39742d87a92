// SPDX-License-Identifier: Apache-2.0
#include "app/generator/GuiCall.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace zov::app {
namespace {

constexpr auto kLookEvery = std::chrono::milliseconds(50);

struct SShared
{
    enum class EStep
    {
        Waiting,
        Begun,
        Done,
        GivenUp
    };
    std::mutex mutex;
    std::condition_variable changed;
    EStep step = EStep::Waiting;
};

} // namespace

bool CallInGui(QObject& context, const CJobState& state, const std::function<void()>& call)
{
    using EStep = SShared::EStep;
    const auto shared = std::make_shared<SShared>();
    QMetaObject::invokeMethod(
        &context,
        [shared, &call] { // `call` lives until the step is Done
            {
                const std::lock_guard lock(shared->mutex);
                if (shared->step == EStep::GivenUp) {
                    return;
                }
                shared->step = EStep::Begun;
            }
            call();
            const std::lock_guard lock(shared->mutex);
            shared->step = EStep::Done;
            shared->changed.notify_all();
        },
        Qt::QueuedConnection);
    std::unique_lock lock(shared->mutex);
    while (shared->step != EStep::Done) {
        shared->changed.wait_for(lock, kLookEvery);
        if (shared->step == EStep::Waiting && state.Cancelled()) {
            shared->step = EStep::GivenUp;
            return false;
        }
    }
    return true;
}

} // namespace zov::app
