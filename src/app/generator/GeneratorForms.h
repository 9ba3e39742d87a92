// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// Makes the generator's dialogs known by the names of their forms. Made by name they work on no
/// library.
void RegisterGeneratorForms();

} // namespace zov::app
