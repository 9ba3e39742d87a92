// SPDX-License-Identifier: Apache-2.0
/// Libraries in and out of files, by extension: `.zov` (native), `.zovx` and `.xml` (exchange,
/// vendor decap lists), `.sp` (sub-circuits as capacitors).
#pragma once

#include "base/File.h"
#include "base/Result.h"
#include "base/Sink.h"
#include "core/ZovLibrary.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zov {

/// Form of a file by its extension, without regard to case.
enum class ELibraryForm
{
    Native,   ///< .zov
    Exchange, ///< .zovx
    Xml,      ///< .xml: exchange or vendor decap list, by its root
    Spice,    ///< .sp
    Unknown
};
[[nodiscard]] ELibraryForm FormOf(const std::filesystem::path& path);

/// Told every few thousand records what share is done, 0 to 1; false ends the work with
/// EErr::Cancelled.
using FLibraryProgress = std::function<bool(double)>;

/// Reads a file of any form into a new library and lifts old records to the current property set.
/// Messages of single records go to `log` in their fixed words; the library's path is set.
/// The error's text is the fixed wording for the user ("Cannot load the ZOV library file '%s'
/// because ...", "Cannot load the zovx file ...", "Invalid ZOV file path: %s", ...); its notes say
/// what was wrong and where.
CResult<CZovLibrary> LoadLibrary(const std::filesystem::path& path, const CDisplayUnits& units,
                                 CLogSink& log, const FLibraryProgress& progress = {});

/// Writes `.zov` or `.zovx`, by the extension, in one step (CAtomicFile); other extensions are
/// refused with EErr::Unsupported. For `.zovx`, values that the form cannot hold are written as
/// they stand and told to `log`. Cancelled, the file is as it was.
CResult<void> SaveLibrary(const CZovLibrary& library, const std::filesystem::path& path,
                          const CDisplayUnits& units, CLogSink& log,
                          const std::function<bool()>& goOn = {});

// --- native file (ZovLibraryFile.cpp) ------------------------------------------------------------

/// A value that an older file holds as text where a number is due today.
struct SOldValue
{
    std::size_t record = 0; ///< position in the library
    EPropId id = EPropId::ModelName;
    std::string text;
};

/// Adds the records of a native file's bytes to `library`; values of older files that need the
/// upgrade come back apart. Errors (Format) name the offset and the record; the library is then
/// unchanged.
CResult<std::vector<SOldValue>> ReadNative(std::string_view bytes, CZovLibrary& library,
                                           const FLibraryProgress& progress = {});

/// Brings the records of an older file to today's property set: old texts become numbers, those
/// without a unit suffix in the unit of `units`. Errors (Format): a text that is no number, a
/// number that is not finite.
CResult<void> UpgradeLibrary(CZovLibrary& library, const std::vector<SOldValue>& oldValues,
                             const CDisplayUnits& units);

/// Both header tests: the tag without regard to case (first opening) or exactly (reopening for the
/// body).
enum class EHeaderTest
{
    FirstOpening,
    Reopening
};
[[nodiscard]] bool IsNativeHeader(std::string_view bytes, EHeaderTest test);
void WriteNative(const CZovLibrary& library, CByteWriter& out);

// --- exchange text (ExchangeReader.cpp, ExchangeWriter.cpp)
// ---------------------------------------

/// True when the extension is .xml or .zovx, the file reads as XML and its root is ZOV_Lib with a
/// `Version` that is a non-negative number, or (.xml only) DecapLib or PopDecapLib.
[[nodiscard]] bool IsImportable(const std::filesystem::path& path);

/// Reads a `.zovx` or `.xml` file into the library; returns the number of records added.
/// A record with an error is left out, one with a warning kept; both are told to `log`.
CResult<std::size_t> ImportLibrary(CZovLibrary& library, const std::filesystem::path& path,
                                   CLogSink& log, const FLibraryProgress& progress = {});
/// The same for text in memory; files named in records are looked for relative to `folder`.
struct SImportOptions
{
    std::filesystem::path folder; ///< of the library file
    std::filesystem::path shown;  ///< path named in messages
    bool allowDecapRoot = false;  ///< DecapLib and PopDecapLib are accepted (.xml)
    bool locateFiles = true;      ///< false: file existence is not tested (measurements, fuzzing)
    FLibraryProgress progress;
};
CResult<std::size_t> ImportExchangeText(CZovLibrary& library, std::string_view text,
                                        const SImportOptions& options, CLogSink& log);

/// The exchange text of the library, to the letter of the form. Values with a quote, ampersand or
/// angle bracket are written as they stand and told to `log` by record and property.
void WriteExchange(const CZovLibrary& library, const CDisplayUnits& units, CByteWriter& out,
                   CLogSink& log);
/// The same to a path: false for an empty path or a file that cannot be written.
bool WriteLibrary(const CZovLibrary& library, const std::filesystem::path& path,
                  const CDisplayUnits& units, CLogSink& log);

/// Where a circuit file named in a record is: the name as it stands (when absolute or existing),
/// then under `folder`: the name, "S-Parameter File/", "Tavrely S-Parameter File/", the track
/// folder; empty when nowhere.
[[nodiscard]] std::filesystem::path LocateCircuitFile(const std::filesystem::path& folder,
                                                      std::string_view name,
                                                      std::string_view trackFolder);

// --- SPICE sub-circuits (SpiceLibrary.cpp)
// ---------------------------------------------------------

/// One sub-circuit of a SPICE text.
struct SSubcircuit
{
    std::string name;
    std::vector<std::string> pins;
    std::string body; ///< lines between .SUBCKT and .ENDS, each ended by CR LF
};
/// Every sub-circuit from ".SUBCKT" to ".ENDS", in order; continuation lines of the head are
/// joined, parameters ("name=value", "PARAMS:") are not pins. An unfinished one at the end is an
/// error that names its line.
CResult<std::vector<SSubcircuit>> ReadSubcircuits(std::string_view text);
/// ".SUBCKT %s %s\r\n%s.ENDS\r\n" of name, pins and body.
[[nodiscard]] std::string CircuitText(const SSubcircuit& subcircuit);
/// Every sub-circuit as a capacitor with a circuit definition and the size "0402E"; returns their
/// number.
CResult<std::size_t> ImportSpice(CZovLibrary& library, std::string_view text);

// --- shared instances (LibraryCache.cpp)
// -----------------------------------------------------------

/// Opened libraries by path: opening the same file again gives the library that is already there.
class CLibraryCache
{
public:
    explicit CLibraryCache(CDisplayUnits units = {})
        : m_units(units)
    {
    }
    /// As LoadLibrary, which also describes the errors. The path is compared in its canonical form.
    CResult<std::shared_ptr<CZovLibrary>> Open(const std::filesystem::path& path, CLogSink& log);
    /// Takes a library that was loaded elsewhere, on another thread for instance. One that is open
    /// under the path stays.
    void Put(const std::filesystem::path& path, std::shared_ptr<CZovLibrary> library);
    /// The file was tried elsewhere, with this outcome: Open gives it once and doesn't read again.
    void PutFailure(const std::filesystem::path& path, SError error);
    /// Files that failed elsewhere and were not opened are read again when they are.
    void ForgetFailures() { m_failed.clear(); }
    /// For libraries that are loaded from now on.
    void SetUnits(const CDisplayUnits& units) { m_units = units; }
    /// Forgets a path; whoever holds the library keeps it.
    void Close(const std::filesystem::path& path);
    [[nodiscard]] std::size_t Count() const { return m_open.size(); }

private:
    CDisplayUnits m_units;
    std::map<std::filesystem::path, std::shared_ptr<CZovLibrary>> m_open;
    std::map<std::filesystem::path, SError> m_failed;
};

} // namespace zov
