// SPDX-License-Identifier: Apache-2.0
#include "core/LibrarySet.h"

#include "base/Text.h"

#include <algorithm>
#include <utility>

namespace zov {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kNewLibrary = "*New Library*";
constexpr std::string_view kReplaceProject = "Cannot open multiple top level Project Libraries.\n"
                                             "Replace existing project library with '{}'?";
constexpr std::string_view kManyProjects =
    "[WARNING] You cannot open multiple top level Project Libraries. '{}'";
constexpr std::string_view kOneFileOnly =
    "Cannot add the ZOV library file to the project library '{}'. Only one ZOV file is allowed to "
    "be added to the project library.";
constexpr std::string_view kLoaded = "'{}' models loaded from the ZOV library file '{}'.";
constexpr std::string_view kInvalidConfigPath = "Invalid ZOV config file path: {}";
constexpr std::uint64_t kListFileLimit = std::uint64_t{64} << 20U;

/// The message with its "{}" filled in, in order.
std::string Filled(std::string_view message, std::initializer_list<std::string> values)
{
    std::string out;
    for (const std::string& value : values) {
        const std::size_t at = message.find("{}");
        out += message.substr(0, at);
        out += value;
        message.remove_prefix(at + 2);
    }
    out += message;
    return out;
}

bool Exists(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(path, ignored);
}

bool SameFile(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    return !a.empty() && !b.empty() && (a == b || fs::equivalent(a, b, ignored));
}

/// The library file of that name in the folder, case of the extension and, failing an exact one, of
/// the name not counting; empty when there is none.
fs::path LibraryNamed(const fs::path& folder, const std::string& name)
{
    fs::path found;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const fs::path& path = entry.path();
        if (!EqualsNoCase(ExtensionOf(path), ".zov") ||
            !EqualsNoCase(PathText(path.stem()), name)) {
            continue;
        }
        if (PathText(path.stem()) == name) {
            return path;
        }
        found = found.empty() ? path : std::min(found, path);
    }
    return found;
}

std::string FolderName(const fs::path& folder)
{
    fs::path whole = fs::absolute(folder).lexically_normal();
    if (!whole.has_filename()) { // "board/"
        whole = whole.parent_path();
    }
    return PathText(whole.filename());
}

} // namespace

std::string SLibraryEntry::DisplayName() const
{
    return path.empty() ? std::string(kNewLibrary) : PathText(path.stem());
}

std::string SLibraryEntry::Listed() const
{
    return path.empty() ? DisplayName() : DisplayName() + " (" + PathText(path) + ")";
}

const SLibraryEntry* CLibrarySet::Project() const
{
    return m_project.empty() ? nullptr : &m_project.front();
}

std::vector<const SLibraryEntry*> CLibrarySet::Entries() const
{
    std::vector<const SLibraryEntry*> entries;
    for (const auto* list : {&m_project, &m_externals}) {
        for (const SLibraryEntry& entry : *list) {
            entries.push_back(&entry);
        }
    }
    return entries;
}

std::vector<std::shared_ptr<CZovLibrary>> CLibrarySet::ActiveLibraries() const
{
    std::vector<std::shared_ptr<CZovLibrary>> libraries;
    for (const SLibraryEntry* entry : Entries()) {
        if (entry->on) {
            libraries.push_back(entry->library);
        }
    }
    return libraries;
}

bool CLibrarySet::MayReplaceProject(const std::string& by, CLogSink& log,
                                    CQuestions* questions) const
{
    if (m_project.empty()) {
        return true;
    }
    if (questions == nullptr) {
        log.Write(Filled(kManyProjects, {by}));
        return false;
    }
    return questions->YesNo(Filled(kReplaceProject, {by}));
}

CResult<std::shared_ptr<CZovLibrary>> CLibrarySet::Load(const fs::path& path, CLogSink& log)
{
    ASSIGN_OR_RETURN(auto library, m_cache.Open(path, log));
    log.Write(Filled(kLoaded, {std::to_string(library->Count()), PathText(path)}));
    return library;
}

CResult<EOpened> CLibrarySet::OpenProject(const fs::path& path, CLogSink& log,
                                          CQuestions* questions)
{
    if (!MayReplaceProject(PathText(path), log, questions)) {
        return EOpened::Refused;
    }
    ASSIGN_OR_RETURN(auto library, Load(path, log));
    SetProject({{std::move(library), path, true, true, false}});
    return EOpened::Opened;
}

fs::path CLibrarySet::ProjectBeside(const fs::path& preferences)
{
    const fs::path folder = fs::absolute(preferences).parent_path();
    const fs::path project = LibraryNamed(folder, PathText(preferences.stem()));
    return project.empty() ? LibraryNamed(folder, FolderName(folder)) : project;
}

std::vector<fs::path> CLibrarySet::FilesOf(const fs::path& path)
{
    std::error_code ignored;
    fs::path preferences = path;
    std::vector<fs::path> files;
    if (fs::is_directory(path, ignored)) {
        files = {LibraryNamed(path, FolderName(path))};
        preferences = files.front();
        preferences.replace_extension(".zovp");
    } else if (!EqualsNoCase(ExtensionOf(path), ".zovp")) {
        return {path};
    }
    const CResult<std::string> bytes = ReadWholeFile(preferences, kListFileLimit);
    if (!bytes) {
        return files;
    }
    files = {ProjectBeside(preferences)};
    const fs::path folder = fs::absolute(preferences).parent_path();
    if (const auto entries = ParsePreferences(*bytes, PathText(preferences), folder)) {
        for (const SListedLibrary& entry : *entries) {
            files.push_back(entry.path);
        }
    }
    return files;
}

CResult<EOpened> CLibrarySet::OpenPreferences(const fs::path& path, CLogSink& log,
                                              CQuestions* questions)
{
    const fs::path folder = fs::absolute(path).parent_path();
    ASSIGN_OR_RETURN(const std::string bytes, ReadWholeFile(path, kListFileLimit));
    ASSIGN_OR_RETURN(const auto entries, ParsePreferences(bytes, PathText(path), folder));
    if (const fs::path project = ProjectBeside(path); !project.empty()) {
        ASSIGN_OR_RETURN(const EOpened opened, OpenProject(project, log, questions));
        if (opened != EOpened::Opened) {
            return opened;
        }
    }
    AddListed(entries, log);
    return EOpened::Opened;
}

CResult<EOpened> CLibrarySet::Open(const fs::path& path, CLogSink& log, CQuestions* questions)
{
    const bool isPreferences = EqualsNoCase(ExtensionOf(path), ".zovp");
    if (!Exists(path) || (!isPreferences && FormOf(path) == ELibraryForm::Unknown)) {
        return EOpened::Ignored;
    }
    return isPreferences ? OpenPreferences(path, log, questions)
                         : OpenProject(path, log, questions);
}

CResult<EOpened> CLibrarySet::OpenFolder(const fs::path& folder, CLogSink& log,
                                         CQuestions* questions)
{
    const std::string name = FolderName(folder);
    const fs::path library = LibraryNamed(folder, name);
    if (library.empty()) {
        return Fail(EErr::NotFound,
                    "the folder '" + PathText(folder) + "' holds no library '" + name + ".zov'");
    }
    fs::path preferences = library;
    preferences.replace_extension(".zovp");
    return Exists(preferences) ? OpenPreferences(preferences, log, questions)
                               : OpenProject(library, log, questions);
}

EOpened CLibrarySet::NewProject(CLogSink& log, CQuestions* questions)
{
    if (!MayReplaceProject(std::string(kNewLibrary), log, questions)) {
        return EOpened::Refused;
    }
    SetProject({{std::make_shared<CZovLibrary>(), {}, true, true, false}});
    return EOpened::Opened;
}

CResult<EOpened> CLibrarySet::AddToProject(const fs::path& path, CLogSink& log)
{
    if (m_project.empty()) {
        return Open(path, log);
    }
    const SLibraryEntry& project = m_project.front();
    log.Write(Filled(kOneFileOnly,
                     {project.path.empty() ? project.DisplayName() : PathText(project.path)}));
    return EOpened::Refused;
}

void CLibrarySet::CloseProject()
{
    SetProject({});
}

void CLibrarySet::SetProject(std::vector<SLibraryEntry> project)
{
    Forget(std::exchange(m_project, std::move(project)));
}

void CLibrarySet::Forget(const std::vector<SLibraryEntry>& gone)
{
    const auto entries = Entries();
    for (const SLibraryEntry& entry : gone) {
        const bool kept =
            std::ranges::find(entries, entry.library, &SLibraryEntry::library) != entries.end();
        if (!kept && !entry.path.empty()) {
            m_cache.Close(entry.path);
        }
    }
}

CResult<void> CLibrarySet::SaveProject(const fs::path& path, CLogSink& log)
{
    if (m_project.empty()) {
        return Fail(EErr::Argument, "there is no project library");
    }
    SLibraryEntry& project = m_project.front();
    const fs::path target = path.empty() ? project.path : path;
    if (target.empty()) {
        return Fail(EErr::Argument, "the project library has no path yet");
    }
    RETURN_IF_ERROR(SaveLibrary(*project.library, target, m_units, log));
    SavedAs(*project.library, target);
    return {};
}

void CLibrarySet::SetUnits(const CDisplayUnits& units)
{
    m_units = units;
    m_cache.SetUnits(units);
}

void CLibrarySet::SavedAs(const CZovLibrary& library, const fs::path& path)
{
    for (auto* list : {&m_project, &m_externals}) {
        for (SLibraryEntry& entry : *list) {
            if (entry.library.get() != &library) {
                continue;
            }
            if (!entry.path.empty()) {
                m_cache.Close(entry.path);
            }
            entry.path = path;
            entry.library->SetPath(path);
            m_cache.Close(path);
            m_cache.Put(path, entry.library);
        }
    }
}

CResult<EOpened> CLibrarySet::AddExternal(const fs::path& path, CLogSink& log, bool on,
                                          bool remember)
{
    if (!Exists(path) || FormOf(path) == ELibraryForm::Unknown) {
        return EOpened::Ignored;
    }
    const auto found = std::ranges::find_if(
        m_externals, [&](const SLibraryEntry& entry) { return SameFile(entry.path, path); });
    if (found != m_externals.end()) {
        found->on = on;
        found->remember = remember;
        return EOpened::Opened;
    }
    ASSIGN_OR_RETURN(auto library, Load(path, log));
    m_externals.push_back({std::move(library), path, false, on, remember});
    return EOpened::Opened;
}

bool CLibrarySet::SwitchExternal(std::size_t index, bool on)
{
    if (index >= m_externals.size()) {
        return false;
    }
    m_externals[index].on = on;
    return true;
}

bool CLibrarySet::RememberExternal(std::size_t index, bool remember)
{
    if (index >= m_externals.size()) {
        return false;
    }
    m_externals[index].remember = remember;
    return true;
}

bool CLibrarySet::RemoveExternal(std::size_t index)
{
    if (index >= m_externals.size()) {
        return false;
    }
    const std::vector<SLibraryEntry> gone = {std::move(m_externals[index])};
    m_externals.erase(m_externals.begin() + static_cast<std::ptrdiff_t>(index));
    Forget(gone);
    return true;
}

bool CLibrarySet::MoveExternal(std::size_t from, std::size_t to)
{
    if (from >= m_externals.size() || to >= m_externals.size()) {
        return false;
    }
    SLibraryEntry moved = std::move(m_externals[from]);
    m_externals.erase(m_externals.begin() + static_cast<std::ptrdiff_t>(from));
    m_externals.insert(m_externals.begin() + static_cast<std::ptrdiff_t>(to), std::move(moved));
    return true;
}

void CLibrarySet::OrderExternals(const std::vector<std::shared_ptr<CZovLibrary>>& libraries)
{
    const auto placeOf = [&](const SLibraryEntry& entry) {
        return std::ranges::find(libraries, entry.library) - libraries.begin();
    };
    std::ranges::stable_sort(m_externals, {}, placeOf);
}

std::vector<SListedLibrary> CLibrarySet::Remembered() const
{
    std::vector<SListedLibrary> listed;
    for (const SLibraryEntry& entry : m_externals) {
        if (entry.remember && !entry.path.empty()) {
            listed.push_back({entry.path, entry.on});
        }
    }
    return listed;
}

CResult<void> CLibrarySet::SavePreferences(const fs::path& path) const
{
    ASSIGN_OR_RETURN(const std::string text,
                     FormatPreferences(Remembered(), fs::absolute(path).parent_path()));
    return WriteFileAtomic(path, text);
}

void CLibrarySet::AddListed(const std::vector<SListedLibrary>& entries, CLogSink& log)
{
    for (const SListedLibrary& entry : entries) {
        const CResult<EOpened> added = AddExternal(entry.path, log, entry.on);
        if (!added) {
            log.Write("[Error] " + added.Error().Full());
        } else if (*added == EOpened::Ignored) {
            log.Write("[WARNING] '" + PathText(entry.path) +
                      "' is listed but is no library that is there; it is skipped");
        }
    }
}

CResult<void> CLibrarySet::LoadConfiguration(const fs::path& path, CLogSink& log)
{
    if (path.empty()) {
        return Fail(EErr::Argument, Filled(kInvalidConfigPath, {PathText(path)}));
    }
    ASSIGN_OR_RETURN(const std::string text, ReadWholeFile(path, kListFileLimit));
    ASSIGN_OR_RETURN(auto sets,
                     ParseSetConfiguration(text, PathText(path), fs::absolute(path).parent_path()));
    if (!sets) {
        return {};
    }
    // The old ones go last, so that a library in both is not read again.
    std::vector<SLibraryEntry> old = std::move(m_externals);
    m_externals.clear();
    for (const SExternalLibSet& set : *sets) {
        std::vector<SListedLibrary> listed = set.libraries;
        for (SListedLibrary& library : listed) {
            library.on = library.on && set.on;
        }
        AddListed(listed, log);
    }
    Forget(old);
    m_sets = std::move(*sets);
    return {};
}

} // namespace zov
