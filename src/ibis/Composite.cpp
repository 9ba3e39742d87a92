// SPDX-License-Identifier: Apache-2.0
#include "ibis/Composite.h"

#include "base/File.h"
#include "ibis/BufferNodes.h"
#include "ibis/DataParser.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <set>

namespace zov::ibis {

namespace {

SError Wrong(std::string text)
{
    return Fail(EErr::Argument, std::move(text));
}

/// Names go between blanks, on one line, in front of comments.
bool IsWord(std::string_view text)
{
    return !text.empty() && std::ranges::none_of(text, [](char c) {
        return static_cast<unsigned char>(c) <= ' ' || c == '|' || c == '[' || c == '\'';
    });
}

CResult<void> CheckWord(std::string_view what, std::string_view text)
{
    if (IsWord(text)) {
        return {};
    }
    return Wrong(text.empty()
                     ? fmt::format("{} is missing", what)
                     : fmt::format("{} '{}' holds a blank or another character that names can't "
                                   "have",
                                   what, text));
}

CResult<void> CheckOptional(std::string_view what, std::string_view text)
{
    return text.empty() ? CResult<void>() : CheckWord(what, text);
}

CResult<void> CheckBuffers(const SComposite& composite)
{
    std::set<std::string_view> names;
    for (const SCompositeBuffer& buffer : composite.buffers) {
        RETURN_IF_ERROR(CheckWord("name of a buffer", buffer.name));
        RETURN_IF_ERROR(CheckWord("model of buffer " + buffer.name, buffer.model));
        RETURN_IF_ERROR(CheckWord("file of buffer " + buffer.name, buffer.file));
        if (!names.insert(buffer.name).second) {
            return Wrong("buffer '" + buffer.name + "' stands twice");
        }
        if (buffer.name == composite.component) { // both would be "subckt_NAME"
            return Wrong("buffer '" + buffer.name + "' has the name of the component");
        }
        if (BufferKindOf(buffer.modelType) == nullptr) {
            return Wrong(fmt::format("buffer '{}': model type '{}' can't be wrapped, expected an "
                                     "input, output, open, ECL or terminator type",
                                     buffer.name, buffer.modelType));
        }
    }
    return composite.buffers.empty() ? CResult<void>()
                                     : CheckWord("wrapper file", composite.wrapperFile);
}

CResult<void> CheckPairing(const SComposite& composite, const SCompositePin& pin)
{
    const SCompositePin* partner = composite.FindPin(pin.inverts);
    if (partner == nullptr || partner == &pin || partner->buffer.empty() || pin.buffer.empty() ||
        !partner->inverts.empty()) {
        return Wrong(fmt::format("pin '{}' inverts '{}', which is no non-inverting pin with a "
                                 "buffer",
                                 pin.pin, pin.inverts));
    }
    return {};
}

CResult<void> CheckPin(const SComposite& composite, const SCompositePin& pin)
{
    RETURN_IF_ERROR(CheckWord("name of a pin", pin.pin));
    RETURN_IF_ERROR(CheckWord("signal of pin " + pin.pin, pin.signal));
    for (const std::string* text :
         {&pin.model, &pin.r, &pin.l, &pin.c, &pin.rails.pulldown, &pin.rails.pullup,
          &pin.rails.gndClamp, &pin.rails.powerClamp}) {
        RETURN_IF_ERROR(CheckOptional("a value of pin " + pin.pin, *text));
    }
    if (pin.pin == kFloatingNode) {
        return Wrong(fmt::format("a pin can't be named '{}': open terminals are", kFloatingNode));
    }
    if (pin.buffer.empty() == pin.model.empty()) {
        return Wrong("pin '" + pin.pin + "' needs either a buffer or a model");
    }
    if (!pin.buffer.empty() && composite.FindBuffer(pin.buffer) == nullptr) {
        return Wrong(fmt::format("pin '{}': there is no buffer '{}'", pin.pin, pin.buffer));
    }
    return pin.inverts.empty() ? CResult<void>() : CheckPairing(composite, pin);
}

CResult<void> CheckPins(const SComposite& composite)
{
    if (composite.pins.empty()) {
        return Wrong("there are no pins");
    }
    std::set<std::string_view> names;
    for (const SCompositePin& pin : composite.pins) {
        RETURN_IF_ERROR(CheckPin(composite, pin));
        if (!names.insert(pin.pin).second) {
            return Wrong("pin '" + pin.pin + "' stands twice");
        }
    }
    return {};
}

CResult<void> CheckPort(const SComposite& composite, const SCompositeCircuit& circuit,
                        const SCompositePort& port)
{
    const std::string where = fmt::format("port '{}' of circuit '{}'", port.name, circuit.name);
    RETURN_IF_ERROR(CheckWord("a port of circuit " + circuit.name, port.name));
    if (port.tie == ECompositeTie::Open) {
        return {};
    }
    RETURN_IF_ERROR(CheckWord(where + ": what it ties to", port.to));
    const SCompositePin* pin = composite.FindPin(port.to);
    if (port.tie == ECompositeTie::Pin && pin == nullptr) {
        return Wrong(fmt::format("{}: there is no pin '{}'", where, port.to));
    }
    if (port.tie == ECompositeTie::Pad && (pin == nullptr || pin->buffer.empty())) {
        return Wrong(fmt::format("{}: there is no pin '{}' with a buffer", where, port.to));
    }
    return {};
}

CResult<void> CheckCircuit(const SComposite& composite, const SCompositeCircuit& circuit)
{
    if (!circuit.Given()) {
        return {};
    }
    RETURN_IF_ERROR(CheckWord("name of a circuit", circuit.name));
    RETURN_IF_ERROR(CheckWord("file of circuit " + circuit.name, circuit.file));
    RETURN_IF_ERROR(CheckWord("sub-circuit of circuit " + circuit.name, circuit.subcircuit));
    if (circuit.ports.empty()) {
        return Wrong("circuit '" + circuit.name + "' has no ports");
    }
    std::set<std::string_view> names;
    for (const SCompositePort& port : circuit.ports) {
        RETURN_IF_ERROR(CheckPort(composite, circuit, port));
        if (!names.insert(port.name).second) {
            return Wrong(
                fmt::format("port '{}' of circuit '{}' stands twice", port.name, circuit.name));
        }
    }
    return {};
}

} // namespace

const SCompositeBuffer* SComposite::FindBuffer(std::string_view name) const
{
    const auto found = std::ranges::find(buffers, name, &SCompositeBuffer::name);
    return found == buffers.end() ? nullptr : &*found;
}

const SCompositePin* SComposite::FindPin(std::string_view name) const
{
    const auto found = std::ranges::find(pins, name, &SCompositePin::pin);
    return found == pins.end() ? nullptr : &*found;
}

CResult<void> CheckComposite(const SComposite& composite)
{
    RETURN_IF_ERROR(CheckWord("component", composite.component));
    RETURN_IF_ERROR(CheckWord("file name", composite.fileName));
    RETURN_IF_ERROR(CheckBuffers(composite));
    RETURN_IF_ERROR(CheckPins(composite));
    RETURN_IF_ERROR(CheckCircuit(composite, composite.package));
    RETURN_IF_ERROR(CheckCircuit(composite, composite.network));
    const bool same = composite.package.Given() && composite.package.name == composite.network.name;
    for (const SCompositeCircuit* circuit : {&composite.package, &composite.network}) {
        if (same || (circuit->Given() && composite.FindBuffer(circuit->name) != nullptr)) {
            return Wrong("circuit '" + circuit->name + "' has the name of another");
        }
    }
    return {};
}

CResult<void> FindModelTypes(SComposite& composite, const std::filesystem::path& folder)
{
    std::map<std::string, CIBISDataParser> files;
    for (SCompositeBuffer& buffer : composite.buffers) {
        if (!buffer.modelType.empty()) {
            continue;
        }
        CIBISDataParser& parser = files[buffer.file];
        if (parser.Data() == nullptr) {
            RETURN_IF_ERROR(parser.Read(folder / TextPath(buffer.file), {EIPCheckFirst::No, {}}));
        }
        const CIPDataModel* model = parser.Data()->FindModel(buffer.model);
        if (model == nullptr || model->ModelType().empty()) {
            return Wrong(fmt::format("buffer '{}': '{}' holds no model '{}' with a type",
                                     buffer.name, buffer.file, buffer.model));
        }
        buffer.modelType = model->ModelType();
    }
    return {};
}

} // namespace zov::ibis
