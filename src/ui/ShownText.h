// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <string_view>

namespace zov::ui {

/// An engine's UTF-8 text for the screen.
inline QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace zov::ui
