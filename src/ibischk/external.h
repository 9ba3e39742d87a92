// SPDX-License-Identifier: Apache-2.0
/// The body of [External Model] and [External Circuit], line by line and as a whole.
///
///     BeginExternal(check, external);
///     TakeExternalLine(check, line);      // every data line
///     CloseExternal(check);
#pragma once

#include "ibischk/cmn.h"

namespace zov::ibischk {

/// First numbers of the body's rules.
constexpr int kExternalModel = 2300;
constexpr int kExternalCircuit = 2400;

/// The body that is open: of the model, or the last circuit.
[[nodiscard]] SExternal& OpenExternal(SCheck& check);
/// kExternalModel or kExternalCircuit.
[[nodiscard]] int ExternalBase(const SCheck& check);

void TakeExternalLine(SCheck& check, const SLine& line);
/// D_to_A and A_to_D lines, `tokens` behind the name.
void TakeConverter(SCheck& check, const SLine& line, const CTokens& tokens, bool toAnalog);
/// What needs the whole body.
void CloseExternal(SCheck& check);
void CheckConverters(SCheck& check, const SExternal& external);

/// Typ, Min, Max as 0, 1, 2; 3 for another word.
[[nodiscard]] std::size_t ExternalCorner(std::string_view word);
constexpr std::size_t kNoCorner = 3;

/// D_drive, D_enable, D_receive, D_switch.
[[nodiscard]] bool IsDigitalPort(std::string_view name);

} // namespace zov::ibischk
