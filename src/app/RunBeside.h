// SPDX-License-Identifier: Apache-2.0
/// Work that the caller waits for while the window goes on painting: saving, for example. The user
/// can't change anything meanwhile; clicks and keys wait until it is done.
#pragma once

#include <functional>

namespace zov::app {

void RunBeside(const std::function<void()>& work);

} // namespace zov::app
