// SPDX-License-Identifier: Apache-2.0
#include "ibischk/Tokens.h"

namespace zov::ibischk {

std::size_t SplitTokens(std::string_view text, std::span<std::string_view> out)
{
    std::size_t count = 0;
    for (CTokens tokens(text); !tokens.AtEnd(); ++count) {
        const std::string_view token = tokens.Next();
        if (count < out.size()) {
            out[count] = token;
        }
    }
    return count;
}

} // namespace zov::ibischk
