// SPDX-License-Identifier: Apache-2.0
#include "Zov.h"

namespace zov::test {
namespace {

struct LibTruthTest : CZovTest
{
};

TEST_F(LibTruthTest, TellsWhatDiffersAndCountsTheRest)
{
    CZovLibrary library;
    AddCapacitor(library, "good", 1e-7);
    AddCapacitor(library, "half", 1e-7).SetDouble(EPropId::Cv, 3e-8);
    AddCapacitor(library, "pico", 1e-7).SetDouble(EPropId::Cv, 1e-10);
    CZovRcdProps& lost = AddCapacitor(library, "lost", 1e-7);
    lost.SetDiscreteModel({true, "gone.s2p", "", {}, {}, {}});
    library.Add(ERecordType::Ic).SetString(EPropId::ModelName, "U1");
    Save(library, "a.zov");
    EXPECT_EQ(Told("lib truth @/a.zov"),
              "differs: Capacitor 'half': C is 30nF by the plain values of the model, the record "
              "says 100nF: a factor of 3.33\n"
              "unit?: Capacitor 'pico': C is 0.1nF by the plain values of the model, the record "
              "says 100nF: a factor of 1e+03; is the unit right?\n"
              "can't be judged: Capacitor 'lost': file 'gone.s2p' of record 'lost' was not found\n"
              "@/a.zov: 4 discretes, 1 agree, 1 differ, 1 ask for the unit, 0 ask for Series or "
              "Shunt, 1 can't be judged\n= 1");
    const SRun json = Zov("lib truth @/a.zov --json");
    EXPECT_EQ(json.status, 1);
    for (const char* part : {"\"askForUnit\": 1", "\"verdict\": \"differs\"", "\"stated\": 1e-07",
                             "\"text\": \"file 'gone.s2p' of record 'lost' was not found\""}) {
        EXPECT_NE(json.out.find(part), std::string::npos) << part;
    }
    EXPECT_NE(Zov("lib truth @/a.zov --all --units C=pF")
                  .out.find("agrees: Capacitor 'good': C "
                            "100000pF, ESR 10mOhm"),
              std::string::npos);
    EXPECT_EQ(Zov("lib truth @/none.zov").status, 3);
}

} // namespace
} // namespace zov::test
