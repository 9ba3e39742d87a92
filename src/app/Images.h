// SPDX-License-Identifier: Apache-2.0
/// The program's images.
#pragma once

#include "ui/ImageList.h"

namespace zov::app {

const ui::CQtImageList& Images();

} // namespace zov::app
