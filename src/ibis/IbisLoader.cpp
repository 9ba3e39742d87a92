// SPDX-License-Identifier: Apache-2.0
#include "ibis/IbisLoader.h"

#include "base/File.h"
#include "base/Text.h"
#include "ibis/BusBlock.h"

namespace zov::ibis {

namespace {

constexpr std::string_view kCopy = "_Copy";

/// The stem without the tail that a former copy gave it.
std::string_view WithoutCopy(std::string_view stem)
{
    for (std::size_t i = 0; i + kCopy.size() <= stem.size(); ++i) {
        if (EqualsNoCase(stem.substr(i, kCopy.size()), kCopy)) {
            return stem.substr(0, i);
        }
    }
    return stem;
}

} // namespace

std::filesystem::path NextCopyPath(const std::filesystem::path& source)
{
    const std::string name = PathText(source.stem());
    const std::string stem(WithoutCopy(name));
    std::error_code ignored;
    for (std::size_t counter = 1;; ++counter) {
        std::filesystem::path path =
            source.parent_path() /
            TextPath(stem + std::string(kCopy) + std::to_string(counter) + ".ibs");
        if (!std::filesystem::exists(path, ignored)) {
            return path;
        }
    }
}

CResult<void> CIBISLoader::Open(const std::filesystem::path& path, const FIPProgress& progress)
{
    ASSIGN_OR_RETURN(std::string text, ReadWholeFile(path));
    CParserIBS parser;
    bool stopped = false;
    parser.SetProgress([&](double share) {
        stopped = progress && !progress(share);
        return !stopped;
    });
    auto file = parser.Parse(std::move(text));
    if (stopped) {
        return Fail(EErr::Cancelled, "reading was stopped");
    }
    ASSIGN_OR_RETURN(std::vector<std::string> names,
                     ComponentNames(*file, PathText(path.filename())));
    m_path = path;
    m_file = std::move(file);
    m_components = std::move(names);
    m_pins = {};
    m_definitions = {};
    m_had = false;
    m_changed = false;
    return {};
}

CResult<void> CIBISLoader::Select(std::string_view component)
{
    if (m_file == nullptr) {
        return Fail(EErr::Argument, "no file is open");
    }
    ASSIGN_OR_RETURN(SPinList pins, ReadPinList(*m_file, PathText(m_path.filename()), component));
    CNullDiag quiet;
    auto block =
        FindBusBlock(m_file->Text(), component, m_messages != nullptr ? *m_messages : quiet);
    m_pins = std::move(pins);
    m_had = block.has_value();
    m_definitions = block ? std::move(block->definitions) : SBusDefinitions();
    m_changed = false;
    return {};
}

void CIBISLoader::SetDefinitions(SBusDefinitions definitions)
{
    m_definitions = std::move(definitions);
    OnBusDefinitionsChanged();
}

CResult<std::filesystem::path> CIBISLoader::SaveCopy()
{
    if (m_file == nullptr) {
        return Fail(EErr::Argument, "no file is open");
    }
    ASSIGN_OR_RETURN(const std::string text,
                     PutBusBlock(m_file->Text(), m_pins.component, m_definitions));
    const std::filesystem::path copy = NextCopyPath(m_path);
    if (const CResult<void> written = WriteFileAtomic(copy, text); !written) {
        SError error = Fail(EErr::Io, "Cannot make a copy of the IBIS file.");
        error.notes.push_back(written.Error().Full());
        return error;
    }
    m_changed = false;
    return copy;
}

CResult<void> CIBISLoader::AssignController()
{
    RETURN_IF_ERROR(CheckControllerSide(m_pins.component, m_definitions.type));
    m_controller = m_pins.component;
    return {};
}

CResult<void> CIBISLoader::AssignMemory()
{
    RETURN_IF_ERROR(CheckMemorySide(m_pins.component, m_definitions.type));
    m_memory = m_pins.component;
    return {};
}

} // namespace zov::ibis
