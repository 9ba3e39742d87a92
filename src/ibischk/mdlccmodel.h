// SPDX-License-Identifier: Apache-2.0
/// [C Comp Model]: a circuit in place of a model's C_comp.
#pragma once

#include "ibischk/CircuitBody.h"
#include "ibischk/Tokens.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibischk {

struct SCheck;

/// When the circuit of a block is used.
enum class ECCompMode : std::uint8_t
{
    Unknown,
    All,
    Driving,
    NonDriving
};

struct SCCompBlock
{
    ECCompMode mode = ECCompMode::Unknown;
    bool modeSeen = false; ///< C_comp_model_mode, good or not
    SCircuitBody body;
};

void OpenCCompModel(SCheck& check, const SLine& line);
void TakeCCompModelLine(SCheck& check, const SLine& line);
void CloseCCompModel(SCheck& check);
/// When the model ends: its blocks against each other and against the model.
void CheckCCompModels(SCheck& check);

} // namespace zov::ibischk
