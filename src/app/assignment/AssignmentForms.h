// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// Makes the assignment's dialogs known by the names of their forms. Made by name they work on no
/// library.
void RegisterAssignmentForms();

} // namespace zov::app
