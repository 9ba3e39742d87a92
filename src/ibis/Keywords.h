// SPDX-License-Identifier: Apache-2.0
/// The keywords that become objects. Their numbers are the object side's own and have nothing to do
/// with the checker's codes.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zov::ibis {

enum class EIPKeyword : std::uint8_t
{
    IBISVer = 0,
    CommentChar = 1,
    FileName = 2,
    FileRev = 3,
    Date = 4,
    Source = 5,
    Notes = 6,
    Disclaimer = 7,
    Copyright = 8,
    Component = 9,
    Manufacturer = 10,
    Package = 11,
    Pin = 12,
    PackageModel = 13,
    AlternatePackageModels = 14,
    EndAlternatePackageModels = 15,
    PDNDomain = 16,
    PDNModel = 17,
    EndPDNModel = 18,
    EndPDNDomain = 19,
    PinMapping = 20,
    DiffPin = 21,
    SeriesPinMapping = 22,
    SeriesSwitchGroups = 23,
    NodeDeclarations = 24,
    EndNodeDeclarations = 25,
    CircuitCall = 26,
    EndCircuitCall = 27,
    BeginEMIComponent = 28,
    PinEMI = 29,
    PinDomainEMI = 30,
    EndEMIComponent = 31,
    ModelSelector = 32,
    Model = 33,
    ModelSpec = 34,
    ReceiverThresholds = 35,
    AddSubmodel = 36,
    DriverSchedule = 37,
    TemperatureRange = 38,
    VoltageRange = 39,
    PullupReference = 40,
    PulldownReference = 41,
    POWERClampReference = 42,
    GNDClampReference = 43,
    ExternalReference = 44,
    CCompCorner = 45,
    TTgnd = 46,
    TTpower = 47,
    Pulldown = 48,
    Pullup = 49,
    GNDClamp = 50,
    POWERClamp = 51,
    ISSOPU = 52,
    ISSOPD = 53,
    Rgnd = 54,
    Rpower = 55,
    Rac = 56,
    Cac = 57,
    On = 58,
    Off = 59,
    RSeries = 60,
    LSeries = 61,
    RlSeries = 62,
    CSeries = 63,
    LcSeries = 64,
    RcSeries = 65,
    SeriesCurrent = 66,
    SeriesMOSFET = 67,
    Ramp = 68,
    RisingWaveform = 69,
    CompositeCurrent = 70,
    FallingWaveform = 71,
    TestData = 72,
    RisingWaveformNear = 73,
    FallingWaveformNear = 74,
    RisingWaveformFar = 75,
    FallingWaveformFar = 76,
    DiffRisingWaveformNear = 77,
    DiffFallingWaveformNear = 78,
    DiffRisingWaveformFar = 79,
    DiffFallingWaveformFar = 80,
    TestLoad = 81,
    ExternalModel = 82,
    EndExternalModel = 83,
    AlgorithmicModel = 84,
    EndAlgorithmicModel = 85,
    BeginEMIModel = 86,
    EndEMIModel = 87,
    Submodel = 88,
    SubmodelSpec = 89,
    POWERPulseTable = 90,
    GNDPulseTable = 91,
    ExternalCircuit = 92,
    EndExternalCircuit = 93,
    DefinePackageModel = 94,
    OEM = 95,
    Description = 96,
    NumberOfSections = 97,
    NumberOfPins = 98,
    PinNumbers = 99,
    ModelData = 100,
    ResistanceMatrix = 101,
    Bandwidth = 102,
    Row = 103,
    InductanceMatrix = 104,
    CapacitanceMatrix = 105,
    EndModelData = 106,
    EndPackageModel = 107,
    BeginBoardDescription = 108,
    PinList = 109,
    PathDescription = 110,
    ReferenceDesignatorMap = 111,
    EndBoardDescription = 112,
    End = 113,
    RepeaterPin = 115,
    InitialDelay = 116,
    MergedPins = 117,
    BusLabel = 118,
    DieSupplyPads = 119,
    InterconnectModelGroup = 120,
    EndInterconnectModelGroup = 121,
    InterconnectModelSet = 122,
    EndInterconnectModelSet = 123,
    InterconnectModel = 124,
    EndInterconnectModel = 125,
    None = 126 ///< no keyword
};

class CIPKeyword
{
public:
    CIPKeyword(EIPKeyword identifier, std::string_view text, int parent = -1)
        : m_identifier(identifier)
        , m_parent(parent)
        , m_text(text)
    {
    }
    [[nodiscard]] EIPKeyword Identifier() const { return m_identifier; }
    /// With brackets: "[Pin Mapping]".
    [[nodiscard]] std::string_view Text() const { return m_text; }
    /// -1 for all.
    [[nodiscard]] int Parent() const { return m_parent; }

private:
    EIPKeyword m_identifier;
    int m_parent;
    std::string_view m_text;
};

/// All of them, in the order in which they are searched; built once.
[[nodiscard]] const std::vector<CIPKeyword>& IPKeywords();

/// "[Pin Mapping]"; empty for None.
[[nodiscard]] std::string_view IPKeywordText(EIPKeyword keyword);

/// The keyword of a name between brackets, without regard to case, blank and underscore being one
/// character: "pin_mapping". None when there is none.
[[nodiscard]] EIPKeyword FindIPKeyword(std::string_view name);

} // namespace zov::ibis
