// SPDX-License-Identifier: Apache-2.0
// What reserved parameters ask of each other.
#include "base/Number.h"
#include "ibischk/AmiReserved.h"

#include <algorithm>
#include <optional>

namespace zov::ibischk {

namespace {

class CAcross
{
public:
    CAcross(SAmiCheck& ami, const SAmiReserved& reserved)
        : m_ami(ami)
        , m_report(ami.report)
        , m_all(reserved)
        , m_getWave(reserved["GetWave_Exists"].IsTrue())
    {
    }

    void Run()
    {
        Mandatory();
        Flow();
        Repeater();
        Pam4();
        Protocol();
        Analog();
        Excluding();
        Names();
        CommonFlow();
        ClockInput();
        TrainingMode();
        Unused();
    }

private:
    [[nodiscard]] const SAmiParameter& P(std::string_view name) const { return m_all[name]; }
    [[nodiscard]] bool Has(std::string_view name) const { return P(name).Present(); }
    /// Is it given, with something else than True?
    [[nodiscard]] bool IsFalse(std::string_view name) const
    {
        return Has(name) && P(name).FixedValue() != nullptr && !P(name).IsTrue();
    }
    [[nodiscard]] std::string_view ValueOf(const SAmiParameter& p) const
    {
        const SAmiToken* value = p.FixedValue();
        return value == nullptr ? std::string_view() : ShownAmi(m_ami.tree.Text(*value));
    }

    void Mandatory()
    {
        for (const std::string_view name : {"Init_Returns_Impulse", "GetWave_Exists"}) {
            if (!Has(name)) {
                m_report.Error(4625, name);
            }
        }
    }

    void Flow()
    {
        if (IsFalse("Init_Returns_Impulse") && IsFalse("GetWave_Exists")) {
            m_report.WarningAt(P("GetWave_Exists").place, 4671);
        }
        if (IsFalse("Use_Init_Output") && !m_getWave) {
            m_report.ErrorAt(P("Use_Init_Output").place, 4689);
        }
    }

    void Repeater()
    {
        if (P("Repeater_Type").IsString("Retimer") && !m_getWave) {
            m_report.ErrorAt(P("Repeater_Type").place, 4673);
        }
    }

    /// Can the user get this string?
    [[nodiscard]] bool Offers(const SAmiParameter& p, std::string_view text) const
    {
        bool found = false;
        p.ForEachChoice([&](SAmiToken token) { found = found || m_ami.tree.Text(token) == text; });
        return p.Present() && found;
    }

    void Pam4()
    {
        const SAmiParameter& modulation = P("Modulation");
        if (Offers(modulation, "PAM4") && !m_ami.Is(EAmiSide::Tx)) {
            for (const std::string_view name : {"PAM4_UpperThreshold", "PAM4_LowerThreshold"}) {
                if (!Has(name)) {
                    m_report.ErrorAt(modulation.place, 4697, name);
                }
            }
        }
        Below("PAM4_LowerThreshold", "PAM4_CenterThreshold");
        Below("PAM4_CenterThreshold", "PAM4_UpperThreshold");
        if (!Has("PAM4_CenterThreshold")) {
            Below("PAM4_LowerThreshold", "PAM4_UpperThreshold");
        }
    }

    [[nodiscard]] std::optional<double> Fixed(const SAmiParameter& p) const
    {
        const SAmiToken* value = p.Present() && !p.IsPlaceHolder() ? p.FixedValue() : nullptr;
        return value == nullptr ? std::nullopt : AmiNumber(m_ami.tree, *value);
    }

    void Below(std::string_view low, std::string_view high)
    {
        const auto a = Fixed(P(low));
        const auto b = Fixed(P(high));
        if (a && b && *a >= *b) {
            m_report.WarningAt(P(low).place, 4698, low, high);
        }
    }

    void Protocol()
    {
        const SAmiParameter& protocol = P("BCI_Protocol");
        if (!protocol.Present()) {
            return;
        }
        for (const std::string_view name :
             {"BCI_ID", "BCI_State", "BCI_Message_Interval_UI", "BCI_Training_UI"}) {
            // The last two can't stand in a file of a transmitter.
            const bool rxOnly = ReservedTable()[*FindReserved(name)].side == EAmiSide::Rx;
            if (!Has(name) && !(rxOnly && m_ami.Is(EAmiSide::Tx))) {
                m_report.ErrorAt(protocol.place, 4710, name, "BCI_Protocol");
            }
        }
    }

    void OnlyWith(std::string_view name, std::string_view needed, EReport severity)
    {
        if (Has(name) && !Has(needed)) {
            m_report.At(severity, P(name).place, 4711, name, needed);
        }
    }

    void Analog()
    {
        for (const std::string_view name : {"Tx_V", "Tx_R", "Rx_R"}) {
            OnlyWith(name, "Ts4file", EReport::Error);
        }
        if (m_ami.Is(EAmiSide::Tx)) {
            OnlyWith("Ts4file", "Tx_V", EReport::Error);
        }
    }

    void Excluding()
    {
        struct SPair
        {
            std::string_view first;
            std::string_view second;
        };
        constexpr SPair kPairs[] = {{"Rx_Noise", "Rx_GaussianNoise"},
                                    {"Modulation_Levels", "Modulation"},
                                    {"Modulation_Levels", "PAM4_Mapping"}};
        for (const SPair& pair : kPairs) {
            if (Has(pair.first) && Has(pair.second)) {
                m_report.ErrorAt(P(pair.first).place, 4713, pair.first, pair.second);
            }
        }
    }

    void Names()
    {
        const SAmiParameter& component = P("Component_Name");
        const SAmiParameter& signal = P("Signal_Name");
        if (component.Present() != signal.Present()) {
            const SPlace place = component.Present() ? component.place : signal.place;
            m_report.ErrorAt(place, 4717, "Component_Name", "Signal_Name");
        }
    }

    void CommonFlow()
    {
        const SAmiParameter& flow = m_all.useV7p1Flow;
        if (flow.Present() && flow.IsTrue() && !P("Init_Returns_Impulse").IsTrue()) {
            m_report.ErrorAt(flow.place, 4718, "Init_Returns_Impulse", "True", flow.name);
        }
    }

    void ClockInput()
    {
        const SAmiParameter& input = P("Rx_Use_Clock_Input");
        const std::string_view value = ValueOf(input);
        if (input.Present() && !value.empty() && value != "None" && !m_getWave) {
            m_report.ErrorAt(input.place, 4678, value);
        }
    }

    void TrainingMode()
    {
        const SAmiParameter& mode = P("BCI_Training_Mode");
        if (m_getWave) {
            return;
        }
        if (Offers(mode, "GetWave")) {
            m_report.ErrorAt(mode.place, 4701, "GetWave");
        }
        if (Offers(mode, "Impulse")) {
            m_report.WarningAt(mode.place, 4701, "Impulse");
        }
    }

    void Unused()
    {
        const SAmiParameter& modulation = P("Modulation");
        if (!Offers(modulation, "PAM4") && !modulation.IsPlaceHolder()) {
            for (std::size_t row = 0; row < kReservedRows; ++row) {
                const SAmiParameter& p = m_all.found[row];
                if (p.Present() && p.name.starts_with("PAM4_")) {
                    m_report.Caution(p.place, 4695, p.name);
                }
            }
        }
        for (const std::string_view name : {"PAM_Thresholds", "PAM_Offsets"}) {
            OnlyWith(name, "Modulation_Levels", EReport::Warning);
            LevelCount(P(name));
        }
        if (Has("Tx_Sj") && !Has("Tx_Sj_Frequency")) {
            m_report.WarningAt(P("Tx_Sj").place, 4688, "Tx_Sj", "Tx_Sj_Frequency");
        }
        for (const std::string_view name : {"BCI_Training_Mode", "BCI_ID", "BCI_State"}) {
            OnlyWith(name, "BCI_Protocol", EReport::Warning);
        }
    }

    /// One number fewer than levels.
    void LevelCount(const SAmiParameter& p)
    {
        const SAmiParameter& levels = P("Modulation_Levels");
        const SAmiToken* value = p.FixedValue();
        const bool oneLevel = levels.format == EAmiFormat::Value ||
                              (levels.Present() && levels.format == EAmiFormat::None);
        if (!p.Present() || p.usage != EAmiUsage::Info || value == nullptr || !oneLevel ||
            levels.usage != EAmiUsage::Info) {
            return;
        }
        const auto count = Fixed(levels);
        std::size_t numbers = 0;
        CTokens words(m_ami.tree.Text(*value));
        while (!words.AtEnd()) {
            words.Next();
            ++numbers;
        }
        if (count && *count >= 2 && static_cast<double>(numbers) != *count - 1) {
            m_report.WarningAt(p.place, 4692, p.name, numbers,
                               static_cast<std::int64_t>(*count - 1), ValueOf(levels));
        }
    }

    SAmiCheck& m_ami;
    CReport& m_report;
    const SAmiReserved& m_all;
    bool m_getWave;
};

} // namespace

void CheckAcrossReserved(SAmiCheck& ami, const SAmiReserved& reserved)
{
    CAcross(ami, reserved).Run();
}

} // namespace zov::ibischk
