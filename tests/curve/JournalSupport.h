// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "curve/CurveJournal.h"

#include <string>

namespace zov::curve {

/// Keeps what it is told: a line per command and hook call, with keys or legends.
class CRecordingJournal final : public CCurveJournal
{
public:
    void Command(std::string_view text) override { told += std::string(text) + '\n'; }
    void Hook(const SHookCall& call) override
    {
        told += std::string(call.hook) + ':';
        for (const auto& [key, value] : call.values) {
            told += ' ' + key + '=' + value;
        }
        for (const TCurvePtr& curve : call.curves) {
            told += ' ' + curve->Header().legend;
        }
        told += '\n';
    }
    std::string told;
};

} // namespace zov::curve
