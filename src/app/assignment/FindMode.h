// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace zov::app {

/// What the find dialog compares with the text.
enum class EFindMode
{
    ByKeys,  ///< the text in one of the search keys
    BySchema ///< a wildcard pattern of the model name
};

} // namespace zov::app
