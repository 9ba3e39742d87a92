// SPDX-License-Identifier: Apache-2.0
/// Libraries for tests: one with everything in it, and random ones.
#pragma once

#include "core/ZovLibrary.h"

#include <random>
#include <string>
#include <vector>

namespace zov::test {

class CRandomLibrary
{
public:
    explicit CRandomLibrary(unsigned seed)
        : m_random(seed)
    {
    }

    /// Records of all types; texts hold only what every form of file can hold unless `freeTexts` is
    /// set.
    CZovLibrary Make(std::size_t count, bool freeTexts)
    {
        m_freeTexts = freeTexts;
        CZovLibrary library;
        for (std::size_t i = 0; i < count; ++i) {
            const ERecordType type = RecordTypes()[Below(8)].type;
            FillRecord(library.Add(type));
        }
        return library;
    }

    std::size_t Below(std::size_t limit) { return m_random() % limit; }
    bool Maybe() { return Below(2) == 0; }
    /// A number that six significant digits hold exactly, so that every form keeps it.
    double Value() { return static_cast<double>(Below(999) + 1) * kScales[Below(kScales.size())]; }
    std::optional<double> MaybeValue() { return Maybe() ? std::optional(Value()) : std::nullopt; }
    std::string Word()
    {
        static const std::vector<std::string> plain = {"A1",  "VDD_CORE", "GRM155", "µ-model",
                                                       "n 1", "x;y",      "0402"};
        static const std::vector<std::string> free = {"",  "R&D", "5\" disk", "<5%",  "a\r\nb",
                                                      "Ω", "'",   "]]>",      "&amp;"};
        return m_freeTexts && Below(4) == 0 ? free[Below(free.size())] : plain[Below(plain.size())];
    }

private:
    std::vector<std::string> Words()
    {
        std::vector<std::string> words(Below(4));
        for (std::string& word : words) {
            word = "P" + std::to_string(Below(100));
        }
        return words;
    }
    std::vector<TNamePair> Pairs()
    {
        std::vector<TNamePair> pairs(Below(3));
        for (TNamePair& pair : pairs) {
            pair = {"DQS" + std::to_string(Below(9)), "CK" + std::to_string(Below(9))};
        }
        return pairs;
    }
    template <class T>
    std::vector<T> Some(T (CRandomLibrary::*make)())
    {
        std::vector<T> items;
        for (std::size_t i = Below(3) + 1; i > 0; --i) {
            items.push_back((this->*make)());
        }
        return items;
    }
    SBusDefinition Bus()
    {
        return {Word(),
                static_cast<EBusType>(Below(3)),
                static_cast<EEdgeType>(Below(3)),
                Pairs(),
                Words(),
                Pairs()};
    }
    SDcRail DcRail() { return {Value(), MaybeValue(), MaybeValue(), Value(), Words()}; }
    SConvPin ConvPin()
    {
        return {"P" + std::to_string(Below(9)),
                static_cast<EConvPin>(Below(3)),
                Word(),
                MaybeValue(),
                MaybeValue(),
                MaybeValue(),
                MaybeValue(),
                MaybeValue()};
    }
    SFeqImp Point() { return {Value(), Value()}; }
    SAcRail AcRail()
    {
        return {Maybe(), Value(), Value(),
                Value(), "1 2",   "3",
                Word(),  Word(),  Some(&CRandomLibrary::Point)};
    }
    SVrmRail VrmRail() { return {Value(), MaybeValue(), MaybeValue(), MaybeValue(), Words()}; }
    SThroughInfo Connection() { return {"1", "2", Value(), Value()}; }
    std::optional<SSpiceRef> Spice()
    {
        return Maybe() ? std::optional(SSpiceRef{"rail.sp", "RAIL"}) : std::nullopt;
    }

    void FillRecord(CZovRcdProps& record)
    {
        record.SetString(EPropId::ModelName, "M" + std::to_string(m_random() % 1000000));
        for (const EPropId id : PropertiesOf(record.Type())) {
            const SPropInfo& info = *FindProperty(id);
            if (id == EPropId::ModelName || id >= EPropId::ModelIsCircuit || Maybe()) {
                continue;
            }
            if (info.kind == EPropKind::Double) {
                record.SetDouble(id, Value());
            } else if (info.kind != EPropKind::Composite) {
                record.SetString(id, id == EPropId::Size ? (Maybe() ? "0402E" : "1005M") : Word());
            }
        }
        if (IsDiscrete(record.Type())) {
            FillDiscrete(record);
        } else {
            FillSubModels(record);
        }
        if (Maybe()) {
            record.SetComposite(SThroughModel{Maybe(), Some(&CRandomLibrary::Connection)});
        }
    }

    void FillDiscrete(CZovRcdProps& record)
    {
        SDiscreteModel model;
        model.isCircuit = Maybe();
        if (model.isCircuit) {
            model.cktDef = Maybe() ? "c1.s2p" : ".SUBCKT C1 1 2\nS1 1 2 3 2 Model=c1.s2p\n.ENDS";
            model.trackFolder = Maybe() ? "track" : "";
        } else {
            model.resistance = Value();
            model.inductance =
                record.Type() == ERecordType::Resistor ? std::nullopt : std::optional(Value());
            model.capacitance =
                record.Type() == ERecordType::Capacitor ? std::optional(Value()) : std::nullopt;
        }
        record.SetDiscreteModel(model);
        if (record.Type() == ERecordType::Capacitor) {
            record.SetDouble(EPropId::Cnom, Value());
            record.SetString(EPropId::Size, "0603E");
        }
    }

    void FillSubModels(CZovRcdProps& record)
    {
        if (record.Type() == ERecordType::Vrm) {
            record.SetComposite(SVrmModel{Spice(), Some(&CRandomLibrary::VrmRail)});
            return;
        }
        if (record.Type() != ERecordType::Ic) {
            record.SetComposite(
                Maybe() ? SCircuitRef{"TOP", "top.sp", ""}
                        : SCircuitRef{"TOP", "", ".SUBCKT TOP 1 2\r\nR1 1 2 5\r\n.ENDS\r\n"});
            return;
        }
        if (Maybe()) {
            record.SetComposite(SIoModel{"chip.ibs", "U1", Maybe(), Some(&CRandomLibrary::Bus)});
        }
        if (Maybe()) {
            record.SetComposite(SDcModel{Maybe(), Spice(), Some(&CRandomLibrary::DcRail)});
        }
        if (Maybe()) {
            record.SetComposite(SDcConvModel{Maybe(), Some(&CRandomLibrary::ConvPin)});
        }
        if (Maybe()) {
            record.SetComposite(SAcModel{Spice(), Some(&CRandomLibrary::AcRail)});
        }
        if (Maybe()) {
            record.SetComposite(SVrmModel{Spice(), Some(&CRandomLibrary::VrmRail)});
        }
        if (Maybe()) {
            record.SetComposite(SThermalModel{Value(), Value(), Value(), Value(), Value()});
        }
    }

    static constexpr std::array<double, 4> kScales = {1.0, 0.5, 0.25, 8.0};
    std::mt19937 m_random;
    bool m_freeTexts = false;
};

} // namespace zov::test
