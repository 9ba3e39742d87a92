// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// Makes the curve dialogs known by the names of their forms. Made by name they work on no curves.
void RegisterCurveForms();

} // namespace zov::app
