// SPDX-License-Identifier: Apache-2.0
/// The keywords of a model, by subject: each file has its functions, mdl.cpp lists them.
#pragma once

#include "ibischk/cmn.h"
#include "ibischk/mdl.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibischk {

/// The model that is open.
[[nodiscard]] SModelInfo& OpenModel(SCheck& check);

/// Data under a keyword that has its values behind it.
void RefuseData(SCheck& check, const SLine& line);
/// One triple behind the current keyword; `typCode` (with the keyword's name) when typ is NA.
std::optional<STriple> TakeKeywordTriple(SCheck& check, const SLine& line, int typCode);
/// One triple of a sub-parameter; `typCode` (with its name) when typ is NA.
std::optional<STriple> TakeNamedTriple(SCheck& check, const SLine& line, CTokens& tokens,
                                       std::string_view name, int typCode);
/// The next word, with 1944 when there is none; the rest of the line is told as surplus.
std::string_view TakeWord(SCheck& check, const SLine& line, CTokens& tokens, std::string_view name);
/// One number of a sub-parameter, with what follows told as surplus.
std::optional<double> TakeSingle(SCheck& check, const SLine& line, CTokens& tokens,
                                 std::string_view name);

/// Facts for the detailed report, with numbers as text.
class CDetails
{
public:
    CDetails& Add(std::string_view name, double value);
    CDetails& Add(std::string_view name, std::string_view value);
    [[nodiscard]] std::span<const SDetail> All() const { return m_all; }

private:
    std::vector<SDetail> m_all;
};

/// "typ", "min", "max"
[[nodiscard]] std::string_view CornerName(std::size_t column);

/// Voltages that the tables refer to, in one column; kAbsent where NA or nowhere given.
struct SRails
{
    double pullup = kAbsent;
    double pulldown = kAbsent;
    double powerClamp = kAbsent;
    double gndClamp = kAbsent;

    [[nodiscard]] bool Complete() const;
    [[nodiscard]] double Low() const;
    [[nodiscard]] double High() const;
    [[nodiscard]] double Span() const { return High() - Low(); }
};
[[nodiscard]] SRails RailsOf(const SModel& model, std::size_t column);

/// Does a pin of a [Diff Pin] pair use the model, directly or by a selector? Known for components
/// in front of it.
[[nodiscard]] bool InDiffPair(SCheck& check, std::string_view model);

// --- supplies, transit times -------------------------------------------------------------------
void OpenSupply(SCheck& check, const SLine& line);
void OpenTransit(SCheck& check, const SLine& line);
void CheckSupplies(SCheck& check);
void CheckTransits(SCheck& check, bool hasGndClamp, bool hasPowerClamp);
void CheckSupplyRequired(SCheck& check, const SModelInfo& info);

// --- terminators and series elements -----------------------------------------------------------
void OpenTerminator(SCheck& check, const SLine& line);
void OpenState(SCheck& check, const SLine& line);
void OpenSeriesElement(SCheck& check, const SLine& line);
/// Enters a table or element into the open state: its place, and how often.
void NoteSeriesElement(SCheck& check, EKeyword code);
void CheckSeries(SCheck& check);

// --- specification, schedule, die capacitance, emission ----------------------------------------
void OpenSpec(SCheck& check, const SLine& line);
void TakeSpec(SCheck& check, const SLine& line);
void CheckSpec(SCheck& check);
void OpenSchedule(SCheck& check, const SLine& line);
void TakeSchedule(SCheck& check, const SLine& line);
void CloseSchedule(SCheck& check);
void FinishSchedules(SCheck& check);
void TakeCornerCapacitance(SCheck& check, const SLine& line);
void CheckCornerCapacitance(SCheck& check);
void OpenEmiModel(SCheck& check, const SLine& line);
void TakeEmiModel(SCheck& check, const SLine& line);
void CloseEmiModel(SCheck& check);

// --- when the model ends -----------------------------------------------------------------------
void CheckModelRules(SCheck& check);
void CheckModelTables(SCheck& check);
/// Each I-V table of the model or submodel by itself.
void CheckCurveShapes(SCheck& check);
/// The model's curves against each other.
void CheckConsistency(SCheck& check);

} // namespace zov::ibischk
