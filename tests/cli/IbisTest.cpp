// SPDX-License-Identifier: Apache-2.0
#include "cli/Reporting.h"
#include "cli/Zov.h"
#include "support/SourcePaths.h"

namespace zov::test {

class CIbis : public CZovTest
{
protected:
    void SetUp() override
    {
        for (const char* name : {"memory.ibs", "memory-composite.json", "memory-buses.json",
                                 "nvm2_pkg.sp", "nvm2_pdn.sp"}) {
            std::filesystem::copy_file(TextPath(SourceFolder() + "/examples/" + name),
                                       m_folder.Path() / name);
        }
    }
};

TEST_F(CIbis, TreeCountsAndShowsWhatIsThere)
{
    const cli::TJson tree = cli::TJson::parse(
        Zov("ibis tree @/memory.ibs --json --rows --depth 2").out, nullptr, false);
    ASSERT_TRUE(tree.is_object());
    EXPECT_EQ(tree["counts"].dump(),
              R"({"components":1,"pins":7,"models":2,"tables":10,"points":154,"marked":0})");
    EXPECT_EQ(tree["check"]["result"], 0);
    EXPECT_EQ(tree["objects"].back()["name"], "[End]");
    m_folder.Write("bad.ibs", "[IBIS Ver] 5.0\n[Model] m\nC_comp 1p\n[Pulldown]\n0 1 2 3\n0 x\n");
    EXPECT_EQ(Told("ibis tree @/bad.ibs --no-check --rows"),
              "[IBIS Ver]  5.0  #1\n[Model]  m  #2\n  C_comp  1p  #3\n    ! 3: incomplete\n"
              "  [Pulldown]  (1 row)  #4\n    0 1 2 3\n    0 x  #6\n      ! 6: not understood\n"
              "0 components, 0 pins, 1 model, 1 table with 1 row\n= 0");
    EXPECT_EQ(Zov("ibis tree @/bad.ibs").status, 1);
    EXPECT_EQ(Told("ibis tree @/none.ibs"),
              "--\nzov: cannot open '@/none.ibs': no such file or directory\n= 3");
}

TEST_F(CIbis, PinsAskForTheComponentWhenThereAreSeveral)
{
    m_folder.Write("two.ibs", "[IBIS Ver] 5.0\n[Component] a\n[Pin]\n1 s m\n[Component] b\n");
    EXPECT_EQ(Told("ibis pins @/two.ibs"), "--\nzov: the file has several components, choose one "
                                           "by --component: a, b\n= 2");
    EXPECT_EQ(Told("ibis pins @/two.ibs --component b"),
              "--\nzov: Component: b has no [Pin] section.\n= 3");
    EXPECT_EQ(Told("ibis pins @/two.ibs --component a"),
              "pin  signal  model  R  L  C  pulldown  pullup  gnd_clamp  power_clamp  pair  vdiff\n"
              "1    s       m      .  .  .  .         .       .          .            .     .\n"
              "--\nzov: Component: a has no [Pin Mapping] section.\n= 0");
    const cli::TJson pins =
        cli::TJson::parse(Zov("ibis pins @/memory.ibs --json").out, nullptr, false);
    EXPECT_EQ(pins["pins"][3]["pair"]["with"], "A3");
    EXPECT_EQ(pins["pins"][3]["pair"]["inverting"], true);
}

TEST_F(CIbis, ComposedFilesPassTheCheck)
{
    EXPECT_EQ(Told("ibis compose @/memory-composite.json -o @/nvm2_sys.ibs --date 2026-03-01"),
              "@/nvm2_sys.ibs: 7 pins, 2 buffers\n@/nvm2_sys.sp: 3 sub-circuits\n"
              "check: 0 errors, 0 warnings\n= 0");
    EXPECT_EQ(Zov("ibis tree @/nvm2_sys.ibs").status, 0);
    // Elsewhere the files that are named are found, though IBIS 5.0 wants them beside it.
    std::filesystem::create_directory(m_folder.Path() / "out");
    EXPECT_EQ(Zov("ibis compose @/memory-composite.json -o @/out/x.ibs").status, 1);
    const std::string spice = m_folder.Read("out/x.sp");
    EXPECT_NE(spice.find(".include '../nvm2_pkg.sp'\r\n"), std::string::npos);
    EXPECT_NE(spice.find("+file='../memory.ibs' model=dq_io "), std::string::npos);
    EXPECT_EQ(Zov("ibis compose @/memory-composite.json -o @/memory-composite.json").status, 3);
    EXPECT_EQ(Told("ibis compose @/memory-composite.json -o @/x.ibs --date 2026-13-01"),
              "--\nzov: '2026-13-01' is no date, expected YEAR-MONTH-DAY\n= 2");
    m_folder.Write("d.json", "{\"version\": 1, \"component\": \"c\"}");
    EXPECT_EQ(Told("ibis compose @/d.json -o @/x.ibs"), "--\nzov: there are no pins\n= 3");
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "x.ibs"));
}

TEST_F(CIbis, BusesAreWrittenIntoACopy)
{
    EXPECT_EQ(Told("ibis buses @/memory.ibs"),
              "--\nzov: @/memory.ibs: component 'NVM2' has no bus definitions\n= 1");
    EXPECT_EQ(Told("ibis buses @/memory.ibs --set @/memory-buses.json"), "@/memory_Copy1.ibs\n= 0");
    const SRun read = Zov("ibis buses @/memory_Copy1.ibs --component NVM2");
    EXPECT_EQ(read.status, 0);
    m_folder.Write("again.json", read.out);
    EXPECT_EQ(Told("ibis buses @/memory_Copy1.ibs --set @/again.json"), "@/memory_Copy2.ibs\n= 0");
    EXPECT_EQ(m_folder.Read("memory_Copy1.ibs"), m_folder.Read("memory_Copy2.ibs"));
    EXPECT_NE(Zov("check @/memory_Copy1.ibs").status, 1);
    m_folder.Write("bad.json", R"({"version": 1, "buses": [{"name": "a", "type": "b"}]})");
    EXPECT_EQ(Told("ibis buses @/memory.ibs --set @/bad.json"),
              "--\nzov: @/bad.json: buses 1 has 'b' for type\n= 3");
}

} // namespace zov::test
