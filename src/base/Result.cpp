// SPDX-License-Identifier: Apache-2.0
#include "base/Result.h"

namespace zov {

std::string SError::Full() const
{
    std::string out;
    if (!pos.file.empty()) {
        out += pos.file + ':';
    }
    if (pos.line != 0) {
        out += (pos.file.empty() ? "line " : "") + std::to_string(pos.line) + ':';
        if (pos.column != 0) {
            out += std::to_string(pos.column) + ':';
        }
    }
    if (!out.empty()) {
        out += ' ';
    }
    return out + text;
}

SError Fail(EErr code, std::string text)
{
    return {code, std::move(text), {}, {}};
}

SError FailAt(EErr code, SSourcePos pos, std::string text)
{
    return {code, std::move(text), std::move(pos), {}};
}

} // namespace zov
