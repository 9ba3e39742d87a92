// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Number.h"
#include "network/NetworkSource.h"
#include "network/TouchstoneReader.h"
#include "support/TempFolder.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace zov::network {
namespace {

const SProgramIdentity kIdentity{"Zovra", "1.2", "host"};

/// A source that computes its data: element (i, j) at point k is 10 i + j + k / 1000 (rows and
/// columns from 1) with imaginary part 0.5.
struct SComputed
{
    SSourceInfo info{2, 1, 0, 'M', 0};
    std::vector<SSourcePort> ports;
    std::string comment;
    std::uint64_t points = 1;
    std::uint32_t type = kTypeS;
    std::uint32_t format = 2;
    int failAt = -1;         ///< operation that fails
    std::string failMessage; ///< what the source says then
    std::string asked;       ///< operations, a digit each
    std::string closedWith = "not closed";

    static int Answer(int operation, std::uint32_t, SSourceRecord& record, std::string& message,
                      void* context)
    {
        auto& self = *static_cast<SComputed*>(context);
        self.asked += std::to_string(operation);
        if (operation == self.failAt) {
            message = self.failMessage;
            return operation == kSourceMatrix ? -1 : 0;
        }
        switch (operation) {
        case kSourceInfo:
            record.info = self.info;
            break;
        case kSourcePort:
            if (record.port.port < self.ports.size()) {
                record.port = self.ports[record.port.port];
            }
            break;
        case kSourceComment:
            record.comment = self.comment;
            break;
        case kSourceMatrix:
            return self.Fill(record.matrix);
        case kSourceClose:
            self.closedWith = message;
            break;
        default:
            break;
        }
        return 1;
    }
    int Fill(SSourceMatrix& matrix) const
    {
        if (matrix.index >= points) {
            return 0;
        }
        matrix.hz = 1e6 * (1.0 + static_cast<double>(matrix.index));
        matrix.type = type;
        matrix.format = format;
        for (std::size_t i = 0; i < info.ports; ++i) {
            for (std::size_t j = 0; j < info.ports; ++j) {
                matrix.values[i * info.ports + j] = {static_cast<double>(10 * i + j + 11) +
                                                         static_cast<double>(matrix.index) / 1000,
                                                     0.5};
            }
        }
        return 1;
    }
};

SSourcePort Port(std::uint32_t mode, std::uint32_t first, std::uint32_t second, double ohm = 50,
                 std::string name = "p")
{
    return {0, 0, mode, first, second, ohm, std::move(name)};
}

class CTouchstoneWriterTest : public testing::Test
{
protected:
    int Write(SComputed& source, const std::string& name, int version2 = 0,
              std::uint32_t format = 2, std::uint32_t type = kTypeS, const char* user = nullptr,
              std::uint32_t terminals = 0)
    {
        return m_writer.Write(m_folder.Path() / name, "test", SComputed::Answer, &source, format,
                              version2, terminals, user, type);
    }
    test::CTempFolder m_folder;
    CTouchstoneWriter m_writer{kIdentity};
};

TEST_F(CTouchstoneWriterTest, WritesVersion1)
{
    SComputed source;
    source.points = 2;
    source.comment = "one\r\ntwo";
    source.ports = {Port(0, 0, 0, 50, "in"), Port(0, 1, 1, 50, "out")};
    ASSERT_EQ(Write(source, "a.s2p", 0, 2, kTypeS, "\n hello\n\nworld"), 1) << m_writer.Message();
    EXPECT_EQ(m_folder.Read("a.s2p"),
              "!Generated from: test\n! in\n! out\n!\n!Zovra Version: 1.2\n"
              "!Computer Host Name: host\n!\n!TouchstoneFormatFlag = 1\n!one\n"
              "!two\n!\n!User Comments:\n!\t\t\t hello\n!\t\t\tworld\n!\n"
              "#\tMHz\tS\tRI\tR\t50\n"
              "1\t11\t0.5\t21\t0.5\t12\t0.5\t22\t0.5\n"
              "2\t11.001\t0.5\t21.001\t0.5\t12.001\t0.5\t22.001\t0.5\n");
    EXPECT_EQ(source.asked, "011244456");
    EXPECT_EQ(source.closedWith, "");
}

TEST_F(CTouchstoneWriterTest, BreaksRowsAfterFourPairs)
{
    const auto bodyOf = [&](std::uint32_t ports, std::uint32_t storage, int version2) {
        SComputed source;
        source.info = {ports, 1, storage, '&', 0};
        EXPECT_EQ(Write(source, "a.s" + std::to_string(ports) + "p", version2), 1)
            << m_writer.Message();
        const std::string text = m_folder.Read("a.s" + std::to_string(ports) + "p");
        std::string body = text.substr(text.find("\n1000000\t") + 8);
        for (std::size_t at = 0; (at = body.find("\t0.5", at)) != body.npos;) {
            body.erase(at, 4); // imaginary parts
        }
        return body;
    };
    EXPECT_EQ(bodyOf(1, 0, 0), "\t11\n");
    EXPECT_EQ(bodyOf(3, 0, 0), "\t11\t12\t13\n\t\t\t21\t22\t23\n\t\t\t31\t32\t33\n");
    EXPECT_EQ(bodyOf(4, 0, 0).substr(0, 13), "\t11\t12\t13\t14\n");
    EXPECT_EQ(bodyOf(5, 0, 0).substr(0, 45),
              "\t11\t12\t13\t14\n\t\t\t\t15\n\t\t\t21\t22\t23\t24\n\t\t\t\t25\n\t\t\t");
    EXPECT_EQ(bodyOf(9, 0, 0).substr(0, 38),
              "\t11\t12\t13\t14\n\t\t\t\t15\t16\t17\t18\n\t\t\t\t19\n\t\t");
    EXPECT_EQ(bodyOf(3, 1, 1), "\t11\n\t\t\t21\t22\n\t\t\t31\t32\t33\n[End]\n");
    EXPECT_EQ(bodyOf(3, 2, 1), "\t11\t12\t13\n\t\t\t22\t23\n\t\t\t33\n[End]\n");
    EXPECT_EQ(bodyOf(3, 1, 0), bodyOf(3, 0, 0)); // version 1 is always full
    EXPECT_EQ(bodyOf(5, 1, 1).substr(40), "\t\t\t51\t52\t53\t54\n\t\t\t\t55\n[End]\n");
}

TEST_F(CTouchstoneWriterTest, WritesOptionLinesAndKeywords)
{
    const auto headOf = [&](SComputed& source, const std::string& name, int version2,
                            std::uint32_t format, std::uint32_t type) {
        EXPECT_EQ(Write(source, name, version2, format, type), 1) << m_writer.Message();
        const std::string text = m_folder.Read(name);
        const std::size_t begin = text.rfind("!\n") + 2;
        const std::size_t end = text.find("\n1", begin);
        return text.substr(begin, end + 1 - begin);
    };
    SComputed three;
    three.info = {3, 1, 0, 'G', kTypeZ2};
    three.ports = {Port(0, 0, 0, 50), Port(0, 1, 1, 75), Port(0, 2, 2, 123.456789012)};
    const auto in1000 = [](SComputed& source) { source.info.unit = 'K'; };
    in1000(three);
    EXPECT_EQ(headOf(three, "a.s3p", 0, 1, kTypeS2), "#\tKHz\tS\tMA\tR\t50 75 123.45679\n");
    EXPECT_NE(m_folder.Read("a.s3p").find("!TouchstoneFormatFlag = 2\n"), std::string::npos);
    three.type = kTypeZ;
    three.info.storage = 1;
    EXPECT_EQ(
        headOf(three, "a.ts", 1, 0, kTypeZ2),
        "[Version] 2.0\n#\tKHz\tZ\tDB\tR\t50\n[Number of Ports] 3\n[Number of Frequencies] 1\n"
        "[Reference]\n50 75 123.45679\n[Matrix Format] Lower\n[Network Data]\n");
    three.ports = {Port(2, 0, 1), Port(1, 0, 1), Port(0, 2, 2)};
    three.type = kTypeY;
    three.info.storage = 2;
    EXPECT_EQ(
        headOf(three, "b.ts", 1, 2, kTypeY2),
        "[Version] 2.0\n#\tKHz\tY\tRI\tR\t50\n[Number of Ports] 3\n[Number of Frequencies] 1\n"
        "[Matrix Format] Upper\n[Mixed-Mode Order]\nD1,2 C1,2 S3\n[Network Data]\n");
    SComputed two;
    two.type = kTypeH;
    EXPECT_EQ(headOf(two, "c.x", 1, 2, kTypeH),
              "[Version] 2.0\n#\tMHz\tH\tRI\tR\t50\n[Number of Ports] 2\n"
              "[Two-Port Data Order] 21_12\n[Number of Frequencies] 1\n[Network Data]\n");
}

TEST_F(CTouchstoneWriterTest, RefusesInTheKnownWords)
{
    struct SCase
    {
        const char* what;
        const char* message;
        const char* asked;
        bool opened;
        SComputed source;
        const char* name;
        int version2;
        std::uint32_t format;
        std::uint32_t type;
    };
    const auto source = [](std::uint32_t ports, std::vector<SSourcePort> list = {}) {
        SComputed made;
        made.info.ports = ports;
        made.ports = std::move(list);
        return made;
    };
    const auto with = [&](auto change) {
        SComputed made = source(2);
        change(made);
        return made;
    };
    const double nan = std::nan("");
    const SCase cases[] = {
        {"no type", "Invalid input.", "6", false, source(2), "a.s2p", 0, 2, 0},
        {"two types", "Invalid input.", "6", false, source(2), "a.s2p", 0, 2, 3},
        {"type beyond", "Invalid input.", "6", false, source(2), "a.s2p", 0, 2, 256},
        {"format beyond", "Invalid input.", "6", false, source(2), "a.s2p", 0, 3, 1},
        {"no ports", "Invalid data source info.", "06", false, source(0), "a.s0p", 0, 2, 1},
        {"no frequencies", "Invalid data source info.", "06", false,
         with([](SComputed& s) { s.info.frequencies = 0; }), "a.s2p", 0, 2, 1},
        {"storage beyond", "Invalid data source info.", "06", false,
         with([](SComputed& s) { s.info.storage = 3; }), "a.s2p", 1, 2, 1},
        {"other extension", "Invalid data source info.", "06", false, source(2), "a.s3p", 0, 2, 1},
        {"no extension of the form", "Invalid data source info.", "06", false, source(2), "a.ts", 0,
         2, 1},
        {"source fails", "Invalid data source info.", "06", false,
         with([](SComputed& s) { s.failAt = 0; }), "a.s2p", 0, 2, 1},
        {"source fails with words", "no data yet", "06", false, with([](SComputed& s) {
             s.failAt = 0;
             s.failMessage = "no data yet";
         }),
         "a.s2p", 0, 2, 1},
        {"three-port G", "G matrix or H matrix is valid for 2 port matrix only", "06", false,
         source(3), "a.s3p", 0, 2, 64},
        {"no folder", "Failed to open the file.", "06", false, source(2), "none/a.s2p", 0, 2, 1},
        {"mixed in 1", "Version 1 don't support mixed-mode.", "016", true,
         source(3, {Port(2, 0, 1), Port(1, 0, 1), Port(0, 2, 2)}), "a.s3p", 0, 2, 1},
        {"type 3", "Incorrect mixed-mode type.", "016", true, source(2, {Port(3, 0, 1)}), "a.s2p",
         0, 2, 1},
        {"pair of one", "Incorrect mixed-mode port number.", "016", true,
         source(2, {Port(2, 1, 1)}), "a.s2p", 1, 2, 1},
        {"pair beyond", "Incorrect mixed-mode port number.", "016", true,
         source(2, {Port(1, 0, 2)}), "a.s2p", 1, 2, 1},
        {"mixed H", "G matrix or H matrix don't support mixed-mode.", "016", true,
         source(2, {Port(1, 0, 1)}), "a.s2p", 1, 2, 128},
        {"single of two", "Incorrect mixed-mode port number.", "016", true,
         source(2, {Port(0, 0, 1)}), "a.s2p", 0, 2, 1},
        {"single beyond", "Incorrect mixed-mode port number.", "016", true,
         source(2, {Port(0, 2, 2)}), "a.s2p", 0, 2, 1},
        {"reordered in 1", "Version 1 don't support mixed-mode.", "016", true,
         source(2, {Port(0, 1, 1)}), "a.s2p", 0, 2, 1},
        {"counted thrice", "Incorrect mixed-mode order.", "01116", true,
         source(3, {Port(2, 0, 1), Port(2, 0, 1), Port(1, 0, 1)}), "a.s3p", 1, 2, 1},
        {"unequal pair", "Incorrect mixed-mode order.", "0116", true,
         source(2, {Port(2, 0, 1, 50), Port(1, 0, 1, 75)}), "a.s2p", 1, 2, 1},
        {"NaN pair", "Incorrect mixed-mode order.", "0116", true,
         source(2, {Port(2, 0, 1, nan), Port(1, 0, 1, nan)}), "a.s2p", 1, 2, 1},
        {"port fails", "Invalid data source info.", "016", true,
         with([](SComputed& s) { s.failAt = 1; }), "a.s2p", 0, 2, 1},
        {"matrix fails", "read error", "011246", true, with([](SComputed& s) {
             s.failAt = 4;
             s.failMessage = "read error";
         }),
         "a.s2p", 0, 2, 1},
        {"singular", "Failed to transform matrix", "011246", true, with([](SComputed& s) {
             s.type = kTypeS;
             s.info.unit = '&';
             s.points = 1;
             s.format = 7;
         }),
         "a.s2p", 0, 2, kTypeZ},
        {"fewer than promised", "Invalid data source info.", "011246", true,
         with([](SComputed& s) { s.points = 0; }), "a.ts", 1, 2, 1},
    };
    for (const SCase& one : cases) {
        std::filesystem::remove(m_folder.Path() / one.name);
        SComputed answered = one.source;
        EXPECT_EQ(Write(answered, one.name, one.version2, one.format, one.type), 0) << one.what;
        EXPECT_EQ(m_writer.Message(), one.message) << one.what;
        EXPECT_EQ(answered.closedWith, one.message) << one.what;
        EXPECT_EQ(answered.asked, one.asked) << one.what;
        EXPECT_EQ(std::filesystem::exists(m_folder.Path() / one.name), one.opened) << one.what;
    }
    SComputed pair = source(3, {Port(2, 0, 1), Port(1, 0, 1), Port(0, 2, 2)});
    Write(pair, "b.s3p");
    EXPECT_EQ(m_folder.Read("b.s3p"), "!Generated from: test\n");
    EXPECT_EQ(m_writer.Write(m_folder.Path() / "c.s2p", "", nullptr, nullptr, 2, 0, 0, nullptr, 1),
              0);
    EXPECT_EQ(m_writer.Message(), "Invalid input.");
}

TEST_F(CTouchstoneWriterTest, KeepsOtherWritersOut)
{
    const std::filesystem::path path = m_folder.Path() / "a.s2p";
    CResult<std::unique_ptr<CExclusiveFile>> theirs = CExclusiveFile::Create(path);
    ASSERT_TRUE(theirs.Ok());
    SComputed source;
    EXPECT_EQ(Write(source, "a.s2p"), 0);
    EXPECT_EQ(m_writer.Message(), "Failed to open the file.");
    (*theirs)->Append("theirs");
    ASSERT_TRUE((*theirs)->Finish().Ok());
    EXPECT_EQ(m_folder.Read("a.s2p"), "theirs");
    EXPECT_EQ(Write(source, "a.s2p"), 1);
    if (std::filesystem::exists("/dev/full")) {
        SComputed large;
        large.points = 100000;
        EXPECT_EQ(m_writer.Write("/dev/full", "", SComputed::Answer, &large, 2, 0, 1, nullptr, 1),
                  0);
        EXPECT_NE(m_writer.Message().find("cannot write"), std::string::npos);
        EXPECT_EQ(large.closedWith, m_writer.Message());
    }
}

TEST_F(CTouchstoneWriterTest, AsksFirstTerminalsOnlyAndNoComment)
{
    SComputed source;
    ASSERT_EQ(Write(source, "a.any", 0, 2, kTypeS, nullptr, 2), 1) << m_writer.Message();
    EXPECT_EQ(source.asked, "0114456");
    EXPECT_NE(m_folder.Read("a.any").find("! Port0\n! Port1\n!\n"), std::string::npos);
}

TEST_F(CTouchstoneWriterTest, BreaksLongUserComments)
{
    SComputed source;
    const std::string user =
        std::string(76, 'a') + "\n" + std::string(75, 'b') + "\xC3\xA9" + "c\n \t\n";
    ASSERT_EQ(Write(source, "a.s2p", 0, 2, kTypeS, user.c_str()), 1);
    const std::string text = m_folder.Read("a.s2p");
    EXPECT_NE(text.find("!\n!User Comments:\n!\t\t\t" + std::string(76, 'a') + "\n!\t\t\t" +
                        std::string(75, 'b') + "\xC3\xA9\n!\t\t\tc\n!\t\t\t \t\n!\n#"),
              std::string::npos)
        << text;
    ASSERT_EQ(Write(source, "a.s2p", 0, 2, kTypeS, " \t\r\n "), 1);
    EXPECT_EQ(m_folder.Read("a.s2p").find("User Comments"), std::string::npos);
}

TEST_F(CTouchstoneWriterTest, BringsValuesToTypeAndFormat)
{
    const auto lastLine = [&](SComputed& source, int version2, std::uint32_t format,
                              std::uint32_t type) {
        EXPECT_EQ(Write(source, "a.s1p", version2, format, type), 1) << m_writer.Message();
        const std::string text = m_folder.Read("a.s1p");
        return text.substr(text.find("\n1\t") + 3);
    };
    SComputed source;
    source.info.ports = 1;
    source.info.frequencies = 1;
    source.format = 1; // 11, 0.5 degrees
    EXPECT_EQ(lastLine(source, 0, 1, kTypeS), "11\t0.5\n");
    EXPECT_EQ(lastLine(source, 0, 0, kTypeS), "20.8278537031645\t0.5\n");
    source.format = 2; // z = 11 + 0.5j, normalised in version 1, ohm with the flag
    source.type = kTypeZ;
    source.info.formatFlags = kTypeZ2;
    const std::string ohms = lastLine(source, 0, 2, kTypeS);
    EXPECT_EQ(ohms, lastLine(source, 1, 2, kTypeS).substr(0, ohms.size()));
    source.info.formatFlags = 0;
    const std::string normalised = lastLine(source, 0, 2, kTypeS2);
    EXPECT_NE(ohms, normalised);
    EXPECT_EQ(normalised.substr(0, 8), "0.833622"); // (z - 1) / (z + 1)
}

/// Values of 15 digits come back to the bit, whatever the file looks like.
TEST(TouchstoneRoundTrip, GivesTheSameDoubles)
{
    const test::CTempFolder folder;
    std::mt19937_64 random(5);
    const auto number = [&] {
        const auto digits = static_cast<double>(random() % 1000000000000000ULL);
        return *ParseDouble(FormatG(digits, 15) + "e" +
                            std::to_string(-static_cast<int>(random() % 30))) *
               (random() % 2 == 0 ? 1 : -1);
    };
    CNullDiag diag;
    const EFrequencyUnit units[] = {EFrequencyUnit::Hz, EFrequencyUnit::KHz, EFrequencyUnit::MHz,
                                    EFrequencyUnit::GHz};
    for (std::uint32_t ports = 1; ports <= 9; ++ports) {
        for (int version = 1; version <= 2; ++version) {
            for (int round = 0; round < 8; ++round) {
                const EParameter parameter = ports == 2 ? static_cast<EParameter>(round % 5)
                                                        : static_cast<EParameter>(round % 3);
                CNetworkData data(ports, parameter);
                data.Declare(parameter, version == 1 && parameter != EParameter::S
                                            ? ENormalised::Yes
                                            : ENormalised::No);
                SWriteOptions options{version, EDataFormat::Ri, units[round % 4],
                                      static_cast<EStorage>(round % 3), kIdentity};
                for (SPort& port : data.Ports()) {
                    port.referenceOhm =
                        round % 2 == 0 ? 50.0 : 10.0 + static_cast<double>(random() % 90);
                    port.name = "n" + std::to_string(random() % 1000);
                }
                data.Traits().origin = "round " + std::to_string(round);
                data.Traits().comments = {" first", "\tsecond"};
                data.Traits().userComments = {"mine"};
                std::vector<TComplex> matrix(ports * ports);
                for (int f = 0; f < 5; ++f) {
                    for (std::size_t i = 0; i < matrix.size(); ++i) {
                        const std::size_t mirrored = i % ports * ports + i / ports;
                        matrix[i] = round % 3 != 0 && mirrored < i ? matrix[mirrored]
                                                                   : TComplex(number(), number());
                    }
                    data.Append(1e3 * static_cast<double>(f * 1000000 +
                                                          static_cast<int>(random() % 1000000)),
                                matrix);
                }
                const std::filesystem::path path =
                    folder.Path() / ("a.s" + std::to_string(ports) + "p");
                const CResult<void> written = WriteTouchstone(data, path, options);
                ASSERT_TRUE(written.Ok()) << written.Error().Full();
                const CResult<CNetworkData> read = ReadTouchstone(path, diag);
                ASSERT_TRUE(read.Ok()) << read.Error().Full();
                ASSERT_EQ(read->FrequenciesHz(), data.FrequenciesHz());
                ASSERT_EQ(read->Values(), data.Values()) << folder.Read(path.filename().string());
                EXPECT_EQ(read->Ports(), data.Ports());
                EXPECT_EQ(read->Parameter(), parameter);
                EXPECT_EQ(read->Normalised(), data.Normalised());
                EXPECT_EQ(read->Traits().origin, data.Traits().origin);
                EXPECT_EQ(read->Traits().comments, data.Traits().comments);
                EXPECT_EQ(read->Traits().userComments, data.Traits().userComments);
                if (version == 2 && ports > 2) {
                    EXPECT_EQ(read->Traits().storage, options.storage);
                }
            }
        }
    }
}

TEST(TouchstoneRoundTrip, StaysWithinTheDigitsOfPolarFormats)
{
    const test::CTempFolder folder;
    std::mt19937_64 random(6);
    std::uniform_real_distribution<double> uniform(-1, 1);
    CNetworkData data(3, EParameter::S);
    std::vector<TComplex> matrix(9);
    for (int f = 0; f < 300; ++f) {
        for (TComplex& value : matrix) {
            value =
                TComplex(uniform(random), uniform(random)) * std::pow(10.0, 4 * uniform(random));
        }
        matrix[4] = 0.0;
        data.Append(f * 1e6, matrix);
    }
    CNullDiag diag;
    for (const EDataFormat format : {EDataFormat::Db, EDataFormat::Ma}) {
        ASSERT_TRUE(WriteTouchstone(data, folder.Path() / "a.s3p",
                                    {1, format, EFrequencyUnit::GHz, {}, kIdentity})
                        .Ok());
        const CResult<CNetworkData> read = ReadTouchstone(folder.Path() / "a.s3p", diag);
        ASSERT_TRUE(read.Ok());
        EXPECT_EQ(read->At(7, 1, 1), TComplex(0.0));
        // A unit of the 15th digit of 80 dB or 180 degrees moves a value by this part of itself.
        for (std::size_t i = 0; i < data.Values().size(); ++i) {
            ASSERT_LE(std::abs(read->Values()[i] - data.Values()[i]),
                      2e-14 * std::abs(data.Values()[i]));
        }
    }
}

} // namespace
} // namespace zov::network
