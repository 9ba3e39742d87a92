// SPDX-License-Identifier: Apache-2.0
/// [Model]: types, sub-parameters, supplies, series and terminator keywords, and what is kept of a
/// model for checks of the whole file.
#pragma once

#include "ibischk/Family.h"
#include "ibischk/Types.h"
#include "ibischk/Values.h"
#include "ibischk/algmod.h"
#include "ibischk/circuit.h"
#include "ibischk/crv.h"
#include "ibischk/ramp.h"
#include "ibischk/rcvth.h"
#include "ibischk/submdl.h"
#include "ibischk/wvfrm.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace zov::ibischk {

enum class EModelType : std::uint8_t
{
    Unknown,
    Input,
    Output,
    InOut,
    ThreeState,
    OpenDrain,
    InOutOpenDrain,
    OpenSink,
    InOutOpenSink,
    OpenSource,
    InOutOpenSource,
    InputEcl,
    OutputEcl,
    InOutEcl,
    ThreeStateEcl,
    Terminator,
    Series,
    SeriesSwitch,
    InputDiff,
    OutputDiff,
    InOutDiff,
    ThreeStateDiff
};

enum class EDrives : std::uint8_t
{
    Nothing,
    Both,     ///< push-pull
    DownOnly, ///< open sink
    UpOnly,   ///< open source
    External  ///< true differential: driven by an external model
};

/// What a model type is and does.
struct SModelType
{
    EModelType type;
    std::string_view name;
    EVersion since;
    bool receives;
    EDrives drives;
    bool canDisable;
    double vinl; ///< default, volt
    double vinh; ///< default, volt

    [[nodiscard]] bool Drives() const { return drives != EDrives::Nothing; }
    [[nodiscard]] bool IsSeries() const
    {
        return type == EModelType::Series || type == EModelType::SeriesSwitch;
    }
    [[nodiscard]] bool IsEcl() const
    {
        return type >= EModelType::InputEcl && type <= EModelType::ThreeStateEcl;
    }
    [[nodiscard]] bool IsDiff() const { return type >= EModelType::InputDiff; }
};
/// The row of a type; that of Unknown does nothing.
[[nodiscard]] const SModelType& ModelTypeRow(EModelType type);
/// By the name in a file, without regard to case; null when there is no such type.
[[nodiscard]] const SModelType* FindModelType(std::string_view name);

struct SScheduleRow
{
    std::string_view model;
    double delay[4]; ///< rise on, rise off, fall on, fall off; seconds; kAbsent for NA
    SPlace place;
};

/// What is kept of every model until the end of the file.
struct SModelInfo
{
    std::string_view name;
    SPlace place;
    EModelType type = EModelType::Unknown;
    bool used = false; ///< reached from a pin, selector, schedule or test
    bool hasExternalModel = false;
    bool hasExternalReference = false;
    bool hasAlgorithmicModel = false;
    bool hasThresholds = false;
    SPlace bothThresholds; ///< of [Receiver Thresholds] with single-ended and differential ones
    bool hasGndClamp = false;
    bool hasPowerClamp = false;
    bool hasPulldown = false;
    bool hasPullup = false;
    double cCompTyp = kAbsent; ///< farad
    STriple voltage;           ///< [Voltage Range]
    double vinl = kAbsent;
    double vinh = kAbsent;
    bool fromSchedule = false; ///< named by a [Driver Schedule]
    SPlace schedulePlace;
    std::vector<SScheduleRow> schedule;
    std::vector<SAddSubmodel> submodels;

    [[nodiscard]] const SModelType& Type() const { return ModelTypeRow(type); }
};

/// Models that pins of [Diff Pin] pairs use, gathered when first asked for.
struct SDiffModels
{
    std::size_t counted = 0; ///< components and pairs that were there
    std::vector<std::string_view> names;
};

/// Elements of a series model since its last [On] or [Off].
struct SSeriesState
{
    EKeyword state = EKeyword::NotKey; ///< On, Off; NotKey in front of the first
    SPlace place;
    std::uint32_t seen = 0; ///< bit i: the i-th series keyword
    std::size_t tables = 0; ///< of [Series MOSFET]
    double rSeries = kAbsent;
    double firstVds = kAbsent;
    std::vector<double> vds;
};

/// The model that is open, with all its tables. One object serves all models of a file, so that the
/// memory of a check is that of the largest.
struct SModel
{
    std::uint64_t seen = 0; ///< sub-parameters, by their rows
    double vinl = kAbsent;
    double vinh = kAbsent;
    double vmeas = kAbsent;
    double vref = kAbsent;
    double rref = kAbsent;
    double cref = kAbsent;
    double rrefDiff = kAbsent;
    double crefDiff = kAbsent;
    bool enable = false;
    STriple cornerCComp[5]; ///< of [C Comp Corner], as cComp
    std::uint64_t cornerSeen = 0;
    SPlace cornerPlace;
    STriple spec[40]; ///< of [Model Spec], by its rows
    std::uint64_t specSeen = 0;
    SPlace specPlace;
    std::uint64_t emiSeen = 0;
    bool hasTerminator = false;
    std::vector<SSeriesState> series;
    SDiffModels diffModels; ///< kept over Clear
    STriple cComp[5];       ///< total, pullup, pulldown, power clamp, GND clamp; farad
    STriple temperature;
    STriple voltageRange;
    STriple pullupReference;
    STriple pulldownReference;
    STriple powerClampReference;
    STriple gndClampReference;
    STriple externalReference;
    SRamp ramp;
    SReceiverThresholds thresholds;
    SExternal external;
    std::vector<SExecutable> executables;
    std::vector<SCurve> curves; ///< reused: see curveCount
    std::size_t curveCount = 0;
    std::vector<SWaveform> waveforms; ///< reused: see waveformCount
    std::size_t waveformCount = 0;
    SInitialDelay initialDelay;

    /// Ready for the next model; the tables keep their memory.
    void Clear();
    SCurve& NewCurve(EKeyword keyword, SPlace place);
    SWaveform& NewWaveform(EKeyword keyword, SPlace place);
    /// The table of a keyword; null when there is none.
    [[nodiscard]] const SCurve* FindCurve(EKeyword keyword) const;
};

extern const SFamily kMdlFamily;

} // namespace zov::ibischk
