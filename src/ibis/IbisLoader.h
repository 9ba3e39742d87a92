// SPDX-License-Identifier: Apache-2.0
/// The loader's engine: a file's components, their pins and bus definitions, and the annotated
/// copy.
///
///     CIBISLoader loader;
///     RETURN_IF_ERROR(loader.Open("controller.ibs"));
///     RETURN_IF_ERROR(loader.Select("ctrl"));
///     RETURN_IF_ERROR(loader.Editor().AddBus("DQ", EBusType::Data));
///     ASSIGN_OR_RETURN(std::filesystem::path copy, loader.SaveCopy());
#pragma once

#include "base/Sink.h"
#include "ibis/BusDefinitions.h"
#include "ibis/Parser.h"
#include "ibis/PinList.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace zov::ibis {

/// Name of the next copy of a file that is not there yet: "chip_Copy1.ibs" of "chip.ibs", and of
/// "chip_copy7.ibs" too.
[[nodiscard]] std::filesystem::path NextCopyPath(const std::filesystem::path& source);

class CIBISLoader final : public BusDefinitionEditorListener
{
public:
    /// @param messages  takes what was odd in definitions that were read; may be null
    explicit CIBISLoader(CDiagSink* messages = nullptr)
        : m_messages(messages)
    {
    }

    /// Reads a file. Errors: of the file, those of ComponentNames, and Cancelled.
    /// @param progress  told of the share that is done; false stops
    CResult<void> Open(const std::filesystem::path& path, const FIPProgress& progress = {});
    [[nodiscard]] const std::vector<std::string>& Components() const { return m_components; }
    /// Chooses the component: its pin list and its definitions, empty ones when it has none.
    CResult<void> Select(std::string_view component);

    [[nodiscard]] const SPinList& Pins() const { return m_pins; }
    [[nodiscard]] const SBusDefinitions& Definitions() const { return m_definitions; }
    /// The file holds definitions of the component.
    [[nodiscard]] bool HadDefinitions() const { return m_had; }
    [[nodiscard]] CBusDefinitionEditor& Editor() { return m_editor; }
    void SetDefinitions(SBusDefinitions definitions);
    [[nodiscard]] bool Changed() const { return m_changed; }

    /// Writes a copy with the definitions beside the file. Errors: "Cannot make a copy of the IBIS
    /// file." with the reason as a note, and definitions that break a rule.
    CResult<std::filesystem::path> SaveCopy();

    /// Puts the component on a side of an interface.
    CResult<void> AssignController();
    CResult<void> AssignMemory();
    [[nodiscard]] const std::string& Controller() const { return m_controller; }
    [[nodiscard]] const std::string& Memory() const { return m_memory; }

    void OnBusDefinitionsChanged() override { m_changed = true; }

private:
    CDiagSink* m_messages;
    std::filesystem::path m_path;
    std::unique_ptr<CIPDataFile> m_file;
    std::vector<std::string> m_components;
    SPinList m_pins;
    SBusDefinitions m_definitions;
    CBusDefinitionEditor m_editor{m_definitions, this};
    std::string m_controller;
    std::string m_memory;
    bool m_had = false;
    bool m_changed = false;
};

} // namespace zov::ibis
