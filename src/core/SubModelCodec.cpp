// SPDX-License-Identifier: Apache-2.0
#include "core/SubModelCodec.h"

#include "base/Text.h"
#include "core/ByteReader.h"

namespace zov {

namespace {

// Each structure names its members once, in Visit; writing and reading are two ways to visit them.

template <class A>
void Visit(A& a, SCircuitRef& m)
{
    a(m.model), a(m.file), a(m.text);
}
template <class A>
void Visit(A& a, TNamePair& m)
{
    a(m.first), a(m.second);
}
template <class A>
void Visit(A& a, SBusDefinition& m)
{
    a(m.busGroup), a.Word(m.busType, kBusTypeWords.size()),
        a.Word(m.edgeType, kEdgeTypeWords.size());
    a(m.timingRefs), a(m.signals), a(m.clocks);
}
template <class A>
void Visit(A& a, SIoModel& m)
{
    a(m.ibisFile), a(m.components), a(m.expIoAndGndTerm), a(m.buses);
}
template <class A>
void Visit(A& a, SSpiceRef& m)
{
    a(m.file), a(m.model);
}
template <class A>
void Visit(A& a, SDcRail& m)
{
    a(m.nominalVoltage), a(m.upperTolerance), a(m.lowerTolerance), a(m.totalCurrent), a(m.pins);
}
template <class A>
void Visit(A& a, SDcModel& m)
{
    a(m.worst), a(m.spice), a(m.rails);
}
template <class A>
void Visit(A& a, SConvPin& m)
{
    a(m.name), a.Word(m.type, kConvPinWords.size()), a(m.pinPair), a(m.voltage), a(m.current);
    a(m.convertRate), a(m.upperTolerance), a(m.lowerTolerance);
}
template <class A>
void Visit(A& a, SDcConvModel& m)
{
    a(m.useCurrentForInputPins), a(m.pins);
}
template <class A>
void Visit(A& a, SFeqImp& m)
{
    a(m.frequencyHz), a(m.impedanceOhm);
}
template <class A>
void Visit(A& a, SAcRail& m)
{
    a(m.pwl), a(m.maxPeakRipple), a(m.transCurDelta), a(m.shortRiseTimeDelta);
    a(m.positivePins), a(m.negativePins), a(m.positiveNet), a(m.negativeNet), a(m.points);
}
template <class A>
void Visit(A& a, SAcModel& m)
{
    a(m.spice), a(m.rails);
}
template <class A>
void Visit(A& a, SVrmRail& m)
{
    a(m.nominalVoltage), a(m.outputTolerance), a(m.outputCurrent), a(m.pinResistance), a(m.pins);
}
template <class A>
void Visit(A& a, SVrmModel& m)
{
    a(m.spice), a(m.rails);
}
template <class A>
void Visit(A& a, SThermalModel& m)
{
    a(m.powerDissipation), a(m.thickness), a(m.thetaJb), a(m.thetaJc), a(m.maxDieTemperature);
}
template <class A>
void Visit(A& a, SThroughInfo& m)
{
    a(m.pin1), a(m.pin2), a(m.inductance), a(m.resistance);
}
template <class A>
void Visit(A& a, SThroughModel& m)
{
    a(m.notThrough), a(m.connections);
}

class CEncoder
{
public:
    std::string bytes;

    void operator()(std::string& text) { AppendSizedText(bytes, text); }
    void operator()(bool flag) { bytes += flag ? '\1' : '\0'; }
    void operator()(double value)
    {
        AppendLittleEndian(bytes, std::bit_cast<std::uint64_t>(value));
    }
    template <class T>
    void operator()(std::optional<T>& value)
    {
        (*this)(value.has_value());
        if (value) {
            (*this)(*value);
        }
    }
    template <class T>
    void operator()(std::vector<T>& items)
    {
        AppendLittleEndian(bytes, static_cast<std::uint32_t>(items.size()));
        for (T& item : items) {
            (*this)(item);
        }
    }
    template <class T>
    requires std::is_class_v<T>
    void operator()(T& structure) { Visit(*this, structure); }
    template <class E>
    void Word(E word, std::size_t)
    {
        bytes += static_cast<char>(word);
    }
};

class CDecoder
{
public:
    explicit CDecoder(std::string_view bytes)
        : in(bytes)
    {
    }
    CByteReader in;

    void operator()(std::string& text)
    {
        const std::string_view bytes = in.Text();
        text = ToValidUtf8(bytes);
    }
    void operator()(bool& flag)
    {
        const std::uint8_t value = in.UInt8();
        if (value > 1) {
            in.SetFailed();
        }
        flag = value == 1;
    }
    void operator()(double& value) { value = in.Double(); }
    template <class T>
    void operator()(std::optional<T>& value)
    {
        bool there = false;
        (*this)(there);
        if (there && !in.Failed()) {
            (*this)(value.emplace());
        }
    }
    template <class T>
    void operator()(std::vector<T>& items)
    {
        const std::uint32_t count = in.UInt32();
        if (count > in.Left() / kLeastItem) {
            in.SetFailed();
            return;
        }
        // Grown item by item: a count that lies costs no more than the bytes that are really there.
        for (std::uint32_t i = 0; i < count && !in.Failed(); ++i) {
            (*this)(items.emplace_back());
        }
    }
    template <class T>
    requires std::is_class_v<T>
    void operator()(T& structure) { Visit(*this, structure); }
    template <class E>
    void Word(E& word, std::size_t words)
    {
        const std::uint8_t value = in.UInt8();
        if (value >= words) {
            in.SetFailed();
            return;
        }
        word = static_cast<E>(value);
    }

private:
    static constexpr std::size_t kLeastItem = 4; ///< an empty text, the smallest item of any list
};

template <std::size_t I = 0>
std::optional<TSubModel> DecodeAs(EPropId id, std::string_view bytes)
{
    if constexpr (I == std::variant_size_v<TSubModel>) {
        return std::nullopt;
    } else {
        std::variant_alternative_t<I, TSubModel> model;
        if (PropIdOf(TSubModel(std::in_place_index<I>)) != id) {
            return DecodeAs<I + 1>(id, bytes);
        }
        CDecoder decoder(bytes);
        Visit(decoder, model);
        if (decoder.in.Failed() || decoder.in.Left() != 0) {
            return std::nullopt;
        }
        return TSubModel(std::in_place_index<I>, std::move(model));
    }
}

} // namespace

std::string EncodeSubModel(const TSubModel& model)
{
    CEncoder encoder;
    // Visit takes its structure by reference for the reader's sake; the writer changes nothing in
    // it.
    std::visit([&encoder](auto& m) { Visit(encoder, m); }, const_cast<TSubModel&>(model)); // NOLINT
    return std::move(encoder.bytes);
}

std::optional<TSubModel> DecodeSubModel(EPropId id, std::string_view bytes)
{
    return DecodeAs(id, bytes);
}

} // namespace zov
