// SPDX-License-Identifier: Apache-2.0
/// Every message of the import log: a minimal text, the words, and whether the record stays.
#include "core/ExchangeSupport.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

struct SCase
{
    const char* group;
    const char* content;
    std::vector<std::string> log;
    std::size_t added;
};

const char* const kCap = R"(<Capacitor ModelName="C1" Size="0402" SizeUnit="0" )";

std::vector<SCase> DiscreteCases()
{
    return {
        {"Capacitors",
         R"(<Capacitor Size="0402" ModelType="1" Cnom="1nF"/>)",
         {"[Error] Capacitor: 'ModelName' required\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="0402" Cnom="1nF"/>)",
         {"[Error] 'C1' Capacitor: 'ModelType' required\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="0402" ModelType="1"/>)",
         {"[Error] 'C1' Capacitor: 'Cnom' required\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" ModelType="1" Cnom="1nF"/>)",
         {"[Error] 'C1' Capacitor: 'Size' required\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="402" SizeUnit="0" ModelType="1" Cnom="1nF"/>)",
         {"[Error] 'C1' Capacitor: incorrect size '402' found"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="0402" ModelType="0" CktDef="no.s2p" Cnom="1nF"/>)",
         {"[WARNING] Capacitor: Cannot locate file 'no.s2p'\r\n"},
         1},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="0402" ModelType="1" Cnom="1 nOhm"/>)",
         {"[WARNING] 'C1' Capacitor: 'Cnom' cannot be read: '1 nOhm'\r\n",
          "[Error] Capacitor \"C1\": invalid content\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1" Size="0402" ModelType="2" Cnom="1nF"/>)",
         {"[WARNING] 'C1' Capacitor: 'ModelType' cannot be read: '2'\r\n",
          "[Error] Capacitor \"C1\": invalid content\r\n"},
         0},
        {"Capacitors",
         R"(<Capacitor ModelName="C1"/>)",
         {"[Error] 'C1' Capacitor: 'ModelType' required\r\n",
          "[Error] 'C1' Capacitor: 'Cnom' required\r\n",
          "[Error] 'C1' Capacitor: 'Size' required\r\n"},
         0},
        {"Inductors",
         R"(<Inductor Inductance="1nH"/>)",
         {"[Error] Inductor: 'ModelName' required\r\n"},
         0},
        {"Inductors",
         R"(<Inductor ModelName="L1" ModelType="RL" Resistance="1Ohm"/>)",
         {"[Error] 'L1' Inductor: 'Inductance' required\r\n"},
         0},
        {"Inductors",
         R"(<Inductor ModelName="L1" Inductance="x"/>)",
         {"[WARNING] 'L1' Inductor: 'Inductance' cannot be read: 'x'\r\n",
          "[Error] 'L1' Inductor: 'Inductance' required\r\n"},
         0},
        {"Inductors",
         R"(<Inductor ModelName="L1" ModelType="spice" CktDef="no.sp"/>)",
         {"[WARNING] Inductor: Cannot locate file 'no.sp'\r\n"},
         1},
        {"Inductors",
         R"(<Inductor ModelName="L1" ModelType="rl" Inductance="1nH" MaxCurrent="?"/>)",
         {"[WARNING] 'L1' Inductor: 'MaxCurrent' cannot be read: '?'\r\n"},
         1},
        {"Resistors",
         R"(<Resistor ModelType="R" Resistance="1Ohm"/>)",
         {"[WARNING] Resistor: 'ModelName' required\r\n"},
         1},
        {"Resistors",
         R"(<Resistor ModelName="R1" ModelType="R"/>)",
         {"[Error] 'R1' Resistor: 'Resistance' required\r\n"},
         0},
        {"Resistors",
         R"(<Resistor ModelName="R1" ModelType="SPICE" CktDef="no.sp"/>)",
         {"[WARNING] Inductor: Cannot locate file 'no.sp'\r\n"},
         1},
        {"Resistors",
         R"(<Resistor ModelName="R1" ModelType="RLC" Resistance="1Ohm"/>)",
         {"[WARNING] 'R1' Resistor: 'ModelType' cannot be read: 'RLC'\r\n",
          "[Error] Resistor \"R1\": invalid content\r\n"},
         0},
    };
}

#define ZOV_IC(content) "<IC ModelName=\"U1\">" content "</IC>"
#define ZOV_VRM(content) "<VRM ModelName=\"V1\"><VRM>" content "</VRM></VRM>"
#define ZOV_AC(attributes) ZOV_IC("<AC_MODEL><PowerRail " attributes "/></AC_MODEL>")

std::vector<SCase> PowerCases()
{
    return {
        {"VRMs", "<VRM/>", {"[Error] VRM Model: 'ModelName' required\r\n"}, 0},
        {"VRMs",
         ZOV_VRM("<PowerRail/>"),
         {"[Error] 'V1' VRM Model: 'NominalVoltage' required\r\n"},
         0},
        {"VRMs",
         ZOV_VRM(R"(<PowerRail NominalVoltage="1V"><Pin/></PowerRail>)"),
         {"[Error] 'V1' VRM Model: Pin 'Name' required\r\n"},
         0},
        {"VRMs",
         ZOV_VRM(R"(<SPICE model="m"/>)"),
         {"[Error] 'V1' VRM Model: SPICE 'File' required\r\n"},
         0},
        {"VRMs",
         ZOV_VRM(R"(<SPICE File="no.sp"/>)"),
         {"[WARNING] 'V1' VRM Model: Cannot locate file 'no.sp'\r\n",
          "[WARNING] 'V1' VRM Model: SPICE 'model' required "},
         1},
        {"VRMs",
         ZOV_VRM(R"(<PowerRail NominalVoltage="1V" OutputCurrent="1V"/>)"),
         {"[WARNING] 'V1' VRM Model: 'OutputCurrent' cannot be read: '1V'\r\n",
          "[Error] VRM \"V1\": invalid content\r\n"},
         0},
        {"ICs",
         ZOV_IC("<VRM><PowerRail NominalVoltage='1V'><Pin/></PowerRail></VRM>"),
         {"[Error] 'U1' IC/VRM Model: Pin 'Name' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<VRM><PowerRail/></VRM>"),
         {"[Error] 'U1' IC/VRM Model: 'NominalVoltage' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<VRM><SPICE/></VRM>"),
         {"[Error] 'U1' IC/VRM Model: SPICE 'File' required\r\n",
          "[WARNING] 'U1' IC/VRM Model: SPICE 'model' required "},
         0},
        {"ICs",
         ZOV_IC("<VRM><SPICE File='no.sp' model='m'/></VRM>"),
         {"[WARNING] 'U1' IC/VRM Model: Cannot locate file 'no.sp'\r\n"},
         1},
        {"ICs",
         ZOV_IC("<DCCONV_MODEL><Pin Type='GND'/></DCCONV_MODEL>"),
         {"[Error] 'U1' IC/VRM Model: Pin 'Name' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<DC_MODEL><SPICE/></DC_MODEL>"),
         {"[Error] 'U1' DC Model: SPICE 'File' required\r\n",
          "[Error] 'U1' DC Model: SPICE 'model' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<DC_MODEL><SPICE File='no.sp' model='m'/></DC_MODEL>"),
         {"[WARNING] 'U1' DC Model: Cannot locate file 'no.sp'\r\n"},
         1},
        {"ICs",
         ZOV_IC("<DC_MODEL><PowerRail NominalVoltage='1V'><EqualCurrent/></PowerRail></DC_MODEL>"),
         {"[Error] 'U1' DC Model: 'TotalCurrent' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<DC_MODEL><PowerRail><EqualCurrent TotalCurrent='1A'/></PowerRail></DC_MODEL>"),
         {"[Error] 'U1' IC/VRM Model: 'NominalVoltage' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<AC_MODEL><SPICE/></AC_MODEL>"),
         {"[Error] 'U1' AC Model: 'File' required\r\n",
          "[Error] 'U1' AC Model: 'model' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<AC_MODEL><SPICE File='no.sp' model='m'/></AC_MODEL>"),
         {"[WARNING] 'U1' AC Model: Cannot locate file 'no.sp'\r\n"},
         1},
        {"ICs",
         ZOV_AC("MaxPeakRipple='1V' TransCurDelta='1A' ShortRiseTimeDelta='1ns' "
                "PositivePins='1' NegativePins='2'"),
         {"[Error] 'U1' AC Model: Type required\r\n"},
         0},
        {"ICs",
         ZOV_AC("Type='PWL Model'"),
         {"[Error] 'U1' AC Model: MaxPeakRipple required\r\n",
          "[Error] 'U1' AC Model: TransCurDelta required\r\n",
          "[Error] 'U1' AC Model: ShortRiseTimeDelta required\r\n",
          "[Error] 'U1' AC Model: PositivePins required\r\n",
          "[Error] 'U1' AC Model: NegativePins required\r\n"},
         0},
    };
}

std::vector<SCase> OtherCases()
{
    return {
        {"ICs", "<IC/>", {"[Error] IC: 'ModelName' required\r\n"}, 0},
        {"Connectors",
         "<Connector Model='m'/>",
         {"[Error] Connector: 'ModelName' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<IO_MODEL IBIS='no.ibs'/>"),
         {"[WARNING] 'U1' IO Model: Cannot locate file 'no.ibs' \r\n"},
         1},
        {"ICs",
         ZOV_IC("<IO_MODEL><BusDefinition/></IO_MODEL>"),
         {"[Error] 'U1' IO Model: 'BusGroup' required\r\n",
          "[Error] 'U1' IO Model: 'BusType' required\r\n",
          "[Error] 'U1' IO Model: 'EdgeType' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<IO_MODEL><BusDefinition BusGroup='g' BusType='Dat' "
                "EdgeType='RiseEdge'/></IO_MODEL>"),
         {"[WARNING] 'U1' IO Model: 'BusType' cannot be read: 'Dat'\r\n",
          "[Error] 'U1' IO Model: 'BusType' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<Thermal/>"),
         {"[Error] 'U1' Thermal: 'PowerDissipation' required\r\n",
          "[Error] 'U1' Thermal: 'Thickness' required\r\n",
          "[Error] 'U1' Thermal: 'Theta_JB' required\r\n",
          "[Error] 'U1' Thermal: 'Theta_JC' required\r\n",
          "[Error] 'U1' Thermal: 'MaxDieTemperature' required\r\n"},
         0},
        {"ICs",
         ZOV_IC("<Through><ThroughInfo Pin1='1' Pin2='2' Inductance='?'/></Through>"),
         {"[WARNING] 'U1' Through: 'Inductance' cannot be read: '?'\r\n"},
         1},
    };
}

TEST(ExchangeMessages, AreToTheLetterAndDecideWhetherTheRecordStays)
{
    for (const auto& cases : {DiscreteCases(), PowerCases(), OtherCases()}) {
        for (const SCase& c : cases) {
            const SImported in = ImportText(InGroup(c.group, c.content));
            ASSERT_TRUE(in.ok) << c.content << in.error;
            EXPECT_EQ(in.library.Count(), c.added) << c.content;
            std::vector<std::string> expected = c.log;
            expected.push_back("'" + std::to_string(c.added) +
                               "' models are imported from the file path 'lib.zovx'.\r\n");
            EXPECT_EQ(in.log, expected) << c.content;
        }
    }
}

TEST(ExchangeMessages, ARecordWithAnErrorDoesNotTakeItsNeighbours)
{
    const std::string good = std::string(kCap) + R"(ModelType="1" Cnom="1nF"/>)";
    const SImported in = ImportText(InGroup("Capacitors", good + "<Capacitor/>" + good));
    EXPECT_EQ(in.library.Count(), 2U);
    EXPECT_EQ(in.log.back(), "'2' models are imported from the file path 'lib.zovx'.\r\n");
}

} // namespace
} // namespace zov
