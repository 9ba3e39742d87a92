// SPDX-License-Identifier: Apache-2.0
/// What a composite IBIS file is made of: one component whose buffers, package and on-die power
/// network are external circuits. Filled by the editor and the model wrapper wizard, or from JSON.
#pragma once

#include "base/Clock.h"
#include "base/Result.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zov::ibis {

/// An IBIS model that is wrapped into a SPICE sub-circuit.
struct SCompositeBuffer
{
    std::string name;      ///< of the wrapper: sub-circuit "subckt_NAME"
    std::string file;      ///< IBIS file that holds the model
    std::string model;     ///< [Model] in that file
    std::string modelType; ///< "I/O"
};

/// The rails of a pin's buffer; empty where it has none.
struct SCompositeRails
{
    std::string pulldown;
    std::string pullup;
    std::string gndClamp;
    std::string powerClamp;
};

struct SCompositePin
{
    std::string pin;
    std::string signal;
    std::string model;  ///< of pins without buffer: POWER, GND, NC, a model name
    std::string buffer; ///< name of a SCompositeBuffer; the pin is written as CIRCUITCALL
    std::string r;      ///< as text; empty is written as NC
    std::string l;
    std::string c;
    std::string inverts; ///< pin of the non-inverting buffer that this one is paired with
    SCompositeRails rails;
};

/// What a port of a circuit ties to.
enum class ECompositeTie : std::uint8_t
{
    Open,        ///< nothing: a node of its own
    Pin,         ///< a pin, as seen from outside
    Pad,         ///< the buffer's side of a signal pin
    PackageRail, ///< a rail between package and on-die network
    DieRail      ///< a rail between on-die network and buffers
};

struct SCompositePort
{
    std::string name;
    ECompositeTie tie = ECompositeTie::Open;
    std::string to; ///< name of the pin or rail
};

struct SCompositeCircuit
{
    std::string name; ///< of the external circuit; empty: there is no such circuit
    std::string file;
    std::string subcircuit;
    std::vector<SCompositePort> ports;

    [[nodiscard]] bool Given() const { return !name.empty(); }
};

struct SComposite
{
    std::string component;
    std::string fileName;    ///< of the IBIS file
    std::string wrapperFile; ///< SPICE file with the wrapped buffers, beside it
    std::vector<SCompositePin> pins;
    std::vector<SCompositeBuffer> buffers;
    SCompositeCircuit package;
    SCompositeCircuit network;

    [[nodiscard]] const SCompositeBuffer* FindBuffer(std::string_view name) const;
    [[nodiscard]] const SCompositePin* FindPin(std::string_view name) const;
};

/// Nothing missing, nothing twice, every name that is referred to there. Errors: Argument, the text
/// names the member.
CResult<void> CheckComposite(const SComposite& composite);

/// From JSON, see docs/formats/composite.md. Members that are not known are errors, too.
CResult<SComposite> ReadCompositeJson(std::string_view text);
[[nodiscard]] std::string WriteCompositeJson(const SComposite& composite);

/// Fills in model types that are not given from the IBIS files named, which are looked for in
/// `folder`.
CResult<void> FindModelTypes(SComposite& composite, const std::filesystem::path& folder);

/// The IBIS file, CR LF lines. Errors: as CheckComposite, and a model type that can't be wrapped.
CResult<std::string> WriteCompositeIbis(const SComposite& composite, const SLocalTime& date);
/// The SPICE file with the wrapped buffers and the sub-circuit that puts all together.
CResult<std::string> WriteCompositeSpice(const SComposite& composite);

/// The IBIS file and, where there are buffers, the SPICE file beside it.
[[nodiscard]] std::vector<std::filesystem::path>
CompositeTargets(const SComposite& composite, const std::filesystem::path& path);
/// Whether the files to write are two, and none of those that they refer to or were described by.
/// Errors: Argument.
/// @param description  where the composite was read from, empty for nowhere
CResult<void> CheckCompositeTargets(const SComposite& composite, const std::filesystem::path& path,
                                    const std::filesystem::path& description = {});
/// Names of files that are relative to one folder become relative to another; the same folder
/// leaves them as they are written, and absolute names stay.
void MoveCompositeFiles(SComposite& composite, const std::filesystem::path& from,
                        const std::filesystem::path& to);
/// The files named that are not there, each once.
/// @param folder  that relative names begin at
[[nodiscard]] std::vector<std::string> MissingCompositeFiles(const SComposite& composite,
                                                             const std::filesystem::path& folder);

/// Writes both files, the SPICE one first, into the folder of `path`. Errors: those of the texts;
/// Argument when a file that the composite refers to would be overwritten; Io, Access.
CResult<void> SaveComposite(const SComposite& composite, const std::filesystem::path& path,
                            const SLocalTime& date);

} // namespace zov::ibis
