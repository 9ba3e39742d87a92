// SPDX-License-Identifier: Apache-2.0
#include "app/ModelRows.h"

#include "base/Text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace zov::app {
namespace {

const RowProgress kGoOn = [](double) { return true; };

CZovRcdProps& AddCap(CZovLibrary& library, const std::string& name, double farad, double volt)
{
    CZovRcdProps& record = library.Add(ERecordType::Capacitor);
    record.SetString(EPropId::ModelName, name);
    record.SetDouble(EPropId::Cnom, farad);
    record.SetDouble(EPropId::Volt, volt);
    return record;
}

std::string Names(const std::vector<const CZovLibrary*>& libraries,
                  const std::vector<SModelRow>& rows)
{
    std::string names;
    for (const SModelRow& row : rows) {
        names += std::string(libraries[row.source]->At(row.record).Name()) + ' ';
    }
    return names;
}

TEST(ModelRows, SortsByValueAndNotByText)
{
    CZovLibrary first;
    AddCap(first, "n900", 900e-9, 50);
    AddCap(first, "u10", 10e-6, 6.3);
    first.Add(ERecordType::Connector).SetString(EPropId::ModelName, "none");
    CZovLibrary second;
    AddCap(second, "p47", 47e-12, 100);
    CZovRcdProps& coil = second.Add(ERecordType::Inductor);
    coil.SetString(EPropId::ModelName, "coil");
    coil.SetDouble(EPropId::Inductance, 1e-9);
    const std::vector<const CZovLibrary*> libraries = {&first, &second};
    struct SCase
    {
        SRowOrder order;
        const char* names;
    };
    for (const SCase& c : {SCase{{}, "n900 u10 none p47 coil "},
                           SCase{{true, EModelColumn::Value, false}, "p47 n900 u10 coil none "},
                           SCase{{true, EModelColumn::Value, true}, "coil u10 n900 p47 none "},
                           SCase{{true, EModelColumn::Voltage, false}, "u10 n900 p47 none coil "},
                           SCase{{true, EModelColumn::Name, true}, "u10 p47 none n900 coil "}}) {
        EXPECT_EQ(Names(libraries, SelectRows(libraries, {{}, {}, {}, c.order}, kGoOn)), c.names);
    }
}

/// The prefix and the pieces must not show: the order is that of a plain stable sort.
TEST(ModelRows, OrderIsThatOfAPlainSort)
{
    std::mt19937 random(20261121);
    static const std::string kLetters[] = {"a", "B", "b", "\xC3\xA4", "\xC3\x84", "z", "0", "-"};
    CZovLibrary library;
    for (int i = 0; i < 70000; ++i) {
        std::string name;
        for (std::size_t n = random() % 12; n > 0; --n) {
            name += kLetters[random() % std::size(kLetters)];
        }
        library.Add(ERecordType::Spice).SetString(EPropId::ModelName, name);
    }
    std::vector<std::uint32_t> expected(library.Count());
    for (std::uint32_t i = 0; i < expected.size(); ++i) {
        expected[i] = i;
    }
    std::ranges::stable_sort(expected, [&](std::uint32_t a, std::uint32_t b) {
        const std::string_view left = library.At(a).Name();
        const std::string_view right = library.At(b).Name();
        return left.empty() != right.empty() ? right.empty() : CompareNoCase(left, right) < 0;
    });
    const std::vector<SModelRow> rows =
        SelectRows({&library}, {{}, {}, {}, {true, EModelColumn::Name, false}}, kGoOn);
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ASSERT_EQ(rows[i].record, expected[i]) << i;
    }
}

TEST(ModelRows, HideRulesAreForCapacitorsWithTheValue)
{
    CZovLibrary library;
    AddCap(library, "small", 1e-12, 16);
    AddCap(library, "good", 1e-7, 16);
    AddCap(library, "large", 2, 16);
    AddCap(library, "low", 1e-7, 1e-3);
    AddCap(library, "high", 1e-7, 1000);
    library.Add(ERecordType::Capacitor).SetString(EPropId::ModelName, "unknown");
    library.Add(ERecordType::Ic).SetString(EPropId::ModelName, "ic");
    SZovSettings settings;
    const auto shown = [&] {
        return Names({&library},
                     SelectRows({&library}, {{}, {}, SHideRules::Of(settings), {}}, kGoOn));
    };
    EXPECT_EQ(shown(), "small good large low high unknown ic ");
    settings.capacitanceLess.on = settings.capacitanceMore.on = true;
    EXPECT_EQ(shown(), "good low high unknown ic ");
    settings.voltageLess.on = settings.voltageMore.on = true;
    EXPECT_EQ(shown(), "good unknown ic ");
}

TEST(ModelRows, EndsWhenAsked)
{
    CZovLibrary library;
    for (int i = 0; i < 20000; ++i) {
        library.Add(ERecordType::Spice).SetString(EPropId::ModelName, "x");
    }
    int asked = 0;
    const auto rows = SelectRows({&library}, {{}, {}, {}, {}}, [&](double) { return ++asked < 2; });
    EXPECT_EQ(asked, 2);
    EXPECT_LT(rows.size(), library.Count());
}

} // namespace
} // namespace zov::app
