// SPDX-License-Identifier: Apache-2.0
#include "core/LibraryFiles.h"
#include "support/Libraries.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace zov {
namespace {

class CStringWriter final : public CByteWriter
{
public:
    void Append(std::string_view more) override { bytes += more; }
    std::string bytes;
};

std::string NativeBytes(const CZovLibrary& library)
{
    CStringWriter out;
    WriteNative(library, out);
    return out.bytes;
}

void Put32(std::string& bytes, std::uint32_t value)
{
    for (unsigned i = 0; i < 4; ++i) {
        bytes += static_cast<char>(value >> (8 * i));
    }
}
void Put64(std::string& bytes, std::uint64_t value)
{
    Put32(bytes, static_cast<std::uint32_t>(value));
    Put32(bytes, static_cast<std::uint32_t>(value >> 32U));
}
void PutText(std::string& bytes, std::string_view text)
{
    Put32(bytes, static_cast<std::uint32_t>(text.size()));
    bytes += text;
}

/// A file built by hand from the description of the framing, not by the writer.
std::string Header(std::uint64_t categories, std::uint64_t records,
                   std::string_view tag = ".ZOVLib")
{
    std::string bytes = "\x2B\x1A";
    bytes += tag;
    bytes.resize(12, '\x55'); // not interpreted
    Put64(bytes, categories);
    Put64(bytes, records);
    bytes.resize(40, '\x55');
    return bytes;
}
void PutDefinition(std::string& bytes, std::uint32_t id, std::uint32_t kind)
{
    Put32(bytes, id);
    PutText(bytes, "name");
    bytes += '\0';
    Put32(bytes, kind);
    PutText(bytes, "");
    bytes += '\0';
    PutText(bytes, "");
    bytes += std::string("\1\0", 2);
    Put32(bytes, 0);
}
constexpr std::uint32_t kCapacitor = 0x2000001;
constexpr std::uint32_t kString = 0;
constexpr std::uint32_t kDouble = 1;

std::string OldCapacitor(std::string_view cnomText)
{
    std::string bytes = Header(1, 1);
    Put32(bytes, kCapacitor);
    Put32(bytes, 3);
    PutDefinition(bytes, 0, kString);   // ModelName
    PutDefinition(bytes, 27, kString);  // Cnom, a text once
    PutDefinition(bytes, 900, kDouble); // from a later version
    Put32(bytes, kCapacitor);
    Put64(bytes, 7);
    PutText(bytes, "C1");
    PutText(bytes, cnomText);
    Put64(bytes, 0);
    return bytes;
}

TEST(NativeFile, EveryPropertyAndCompositeSurvives)
{
    for (const unsigned seed : {1U, 2U, 3U}) {
        const CZovLibrary library = test::CRandomLibrary(seed).Make(400, true);
        const std::string bytes = NativeBytes(library);
        CZovLibrary again;
        ASSERT_TRUE(ReadNative(bytes, again)) << "seed " << seed;
        ASSERT_EQ(again.Count(), library.Count());
        for (std::size_t i = 0; i < library.Count(); ++i) {
            ASSERT_TRUE(SameProperties(again.At(i), library.At(i)))
                << "seed " << seed << ", record " << i;
        }
        EXPECT_EQ(NativeBytes(again), bytes);
    }
}

TEST(NativeFile, FramingIsAsStated)
{
    CZovLibrary library;
    library.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "R1");
    const std::string bytes = NativeBytes(library);
    EXPECT_EQ(bytes.substr(0, 12), std::string("\x2B\x1A.ZOVLib\0\0\0", 12));
    EXPECT_EQ(bytes.substr(12, 28),
              std::string("\x08\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 28));
    std::string first; // first category: ICs, whose first definition is the model name
    Put32(first, 0x1000000);
    EXPECT_EQ(bytes.substr(40, 4), first);
    std::string definition;
    Put32(definition, 0);
    PutText(definition, "ModelName");
    EXPECT_EQ(bytes.substr(48, definition.size()), definition);
    std::string record;
    Put32(record, 0x2000004);
    Put64(record, 1);
    PutText(record, "R1");
    EXPECT_EQ(bytes.substr(bytes.size() - record.size()), record);
}

TEST(NativeFile, HeaderIsTestedTwice)
{
    EXPECT_TRUE(IsNativeHeader(Header(0, 0), EHeaderTest::FirstOpening));
    EXPECT_TRUE(IsNativeHeader(Header(0, 0, ".zovLIB"), EHeaderTest::FirstOpening));
    EXPECT_FALSE(IsNativeHeader(Header(0, 0, ".zovLIB"), EHeaderTest::Reopening));
    EXPECT_FALSE(IsNativeHeader(Header(0, 0, ".ZOVLix"), EHeaderTest::FirstOpening));
    EXPECT_FALSE(IsNativeHeader(Header(0, 0).substr(0, 39), EHeaderTest::FirstOpening));
    CZovLibrary library;
    EXPECT_TRUE(ReadNative(Header(0, 0), library));
}

TEST(NativeFile, OlderFilesAreLifted)
{
    struct SCase
    {
        const char* text;
        const char* unit;
        std::optional<double> farad;
    };
    const SCase cases[] = {{"100", "nF", 1e-7}, {"100", "pF", 1e-10}, {"4.7uF", "nF", 4.7e-6},
                           {"", "nF", 0.0},     {"many", "nF", {}},   {"1e999", "nF", {}}};
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.text);
        const test::CTempFolder folder;
        const auto path = folder.Write("old.zov", OldCapacitor(c.text));
        CDisplayUnits units;
        ASSERT_TRUE(units.Set(EQuantity::Capacitance, c.unit));
        CVectorLog log;
        const auto library = LoadLibrary(path, units, log);
        ASSERT_EQ(library.Ok(), c.farad.has_value());
        if (library) {
            EXPECT_EQ(library->At(0).Name(), "C1");
            EXPECT_EQ(library->At(0).GetDouble(EPropId::Cnom).value_or(0.0), *c.farad);
        } else {
            EXPECT_EQ(library.Error().text, "Cannot upgrade the old ZOV library file '" +
                                                PathText(path) +
                                                "' with the new version of ZOV because the file is "
                                                "invalid. Ensure that the library "
                                                "file is valid and try again.");
        }
    }
}

TEST(NativeFile, DamageIsAnErrorAndLeavesTheLibraryAlone)
{
    const std::string good = NativeBytes(test::CRandomLibrary(7).Make(12, true));
    for (std::size_t length = 0; length < good.size(); ++length) {
        CZovLibrary library;
        library.Add(ERecordType::Ic);
        ASSERT_FALSE(ReadNative(std::string_view(good).substr(0, length), library))
            << length << " bytes";
        ASSERT_EQ(library.Count(), 1U);
    }
    struct SCase
    {
        const char* what;
        std::string bytes;
    };
    std::string unknownCategory = OldCapacitor("1");
    unknownCategory[unknownCategory.size() - 31] = '\x09';
    std::string twice = Header(2, 0);
    for (int i = 0; i < 2; ++i) {
        Put32(twice, kCapacitor);
        Put32(twice, 0);
    }
    std::string manyDefinitions = Header(1, 0);
    Put32(manyDefinitions, kCapacitor);
    Put32(manyDefinitions, 0xFFFFFFFF);
    const SCase cases[] = {{"categories cannot stand", Header(~0ULL, 0)},
                           {"records cannot stand", Header(0, ~0ULL)},
                           {"not a record type", Header(1, 0) + std::string(8, '\x01')},
                           {"property definitions, at most 0", manyDefinitions},
                           {"unknown category 0x", unknownCategory},
                           {"defined twice", twice},
                           {"follow the last record", Header(0, 0) + "x"}};
    for (const SCase& c : cases) {
        CZovLibrary library;
        const auto read = ReadNative(c.bytes, library);
        ASSERT_FALSE(read) << c.what;
        EXPECT_NE(read.Error().text.find(c.what), std::string::npos) << read.Error().text;
    }
}

TEST(NativeFile, FlippedBitsNeverCrash)
{
    std::string bytes = NativeBytes(test::CRandomLibrary(8).Make(6, true));
    std::size_t refused = 0;
    for (std::size_t bit = 0; bit < bytes.size() * 8; bit += 3) {
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
        CZovLibrary library;
        refused += ReadNative(bytes, library) ? 0 : 1;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << (bit % 8)));
    }
    EXPECT_GT(refused, 0U);
}

TEST(LibraryFiles, LoadsAndSavesByExtension)
{
    const test::CTempFolder folder;
    CVectorLog log;
    CZovLibrary library;
    library.Add(ERecordType::Capacitor).SetString(EPropId::ModelName, "C1");
    const auto path = folder.Path() / "a.ZOV";
    ASSERT_TRUE(SaveLibrary(library, path, {}, log));
    const auto loaded = LoadLibrary(path, {}, log);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->Name(), "a");
    EXPECT_EQ(SaveLibrary(library, folder.Path() / "a.xml", {}, log).Error().code,
              EErr::Unsupported);
    EXPECT_EQ(LoadLibrary(folder.Path() / "a.txt", {}, log).Error().code, EErr::Unsupported);
    EXPECT_EQ(LoadLibrary({}, {}, log).Error().text, "Invalid ZOV file path: ");
    ASSERT_TRUE(log.Lines().empty());

    const auto bad = folder.Write("bad.zov", "not a library");
    const auto failed = LoadLibrary(bad, {}, log);
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.Error().text,
              "Cannot load the ZOV library file '" + PathText(bad) +
                  "' because the file is invalid. Ensure that the library file is valid and "
                  "try again.");
    EXPECT_EQ(log.Lines(),
              std::vector<std::string>{"[Error] failed to load: '" + PathText(bad) + "'"});
}

TEST(LibraryCache, OnePathOneLibrary)
{
    const test::CTempFolder folder;
    CNullLog log;
    CZovLibrary empty;
    ASSERT_TRUE(SaveLibrary(empty, folder.Path() / "a.zov", {}, log));
    std::filesystem::create_symlink("a.zov", folder.Path() / "link.zov");
    CLibraryCache cache;
    const auto first = cache.Open(folder.Path() / "a.zov", log);
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, *cache.Open(folder.Path() / "." / "a.zov", log));
    EXPECT_EQ(*first, *cache.Open(folder.Path() / "link.zov", log));
    EXPECT_FALSE(cache.Open(folder.Path() / "none.zov", log));
    cache.Close(folder.Path() / "a.zov");
    EXPECT_NE(*first, *cache.Open(folder.Path() / "a.zov", log));
    EXPECT_EQ(cache.Count(), 1U);
}

TEST(LibraryFile, LoadingAndSavingEndWhenTheUserWants)
{
    CZovLibrary library;
    for (int i = 0; i < 20000; ++i) {
        library.Add(ERecordType::Resistor).SetString(EPropId::ModelName, "R" + std::to_string(i));
    }
    const test::CTempFolder folder;
    for (const char* name : {"a.zov", "a.zovx"}) {
        CVectorLog log;
        const auto path = folder.Path() / name;
        ASSERT_TRUE(SaveLibrary(library, path, {}, log).Ok());
        std::vector<double> shares;
        EXPECT_TRUE(LoadLibrary(path, {}, log, [&](double done) {
                        shares.push_back(done);
                        return true;
                    }).Ok());
        ASSERT_GE(shares.size(), 4U) << name;
        EXPECT_TRUE(std::ranges::is_sorted(shares)) << name;
        EXPECT_LE(shares.back(), 1.0) << name;

        CVectorLog quiet;
        const auto ended = LoadLibrary(path, {}, quiet, [](double done) { return done < 0.5; });
        ASSERT_FALSE(ended.Ok()) << name;
        EXPECT_EQ(ended.Error().code, EErr::Cancelled) << name;
        EXPECT_TRUE(quiet.Lines().empty()) << "it is no fault";
        const std::string before = folder.Read(name);
        EXPECT_EQ(SaveLibrary(CZovLibrary(), path, {}, log, [] { return false; }).Error().code,
                  EErr::Cancelled);
        EXPECT_EQ(folder.Read(name), before) << name;
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 2)
        << "nothing half is left";
}

} // namespace
} // namespace zov
