// SPDX-License-Identifier: Apache-2.0
#include "core/ExchangeSupport.h"

#include <gtest/gtest.h>

namespace zov {
namespace {

SImported ImportDecaps(std::string_view items, std::string_view root = "DecapLib")
{
    SImportOptions options;
    options.allowDecapRoot = true;
    const std::string name(root);
    return ImportText("<" + name + ">" + std::string(items) + "</" + name + ">", options);
}

TEST(DecapLibrary, EveryItemBecomesACapacitor)
{
    for (const char* root : {"DecapLib", "PopDecapLib"}) {
        const SImported in = ImportDecaps(
            R"(<DecapLibItem Manuf="M" PartNo="P1" MfgPartNumber="MP" Size="0402" SizeUnit="0" UpTolerance="10"
                LowTolerance="20%" Volt="6.3" TCC="null" Prefer="1" ModelType="1" Cnom="1e-7" PriceA="0.5"
                PriceB="0.4" PriceC="0.3" Description="d" Comment="c"/>
               <PopDecapLibItem PartNo="P2" Size="1005" SizeUnit="1" TCC="X7R" ModelType="0" CktDef="no.s2p" Cnom="1uF"/>
               <DecapLibItem PartNo="P3" Size="1005M" ModelType="S" SParameterPath="no.s2p" TrackFolder="t" Comment="c"/>)",
            root);
        ASSERT_EQ(in.library.Count(), 3U) << in.error << in.log.front();
        EXPECT_EQ(in.log, (std::vector<std::string>{
                              "[WARNING] Decap Library: Cannot locate file 'no.s2p'\r\n",
                              "[WARNING] Decap Library: Cannot locate file 'no.s2p'\r\n",
                              "'3' models are imported from the file path 'lib.zovx'.\r\n"}));
        const CZovRcdProps& first = in.library.At(0);
        EXPECT_EQ(first.Type(), ERecordType::Capacitor);
        EXPECT_EQ(first.Name(), "P1");
        EXPECT_EQ(first.GetString(EPropId::Size), "0402E");
        EXPECT_EQ(first.GetString(EPropId::Description), "d");
        EXPECT_EQ(first.GetString(EPropId::Comment), "c");
        EXPECT_FALSE(first.Has(EPropId::Tcc)) << "NULL means none";
        EXPECT_EQ(first.GetDouble(EPropId::UpTolerance), 0.1);
        EXPECT_EQ(first.GetDouble(EPropId::Cnom), 1e-7);
        EXPECT_EQ(first.GetDouble(EPropId::PriceC), 0.3);
        EXPECT_EQ(in.library.At(1).GetString(EPropId::Size), "1005M");
        const SDiscreteModel model = in.library.At(2).GetDiscreteModel().value();
        EXPECT_EQ(model.cktDef, "no.s2p");
        EXPECT_EQ(model.trackFolder, "t");
        EXPECT_EQ(in.library.At(2).GetString(EPropId::Size), "1005M");
    }
}

TEST(DecapLibrary, MessagesAreToTheLetter)
{
    const struct
    {
        const char* items;
        std::vector<std::string> log;
        std::size_t added;
    } cases[] = {
        {"<DecapLibItem Size='0402' ModelType='1'/>",
         {"[Error] Decap Library: 'PartNo' required\r\n"},
         0},
        {"<DecapLibItem PartNo='P' Size='0402'/>",
         {"[Error] Decap Library: 'ModelType' required\r\n"},
         0},
        {"<DecapLibItem PartNo='P' ModelType='1'/>",
         {"[Error] Decap Library: 'Size' required\r\n"},
         0},
        {"<DecapLibItem PartNo='P' ModelType='1' Size='402'/>",
         {"[Error] Decap Library: incorrect size '402' found"},
         0},
        {"<Item PartNo='P'/>",
         {"[Error] Decap Library: 'PopDecapLibItem' or 'DecapLibItem' required\r\n"},
         0},
        {"", {"[Error] Decap Library: 'PopDecapLibItem' or 'DecapLibItem' required\r\n"}, 0},
        {"<DecapLibItem PartNo='P' Size='0402' ModelType='1' Volt='?'/>",
         {"[WARNING] 'P' Decap Library: 'Volt' cannot be read: '?'\r\n"},
         1},
    };
    for (const auto& c : cases) {
        const SImported in = ImportDecaps(c.items);
        ASSERT_TRUE(in.ok) << in.error;
        EXPECT_EQ(in.library.Count(), c.added) << c.items;
        std::vector<std::string> expected = c.log;
        expected.push_back("'" + std::to_string(c.added) +
                           "' models are imported from the file path 'lib.zovx'.\r\n");
        EXPECT_EQ(in.log, expected) << c.items;
    }
}

} // namespace
} // namespace zov
