// SPDX-License-Identifier: Apache-2.0
// The files that lines of [Algorithmic Model] name: parameter files and code files.
#include "base/Number.h"
#include "base/Text.h"
#include "ibischk/Ami.h"
#include "ibischk/Exports.h"
#include "ibischk/algmod.h"
#include "ibischk/cmn.h"
#include "ibischk/mdlparts.h"

#include <fmt/format.h>

namespace zov::ibischk {

namespace {

#if defined(_WIN32)
constexpr std::string_view kSystem = "Windows";
#elif defined(__linux__)
constexpr std::string_view kSystem = "Linux";
#elif defined(__sun)
constexpr std::string_view kSystem = "Solaris";
#elif defined(__APPLE__)
constexpr std::string_view kSystem = "macOS";
#else
constexpr std::string_view kSystem = "Unix";
#endif
constexpr int kBits = static_cast<int>(sizeof(void*) * 8);

/// The processors of this program, as the formats number them; 0: any.
#if defined(__x86_64__) || defined(_M_X64)
constexpr std::uint16_t kElfMachine = 62;
constexpr std::uint16_t kPeMachine = 0x8664;
#elif defined(__i386__) || defined(_M_IX86)
constexpr std::uint16_t kElfMachine = 3;
constexpr std::uint16_t kPeMachine = 0x014C;
#elif defined(__aarch64__) || defined(_M_ARM64)
constexpr std::uint16_t kElfMachine = 183;
constexpr std::uint16_t kPeMachine = 0xAA64;
#else
constexpr std::uint16_t kElfMachine = 0;
constexpr std::uint16_t kPeMachine = 0;
#endif

constexpr std::string_view kRx = "Executable_Rx";
constexpr std::string_view kTx = "Executable_Tx";

bool RunsHere(const SPlatform& platform)
{
    return StartsWithNoCase(platform.system, kSystem) && platform.bits == kBits;
}

/// Before 7.0 the files lie beside the IBIS file; later they may lie in folders below.
void CheckPath(SCheck& check, std::string_view name, SPlace place)
{
    if (check.state.AtLeast(EVersion::V70)) {
        CheckFileName(check, name, EFileName::Referenced, place);
        return;
    }
    if (name.starts_with('/') || name.starts_with('\\')) {
        check.report.ErrorAt(place, 1926, name);
        return;
    }
    for (const std::string_view separator : {"/", "\\", ":"}) {
        if (name.find(separator) != std::string_view::npos) {
            check.report.ErrorAt(place, 1928, name, separator);
            return;
        }
    }
}

EAmiSide SideOf(const SCheck& check, const SExecutable& executable)
{
    const SModelType& type = check.data.models.back().Type();
    if (executable.kind == kTx || (type.Drives() && !type.receives)) {
        return EAmiSide::Tx;
    }
    const bool receives = type.receives && !type.Drives();
    return executable.kind == kRx || receives ? EAmiSide::Rx : EAmiSide::Open;
}

/// Checks the parameter file unless that was done for an earlier line.
SAmiFacts FactsOf(SCheck& check, const SExecutable& executable)
{
    const std::string_view name = executable.parameters;
    auto& known = check.data.algorithmicFiles.parameters;
    if (const auto found = known.find(name); found != known.end()) {
        return found->second;
    }
    CheckPath(check, name, executable.place);
    SAmiFacts facts;
    if (!EndsWithNoCase(name, ".ami")) {
        check.report.ErrorAt(executable.place, 4617, name);
    } else if (!ReferencedFileExists(check, name)) {
        check.report.ErrorAt(executable.place, 4618, name);
    } else {
        facts = CheckNamedAmi(check, name, EFileType::Ami, SideOf(check, executable));
    }
    return known[name] = facts;
}

/// One code file against the line that names it.
class CCodeCheck
{
public:
    CCodeCheck(SCheck& check, const SExecutable& executable, const SAmiFacts& facts)
        : m_check(check)
        , m_report(check.report)
        , m_line(executable)
        , m_facts(facts)
        , m_platform(SplitPlatform(executable.platform))
    {
    }

    ECodeStatus Run()
    {
        if (m_check.data.algorithmicFiles.told.insert(m_line.file).second) {
            CheckPath(m_check, m_line.file, m_line.place);
        }
        const auto bytes = m_check.files.Read(m_check.PathOf(m_line.file));
        if (!bytes) {
            m_report.ErrorAt(m_line.place, 4616, m_line.file);
            return ECodeStatus::NotChecked;
        }
        const SLibrary library = ReadLibrary(*bytes);
        if (library.format == ELibraryFormat::Unknown && IsSom(*bytes)) {
            m_report.Emit(EReport::Note, m_line.place, 4615,
                          {CArg(m_line.file), CArg("libraries of this system are not read")});
            return ECodeStatus::NotChecked;
        }
        const bool fits = Form(library) && Exports(library);
        if (!m_facts.read) {
            return ECodeStatus::NotChecked;
        }
        const bool runs = fits && MachineRuns(library);
        return !runs && RunsHere(m_platform) ? ECodeStatus::CannotRun : ECodeStatus::Checked;
    }

private:
    /// The format of libraries that one system had to itself.
    [[nodiscard]] bool IsSom(std::string_view bytes) const
    {
        return StartsWithNoCase(m_platform.system, "HP-UX") && bytes.size() > 4 &&
               bytes[0] == '\x02' && bytes[2] == '\x01';
    }

    static bool MachineRuns(const SLibrary& library)
    {
        const std::uint16_t machine =
            library.format == ELibraryFormat::Pe ? kPeMachine : kElfMachine;
        return machine == 0 || library.machine == machine;
    }

    [[nodiscard]] bool Form(const SLibrary& library)
    {
        const bool windows = StartsWithNoCase(m_platform.system, "Windows");
        bool other = false; // a system of which the format isn't known
        for (const std::string_view system : {"Windows", "Linux", "Solaris", "HP-UX"}) {
            other = other || StartsWithNoCase(m_platform.system, system);
        }
        other = !other;
        const ELibraryFormat expected = windows ? ELibraryFormat::Pe : ELibraryFormat::Elf;
        if (library.format == ELibraryFormat::Unknown || (!other && library.format != expected)) {
            const std::string_view known = windows ? "Windows (PE)" : "shared (ELF)";
            m_report.ErrorAt(m_line.place, 4614, m_line.file, other ? "shared" : known);
            return false;
        }
        if (!library.problem.empty()) {
            m_report.ErrorAt(m_line.place, 4615, m_line.file, library.problem);
            return false;
        }
        const int bits = BitsOf(library);
        if (m_platform.bits != 0 && bits != m_platform.bits) {
            m_report.ErrorAt(m_line.place, 4613, m_line.file, bits,
                             fmt::format("{}", m_platform.bits));
            return false;
        }
        return true;
    }

    /// What the processor says, where its width is known, else the header.
    static int BitsOf(const SLibrary& library)
    {
        if (library.format != ELibraryFormat::Pe) {
            return library.bits;
        }
        switch (library.machine) {
        case 0x014C:
            return 32;
        case 0x8664:
        case 0xAA64:
            return 64;
        default:
            return library.bits;
        }
    }

    [[nodiscard]] bool Exports(const SLibrary& library)
    {
        struct SNeed
        {
            std::string_view name;
            int code;
            bool needed;
        };
        const SNeed needs[] = {
            {"AMI_Init", 4702, true},
            {"AMI_Close", 4703, true},
            {"AMI_GetWave", 4704, m_facts.getWave},
            {"AMI_Resolve", 4705, m_facts.resolve},
            {"AMI_Resolve_Close", 4706, m_facts.resolve},
            {"AMI_Impulse", 4719, m_facts.impulse},
        };
        bool all = true;
        for (const SNeed& need : needs) {
            if (!need.needed || library.Exports(need.name)) {
                continue;
            }
            all = false;
            m_report.ErrorAt(m_line.place, need.code, m_line.file);
            if (const auto decorated = library.Decorated(need.name); !decorated.empty()) {
                m_report.Emit(EReport::Note, m_line.place, 4707,
                              {CArg(m_line.file), CArg(need.name), CArg(decorated)});
            }
        }
        return all;
    }

    SCheck& m_check;
    CReport& m_report;
    const SExecutable& m_line;
    const SAmiFacts& m_facts;
    SPlatform m_platform;
};

ECodeStatus StatusOf(SCheck& check, const SExecutable& executable, const SAmiFacts& facts)
{
    const std::string key =
        fmt::format("{}\n{}\n{}", executable.platform, executable.file, executable.parameters);
    auto& known = check.data.algorithmicFiles.code;
    const auto [entry, isNew] = known.try_emplace(key, ECodeStatus::NotChecked);
    if (isNew) {
        entry->second = CCodeCheck(check, executable, facts).Run();
    }
    return entry->second;
}

std::string_view TextOf(ECodeStatus status)
{
    switch (status) {
    case ECodeStatus::Checked:
        return "Checked";
    case ECodeStatus::CannotRun:
        return "Checked, The AMI executable library cannot run.";
    case ECodeStatus::NotChecked:
        break;
    }
    return "Not Checked";
}

/// Does the parameter file of a receiver give Repeater_Type?
/// @return none when no parameter file of the name was read
std::optional<bool> GivesRepeaterType(const SFileData& data, std::string_view name)
{
    const auto& known = data.algorithmicFiles.repeaters;
    std::optional<bool> gives;
    const auto look = [&](std::string_view model) {
        if (const auto found = known.find(model); found != known.end()) {
            gives = gives.value_or(false) || found->second;
        }
    };
    look(name);
    if (const auto selector = data.selectorNames.Find(name)) {
        for (const auto& row : data.selectors[*selector].rows) {
            look(row.model);
        }
    }
    return gives;
}

} // namespace

SPlatform SplitPlatform(std::string_view word)
{
    SPlatform platform;
    platform.system = word.substr(0, word.find('_'));
    const std::string_view bits = word.substr(word.rfind('_') + 1);
    platform.bits = bits == "32" || bits == "64" ? LeadingInt(bits) : 0;
    return platform;
}

void CheckExecutableFiles(SCheck& check)
{
    auto& files = check.data.algorithmicFiles;
    const std::string_view model = OpenModel(check).name;
    std::string lines;
    bool foreign = false;
    for (const SExecutable& executable : check.data.model.executables) {
        const SAmiFacts facts = FactsOf(check, executable);
        if (facts.read && executable.kind != kTx) {
            bool& repeater = files.repeaters.try_emplace(model, false).first->second;
            repeater = repeater || facts.repeater;
        }
        const ECodeStatus status = StatusOf(check, executable, facts);
        const SPlatform platform = SplitPlatform(executable.platform);
        lines += fmt::format("{}:\t\t{} {}:\t\t{}\n", executable.file, platform.system,
                             platform.bits, TextOf(status));
        foreign = foreign || !RunsHere(platform);
    }
    check.report.Progress(
        fmt::format("... Status of [Algorithmic Model] Executables for {} {}:\n", kSystem, kBits));
    check.report.Progress(lines);
    if (foreign) {
        check.report.Progress(fmt::format("... This {} executable supports {} {} bit only\n",
                                          "checker", kSystem, kBits));
    }
}

void CheckRepeaterTypes(SCheck& check)
{
    if (check.data.algorithmicFiles.repeaters.empty()) {
        return;
    }
    for (const SComponent& component : check.data.components) {
        const CPathScope scope(check.report,
                               {component.name, {}, KeywordText(EKeyword::RepeaterPin), {}});
        for (const SRepeaterPin& row : component.repeaterPins) {
            const SPin* pin = component.FindPin(row.receiver);
            const auto gives =
                pin == nullptr ? std::nullopt : GivesRepeaterType(check.data, pin->model);
            if (gives && !*gives) {
                check.report.WarningAt(row.place, 6413, row.receiver);
            }
        }
    }
}

} // namespace zov::ibischk
