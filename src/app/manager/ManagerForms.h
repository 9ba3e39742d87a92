// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// Makes the library manager's dialogs known by the names of their forms. Those that work on the
/// open libraries can be made only with a parent in the main frame.
void RegisterManagerForms();

} // namespace zov::app
