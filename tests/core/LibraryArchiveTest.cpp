// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryArchive.h"

#include "base/File.h"
#include "base/Sha256.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace zov {
namespace {

namespace fs = std::filesystem;

struct LibraryArchiveTest : testing::Test
{
    LibraryArchiveTest()
    {
        folder.Write("lib/one/part.s2p", "! one\n");
        folder.Write("lib/two/PART.s2p", "! two\n");
        folder.Write("lib/ic.ibs", "[IBIS Ver] 5.1\n");
        library.SetPath(folder.Path() / "lib" / "caps.zov");
        AddCapacitor("a", "one/part.s2p");
        AddCapacitor("b", "two/PART.s2p");
        AddCapacitor("same file again", "./one/part.s2p");
        CZovRcdProps& ic = library.Add(ERecordType::Ic);
        ic.SetString(EPropId::ModelName, "ic");
        SIoModel io;
        io.ibisFile = "ic.ibs";
        ic.SetComposite(io);
    }
    void AddCapacitor(const std::string& name, const std::string& file)
    {
        CZovRcdProps& record = library.Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, name);
        SDiscreteModel model;
        model.isCircuit = true;
        model.cktDef = file;
        record.SetDiscreteModel(model);
    }

    test::CTempFolder folder;
    CZovLibrary library;
};

TEST_F(LibraryArchiveTest, AFolderHoldsTheLibraryItsFilesAndTheirChecksums)
{
    const SArchivePlan plan = PlanArchive(library);
    EXPECT_TRUE(plan.missing.empty());
    EXPECT_EQ(plan.files.size(), 3U);
    const fs::path target = folder.Path() / "carried";
    ASSERT_TRUE(WriteArchive(library, plan, target, {}));
    EXPECT_EQ(folder.Read("carried/files/part.s2p"), "! one\n");
    EXPECT_EQ(folder.Read("carried/files/PART_2.s2p"), "! two\n");

    // It stands on its own: the originals may go.
    fs::remove_all(folder.Path() / "lib");
    CNullLog log;
    const CResult<CZovLibrary> opened = LoadLibrary(target / "caps.zov", {}, log);
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->At(0).GetDiscreteModel()->cktDef, "files/part.s2p");
    EXPECT_EQ(opened->At(2).GetDiscreteModel()->cktDef, "files/part.s2p");
    EXPECT_EQ(opened->At(3).GetComposite<SIoModel>()->ibisFile, "files/ic.ibs");
    EXPECT_TRUE(PlanArchive(*opened).missing.empty());
#ifdef __linux__
    EXPECT_EQ(
        std::system(("cd '" + target.string() + "' && sha256sum --quiet -c SHA256SUMS").c_str()),
        0);
#endif
    const CResult<void> again = WriteArchive(library, plan, target, {});
    ASSERT_FALSE(again);
    EXPECT_EQ(again.Error().code, EErr::Argument) << "nothing is written over";
}

TEST_F(LibraryArchiveTest, AZipHoldsTheSame)
{
    const fs::path target = folder.Path() / "carried.zip";
    ASSERT_TRUE(WriteArchive(library, PlanArchive(library), target, {}));
    EXPECT_EQ(folder.Read("carried.zip").substr(0, 2), "PK");
#ifdef __linux__
    ASSERT_EQ(std::system(("cd '" + folder.Path().string() +
                           "' && python3 -m zipfile -e carried.zip out && cd out/carried && "
                           "sha256sum --quiet -c SHA256SUMS")
                              .c_str()),
              0);
    EXPECT_EQ(folder.Read("out/carried/files/part.s2p"), "! one\n");
#endif
}

TEST_F(LibraryArchiveTest, WhatIsMissingIsTold)
{
    AddCapacitor("lost", "gone.s2p");
    AddCapacitor("lost too", "gone.s2p");
    const SArchivePlan plan = PlanArchive(library);
    ASSERT_EQ(plan.missing.size(), 1U) << "each name once";
    EXPECT_EQ(plan.missing[0].record, "lost");
    EXPECT_EQ(plan.missing[0].name, "gone.s2p");
}

TEST_F(LibraryArchiveTest, EndsWithoutATraceWhenCancelledOrRefused)
{
    const SArchivePlan plan = PlanArchive(library);
    const fs::path target = folder.Path() / "carried.zip";
    const CResult<void> cancelled =
        WriteArchive(library, plan, target, [](double) { return false; });
    ASSERT_FALSE(cancelled);
    EXPECT_EQ(cancelled.Error().code, EErr::Cancelled);
    EXPECT_FALSE(fs::exists(target));
    EXPECT_FALSE(WriteArchive(library, plan, folder.Path() / "none" / "x.zip", {}));
}

TEST(Sha256, GivesTheStandardsOwnExamples)
{
    EXPECT_EQ(Sha256Text(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Text("abc"),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Text("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(Sha256Text(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

} // namespace
} // namespace zov
