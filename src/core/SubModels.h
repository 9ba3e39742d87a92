// SPDX-License-Identifier: Apache-2.0
/// Composite values of a record: plain structures, compared member by member.
/// Dimensioned members are in SI base units, tolerances are fractions. A double that was never
/// given is none.
#pragma once

#include "core/RecordTypes.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zov {

using TNamePair = std::pair<std::string, std::string>;

/// Circuit of Connector, Package and SPICE records.
struct SCircuitRef
{
    std::string model; ///< sub-circuit name
    std::string file;  ///< SPICE file path; when empty, `text` is the sub-circuit itself
    std::string text;
    bool operator==(const SCircuitRef&) const = default;
};

/// Model definition of a capacitor, inductor or resistor.
struct SDiscreteModel
{
    bool isCircuit = false;
    /// Circuit: file name (relative to the library's folder or absolute) or the circuit's own text;
    /// see IsCircuitText.
    std::string cktDef;
    std::string trackFolder; ///< sub-folder in which the file is looked for; may be empty
    /// Plain values: Rv, Lv, Cv of a capacitor; Resistance and Inductance of an inductor;
    /// Resistance of a resistor.
    std::optional<double> resistance;
    std::optional<double> inductance;
    std::optional<double> capacitance;
    bool operator==(const SDiscreteModel&) const = default;
};

/// True when a `CktDef` holds a sub-circuit and not a file name: it has a line break or begins with
/// ".SUBCKT".
[[nodiscard]] bool IsCircuitText(std::string_view cktDef);
/// Where the file's name stands in a line "S1 1 2 3 2 Model=NAME" of a sub-circuit; empty in other
/// lines.
[[nodiscard]] std::string_view NetworkFileIn(std::string_view line);

enum class EBusType : std::uint8_t
{
    AddCmd,
    Data,
    Ctrl
};
enum class EEdgeType : std::uint8_t
{
    BothEdges,
    RiseEdge,
    FallEdge
};
constexpr std::array<std::string_view, 3> kBusTypeWords = {"AddCmd", "Data", "Ctrl"};
constexpr std::array<std::string_view, 3> kEdgeTypeWords = {"BothEdges", "RiseEdge", "FallEdge"};

struct SBusDefinition
{
    std::string busGroup;
    EBusType busType = EBusType::AddCmd;
    EEdgeType edgeType = EEdgeType::BothEdges;
    std::vector<TNamePair> timingRefs;
    std::vector<std::string> signals;
    std::vector<TNamePair> clocks;
    bool operator==(const SBusDefinition&) const = default;
};

struct SIoModel
{
    std::string ibisFile;
    std::string components;
    bool expIoAndGndTerm = false;
    std::vector<SBusDefinition> buses;
    bool operator==(const SIoModel&) const = default;
};

struct SSpiceRef
{
    std::string file;
    std::string model;
    bool operator==(const SSpiceRef&) const = default;
};

struct SDcRail
{
    std::optional<double> nominalVoltage;
    std::optional<double> upperTolerance;
    std::optional<double> lowerTolerance;
    std::optional<double> totalCurrent;
    std::vector<std::string> pins;
    bool operator==(const SDcRail&) const = default;
};

struct SDcModel
{
    bool worst = false; ///< `PFMode`: "Worst", else "Average"
    std::optional<SSpiceRef> spice;
    std::vector<SDcRail> rails;
    bool operator==(const SDcModel&) const = default;
};

enum class EConvPin : std::uint8_t
{
    Output,
    Gnd,
    Input
};
constexpr std::array<std::string_view, 3> kConvPinWords = {"OUTPUT", "GND", "INPUT"};

struct SConvPin
{
    std::string name;
    EConvPin type = EConvPin::Output;
    std::string pinPair;
    std::optional<double> voltage;
    std::optional<double> current;
    std::optional<double> convertRate;
    std::optional<double> upperTolerance;
    std::optional<double> lowerTolerance;
    bool operator==(const SConvPin&) const = default;
};

struct SDcConvModel
{
    bool useCurrentForInputPins = false;
    std::vector<SConvPin> pins;
    bool operator==(const SDcConvModel&) const = default;
};

struct SFeqImp
{
    double frequencyHz = 0.0;
    double impedanceOhm = 0.0;
    bool operator==(const SFeqImp&) const = default;
};

struct SAcRail
{
    bool pwl = false;                         ///< `Type`: "PWL Model", else "R-L Model"
    std::optional<double> maxPeakRipple;      ///< V
    std::optional<double> transCurDelta;      ///< A
    std::optional<double> shortRiseTimeDelta; ///< s
    std::string positivePins;
    std::string negativePins;
    std::string positiveNet;
    std::string negativeNet;
    std::vector<SFeqImp> points;
    bool operator==(const SAcRail&) const = default;
};

struct SAcModel
{
    std::optional<SSpiceRef> spice;
    std::vector<SAcRail> rails;
    bool operator==(const SAcModel&) const = default;
};

struct SVrmRail
{
    std::optional<double> nominalVoltage;  ///< V
    std::optional<double> outputTolerance; ///< fraction
    std::optional<double> outputCurrent;   ///< A
    std::optional<double> pinResistance;   ///< ohm
    std::vector<std::string> pins;
    bool operator==(const SVrmRail&) const = default;
};

struct SVrmModel
{
    std::optional<SSpiceRef> spice;
    std::vector<SVrmRail> rails;
    bool operator==(const SVrmModel&) const = default;
};

/// All five are required when the model is present.
struct SThermalModel
{
    double powerDissipation = 0.0;
    double thickness = 0.0;
    double thetaJb = 0.0;
    double thetaJc = 0.0;
    double maxDieTemperature = 0.0;
    bool operator==(const SThermalModel&) const = default;
};

struct SThroughInfo
{
    std::string pin1;
    std::string pin2;
    double inductance = 0.0; ///< H
    double resistance = 0.0; ///< ohm
    bool operator==(const SThroughInfo&) const = default;
};

struct SThroughModel
{
    bool notThrough = false;
    std::vector<SThroughInfo> connections;
    bool operator==(const SThroughModel&) const = default;
};

/// Any composite but the discretes' definitions, which records hold flat.
using TSubModel = std::variant<SCircuitRef, SIoModel, SDcModel, SDcConvModel, SAcModel, SVrmModel,
                               SThermalModel, SThroughModel>;

/// The property under which a sub-model is held: Circuit for SCircuitRef and so on.
[[nodiscard]] EPropId PropIdOf(const TSubModel& model);

} // namespace zov
