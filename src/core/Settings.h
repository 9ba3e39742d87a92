// SPDX-License-Identifier: Apache-2.0
/// The values of the section "ZOV Settings" as one plain structure, and how their texts are formed.
///
///     CFileSettings store("settings.json");
///     SZovSettings settings = ReadSettings(store, ProcessEnvironment());
///     WriteSettings(settings, store);
#pragma once

#include "base/Environment.h"
#include "core/PreferenceFile.h"
#include "core/SearchOptions.h"
#include "core/SettingsStore.h"
#include "core/Units.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zov {

constexpr std::string_view kZovSection = "ZOV Settings";
/// The variable of the environment that leaves the remembered external libraries closed.
constexpr const char* kForgetLibraries = "KVE_TAVRELY_REMEMBER_EXTERNAL_LIB_DISABLE";

/// A limit beyond which decoupling capacitors are hidden.
struct SHideLimit
{
    bool on = false;
    double limit = 0.0; ///< F or V
    bool operator==(const SHideLimit&) const = default;
};

struct SColumnPlace
{
    std::uint32_t column = 0;
    std::uint32_t position = 0;
    bool operator==(const SColumnPlace&) const = default;
};
struct SColumnOrder
{
    std::uint32_t list = 0;
    std::vector<SColumnPlace> columns;
    bool operator==(const SColumnOrder&) const = default;
};
struct SColumnVisibility
{
    std::uint32_t list = 0;
    std::vector<std::uint32_t> visible;
    bool operator==(const SColumnVisibility&) const = default;
};

struct SZovSettings
{
    CDisplayUnits units;
    /// Of the interface that is in use: "External Library V2" when `guiV2`, else "External
    /// Library".
    std::vector<SListedLibrary> externalLibraries;
    bool autoSaveExternalLibrary = true;
    bool syncModelPath = true;
    SHideLimit capacitanceLess{false, 1e-10};
    SHideLimit capacitanceMore{false, 1.0};
    SHideLimit voltageLess{false, 1e-2};
    SHideLimit voltageMore{false, 500.0};
    bool guiV2 = false;
    std::string veldaServerIp;
    std::int64_t veldaServerPort = 0;
    std::vector<SColumnOrder> columnOrder;
    std::vector<SColumnVisibility> columnVisibility;
    CSearchOptions searchOptions;

    /// What the store holds for "GUI V2"; the environment may force `guiV2` on without touching it.
    bool storedGuiV2 = false;
};

/// All values, each its default when the store lacks it or its text can't be read.
/// `KVE_TAVRELY_ZOV_V2` = 1 forces `guiV2` on; `KVE_TAVRELY_REMEMBER_EXTERNAL_LIB_DISABLE` = 1
/// leaves `externalLibraries` empty.
[[nodiscard]] SZovSettings ReadSettings(const ISettingsStore& store,
                                        const FEnvironment& environment);
/// Writes every value back. "GUI V2" keeps what was stored while only the environment forced it on.
void WriteSettings(const SZovSettings& settings, ISettingsStore& store);

/// "%d=%s;" per quantity, in the order of EQuantity: 1 resistance, 2 inductance, 3 capacitance,
/// 4 voltage, 5 current, 6 time, 7 frequency, 8 power.
[[nodiscard]] std::string FormatUnits(const CDisplayUnits& units);
/// Groups that can't be understood are passed over, quantities that are not named keep their
/// default.
[[nodiscard]] CDisplayUnits ParseUnits(std::string_view text);

/// Per list `%u="`, ` %u %u` per column, `";`
[[nodiscard]] std::string FormatColumnOrder(const std::vector<SColumnOrder>& lists);
/// Reading ends at the first list that can't be understood.
[[nodiscard]] std::vector<SColumnOrder> ParseColumnOrder(std::string_view text);

/// Per list `%u="`, `%u ` per visible column, `";`
[[nodiscard]] std::string FormatColumnVisibility(const std::vector<SColumnVisibility>& lists);
[[nodiscard]] std::vector<SColumnVisibility> ParseColumnVisibility(std::string_view text);

} // namespace zov
