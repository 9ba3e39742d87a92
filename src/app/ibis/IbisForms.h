// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// Makes the dialogs of IBIS files known by the names of their forms. Made by name they show no
/// file.
void RegisterIbisForms();

} // namespace zov::app
