// SPDX-License-Identifier: Apache-2.0
/// Work that the caller waits for while the window goes on painting: saving, for example. The user
/// can't change anything meanwhile; clicks and keys wait until it is done.
#pragma once

#include <QString>

#include <functional>

namespace zov::app {

class CJobState;

void RunBeside(const std::function<void()>& work);
/// The same for work that can be ended: when it takes longer a box says what is done and how far it
/// is, with a button that cancels it.
void RunBeside(const QString& what, const std::function<void(CJobState&)>& work);

} // namespace zov::app
