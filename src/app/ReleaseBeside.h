// SPDX-License-Identifier: Apache-2.0
/// Frees what may be large, such as the objects of a file of 200 MB, beside the window.
#pragma once

#include <memory>
#include <thread>
#include <utility>

namespace zov::app {

/// To be called with the last reference to the object.
inline void ReleaseBeside(std::shared_ptr<const void> object)
{
    if (object) {
        std::thread([kept = std::move(object)]() mutable { kept.reset(); }).detach();
    }
}

} // namespace zov::app
