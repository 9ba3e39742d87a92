// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QAbstractItemView;

namespace zov::ui {

/// To be called behind a list's own painting: while it has no row, the hint stands in its middle
/// and says what to do next.
void PaintListHint(QAbstractItemView& list, const QString& hint);

} // namespace zov::ui
