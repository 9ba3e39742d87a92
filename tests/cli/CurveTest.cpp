// SPDX-License-Identifier: Apache-2.0
#include "cli/Zov.h"

namespace zov::test {

class CCurveCommands : public CZovTest
{
protected:
    CCurveCommands()
    {
        m_folder.Write("p.cur", "*******Frequency Domain Parameters*********\n"
                                "*[tool=x][n=2]\n"
                                "**************Curve***************\n"
                                "C1\tZ0_real_imag\tREAL\tfirst\n"
                                "Freq(Hz)\tReal(Ohm)\tImag(Ohm)\n"
                                "1e6 0.03 -0.04\n1e7 0.1 0\n"
                                "**************End***************\n"
                                "**************Curve***************\n"
                                "C2 Z0_real_imag DASH second\n"
                                "1e6 1 0\n1e7 10 0\n"
                                "**************End***************\n");
        m_folder.Write("odd.cur", "*******Voltage*********\n"
                                  "**************Curve***************\n"
                                  "DOT rail\n1 2\njunk\n3 4\nmore\n");
    }
};

TEST_F(CCurveCommands, InfoListsCurves)
{
    EXPECT_EQ(Told("curve info @/p.cur @/odd.cur"),
              "@/p.cur\n  kind    frequency-domain parameters\n  class   impedance\n"
              "  unit    ohm\n  curves  2\n"
              "    $1  C1  Z0_real_imag  'first'  REAL  2 points  x 1000000 to 10000000\n"
              "    $2  C2  Z0_real_imag  'second'  DASH  2 points  x 1000000 to 10000000\n"
              "@/odd.cur\n  kind    voltage\n  curves  1\n    $1  rail  DOT  2 points  x 1 to 3\n"
              "--\n@/odd.cur:5: no point in this line; 2 lines left out\n= 4");
    EXPECT_EQ(Told("curve info @/no.cur"),
              "--\nzov: @/no.cur cannot be opened.\n     cannot open '@/no.cur': no such file or "
              "directory\n= 3");
    const SRun json = Zov("curve info @/p.cur --json");
    EXPECT_EQ(json.status, 0);
    EXPECT_NE(json.out.find("\"unit\": \"ohm\""), std::string::npos) << json.out;
    EXPECT_NE(json.out.find("\"key\": \"tool\""), std::string::npos) << json.out;
}

TEST_F(CCurveCommands, ExportWritesCurvesAndText)
{
    EXPECT_EQ(Told("curve export @/p.cur @/o.csv"), "@/o.csv: 2 curves\n= 0");
    EXPECT_EQ(m_folder.Read("o.csv"), "curve,x,real,imag\nC1,1e+06,0.03,-0.04\nC1,1e+07,0.1,0\n"
                                      "C2,1e+06,1,0\nC2,1e+07,10,0\n");
    EXPECT_EQ(Told("curve export @/odd.cur @/v.csv"),
              "@/v.csv: 1 curve\n--\n@/odd.cur:5: no point in this line; 2 lines left out\n= 4");
    EXPECT_EQ(m_folder.Read("v.csv"), "curve,x,value\nrail,1,2\nrail,3,4\n");
    EXPECT_EQ(Told("curve export @/p.cur @/o.CUR --curve C2 --curve $1"), "@/o.CUR: 2 curves\n= 0");
    EXPECT_EQ(Told("curve export @/o.CUR @/again.csv --curve C2"), "@/again.csv: 1 curve\n= 0");
    EXPECT_EQ(m_folder.Read("again.csv"), "curve,x,real,imag\nC2,1e+06,1,0\nC2,1e+07,10,0\n");
    EXPECT_EQ(Told("curve export @/p.cur @/o.cur --curve C3"),
              "--\nzov: there is no curve 'C3'\n= 1");
    EXPECT_EQ(Told("curve export @/p.cur @/o.txt"),
              "--\nzov: '@/o.txt' can't be written, expected a .cur or .csv file\n= 2");
    EXPECT_EQ(Zov("curve export @/p.cur @/none/o.cur").status, 3);
}

TEST_F(CCurveCommands, ImpedancesOfALibraryBecomeCurves)
{
    CZovLibrary library;
    SDiscreteModel model;
    model.resistance = 0.03;
    model.inductance = 1e-9;
    model.capacitance = 100e-9;
    AddCapacitor(library, "C100n", 100e-9).SetDiscreteModel(model);
    SDiscreteModel file;
    file.isCircuit = true;
    file.cktDef = "gone.s2p";
    AddCapacitor(library, "Circuit", 1e-6).SetDiscreteModel(file);
    library.Add(ERecordType::Ic).SetString(EPropId::ModelName, "IC100");
    Save(library, "lib.zov");

    EXPECT_EQ(
        Told("curve impedance @/lib.zov @/z.csv --model c100* --from 1MHz --to 1e9 --points 2"),
        "@/z.csv: 1 curve\n= 0");
    EXPECT_EQ(m_folder.Read("z.csv"), "curve,x,real,imag\n"
                                      "C100n,1e+06,0.03,-1.5852662456117739\n"
                                      "C100n,1e+09,0.03,6.281593757748668\n");
    EXPECT_EQ(Told("curve impedance @/lib.zov @/z.cur"),
              "@/z.cur: 1 curve\n--\nzov: file 'gone.s2p' of record 'Circuit' was not found\n= 4");
    EXPECT_EQ(Told("curve info @/z.cur"),
              "@/z.cur\n  kind    frequency-domain parameters\n  unit    ohm\n  curves  1\n"
              "    $1  C100n  Z_real_imag  'C100n'  REAL  401 points  x 1000 to 10000000000\n= 0");
    EXPECT_EQ(Told("curve impedance @/lib.zov @/m.csv --model C100n --magnitude --points 1"),
              "@/m.csv: 1 curve\n= 0");
    EXPECT_EQ(m_folder.Read("m.csv").substr(0, 21), "curve,x,value\n|C100n|");
    struct SCase
    {
        const char* line;
        const char* told;
    };
    for (const SCase& c : {
             SCase{"@/z.cur --model IC*",
                   "zov: record 'IC100' is neither a discrete part nor a VRM\n"
                   "zov: no impedance to write; @/z.cur not written\n= 1"},
             SCase{"@/z.cur --from 2k --to 1k",
                   "zov: no frequencies from 2k to 1k, expected 0 < from <= to and a point\n= 2"},
             SCase{"@/z.cur --from 2V", "zov: '2V' is no frequency, expected such as 10kHz or "
                                        "1e6\n= 2"},
             SCase{"@/z.cur --points 99999999", "zov: more than 10000000 points\n= 2"},
             SCase{"@/z.cur --magnitude",
                   "zov: --magnitude needs a .csv file; a .cur file holds both parts\n= 2"},
             SCase{"@/z.xls", "zov: '@/z.xls' can't be written, expected a .cur or .csv file\n= 2"},
         }) {
        EXPECT_EQ(Told(std::string("curve impedance @/lib.zov ") + c.line),
                  std::string("--\n") + c.told);
    }
    EXPECT_EQ(Zov("curve impedance @/none.zov @/z.cur").status, 3);
}

TEST_F(CCurveCommands, CalcGivesValuesListsAndCurves)
{
    struct SCase
    {
        const char* line;
        const char* told;
    };
    for (const SCase& c : {
             SCase{"calc 1+2*3", "7\n= 0"},
             SCase{"calc -D a=b*2 -D b=1e-3 a+1", "1.002\n= 0"},
             SCase{"calc -D f(x,y)=x-y*k -D k=2 f(10,3)", "4\n= 0"},
             SCase{"calc -2^2 --postfix", "2\n2\n^\n-@\n= 0"},
             SCase{"calc -D a=3 -- -a", "-3\n= 0"},
             SCase{"calc 1/0", "--\nzov: divide by 0.\n= 1"},
             SCase{
                 "calc p -D p=q -D q=p",
                 "--\nzov: Parameter \"p\" can't be evalutated.\n     p: Parameter \"q\" can't be "
                 "evalutated.\n     q: Parameter \"p\" can't be evalutated.\n     p: its "
                 "expression names itself\n= 1"},
             SCase{"calc 1 -D x", "--\nzov: -D is 'x', expected NAME=VALUE, NAME=EXPRESSION or "
                                  "'NAME(ARGUMENT,...)=EXPRESSION'\n= 2"},
             SCase{"calc 1 -D sin(x)=1",
                   "--\nzov: 'sin' can't be the name of a function or of an argument\n= 2"},
             SCase{"calc mag(C1)*k --over @/p.cur -D k=2", "1e+06\t0.1\n1e+07\t0.2\n= 0"},
             SCase{"calc db(C2) --over @/p.cur", "1e+06\t0\n1e+07\t20\n= 0"},
             SCase{"calc rail --over @/no.cur",
                   "--\nzov: @/no.cur cannot be opened.\n     cannot open '@/no.cur': no such file "
                   "or directory\n= 3"},
             SCase{"calc 2/0.5 --json",
                   "{\n  \"version\": 1,\n  \"expression\": \"2/0.5\",\n  \"value\": 4.0\n}\n= 0"},
         }) {
        EXPECT_EQ(Told(c.line), c.told) << c.line;
    }
}

} // namespace zov::test
