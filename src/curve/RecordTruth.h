// SPDX-License-Identifier: Apache-2.0
/// Whether what a record states (C, L, R, ESR, ESL, resonance) is what its own model says: a
/// Touchstone file, in series or shunt, or plain R, L and C. Formulas and limits:
/// docs/truth-check.md.
///
///     CTruthChecker checker(libraryFolder, units);
///     const SRecordTruth truth = checker.Check(record);
///     if (truth.verdict == ETruth::AskUnit) Tell(truth.text);
#pragma once

#include "base/Result.h"
#include "core/ZovRcdProps.h"
#include "network/TwoTerminal.h"

#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zov::curve {

enum class ETruth : std::uint8_t
{
    Unjudged,     ///< nothing to compare, or no way to; the text says why
    Agrees,       ///< within a factor of two
    Differs,      ///< by a factor of two or more
    AskUnit,      ///< by a power of ten: the unit is in doubt
    AskConnection ///< the file fits as a series element and is taken as shunt, or the other way
};
/// "can't be judged", "agrees", "differs", "unit?", "series or shunt?"
[[nodiscard]] std::string_view WordOf(ETruth verdict);

/// One quantity; values in SI units, none where the record or the model has none.
struct STruthItem
{
    std::string_view name; ///< "C", "ESR", "ESL", "L", "R", "resonance"
    EQuantity quantity = EQuantity::None;
    std::optional<double> stated;
    std::optional<double> model;
    ETruth verdict = ETruth::Unjudged;
};

struct SRecordTruth
{
    ETruth verdict = ETruth::Unjudged; ///< the worst of the items
    std::vector<STruthItem> items;     ///< the first is what the part is about: C, L or R
    std::string file;                  ///< as the record names it; empty for plain values
    std::optional<network::EConnection> connection; ///< what the file's data looks like
    std::string text;                               ///< what to tell; empty when it agrees

    /// Null when there is no such item.
    [[nodiscard]] const STruthItem* Find(std::string_view name) const;
};

/// Agrees: the ratio is inside 1/2 to 2. AskUnit: it is within a factor of 10^0.15 (1.41) of a
/// power of ten other than 1. Differs: any other. Unjudged unless both are above 0.
[[nodiscard]] ETruth Compare(std::optional<double> stated, std::optional<double> model);

/// Keeps what it read from files, by path and time of the last change. Not for several threads at
/// once.
class CTruthChecker
{
public:
    /// @param folder of the library, which file names start from
    /// @param units  of values in texts
    CTruthChecker(std::filesystem::path folder, const CDisplayUnits& units);

    [[nodiscard]] SRecordTruth Check(const CZovRcdProps& record);

private:
    struct SHypothesis
    {
        network::EConnection connection = network::EConnection::OnePort;
        network::SPartValues values;
    };
    struct SFileFacts
    {
        std::filesystem::file_time_type changed;
        std::string fault;             ///< why it gives no values
        std::vector<SHypothesis> ways; ///< the better one first
        network::EPartKind looksLike = network::EPartKind::Unknown;
        double fromHz = 0.0;
        double toHz = 0.0;
    };

    const SFileFacts& FactsOf(const std::filesystem::path& path, network::EPartKind kind);
    void CheckFile(const CZovRcdProps& record, const SDiscreteModel& model, SRecordTruth& truth);
    void CheckPlain(const CZovRcdProps& record, const SDiscreteModel& model, SRecordTruth& truth);
    [[nodiscard]] std::string Shown(const STruthItem& item, double value) const;
    [[nodiscard]] std::string WhyNoValue(const SRecordTruth& truth, const SFileFacts& facts) const;
    void Conclude(SRecordTruth& truth, const std::string& source) const;

    std::filesystem::path m_folder;
    CDisplayUnits m_units;
    std::unordered_map<std::string, SFileFacts> m_files;
};

} // namespace zov::curve
