// SPDX-License-Identifier: Apache-2.0
/// The files behind the open libraries: what they were like when they were read or written last,
/// and which of them this session holds for writing.
#pragma once

#include "base/FileState.h"
#include "core/LibraryLock.h"
#include "core/ZovLibrary.h"

#include <functional>
#include <map>
#include <optional>

namespace zov::app {

class COpenFiles
{
public:
    /// The library was read from, or written to, its path when the file was in this state.
    void SetState(const CZovLibrary& library, const SFileState& state);
    /// The same with the state that the file has now, for a library that has none yet.
    void LookAt(const CZovLibrary& library);
    /// What happened to the file since; None for a library without a file.
    [[nodiscard]] EFileChange ChangeOf(const CZovLibrary& library) const;

    /// Holds the library's path for writing; nothing happens when it is held already.
    /// @return who has it, when it is somebody else
    struct SHolder
    {
        SLockOwner owner;
        bool mayBeOld = false; ///< nobody can tell from here whether the owner still runs
    };
    std::optional<SHolder> Hold(const CZovLibrary& library,
                                CLibraryLock::ETake how = CLibraryLock::ETake::IfFree);
    /// Who has it, as far as Hold came to know.
    [[nodiscard]] std::optional<SHolder> HolderOf(const CZovLibrary& library) const;

    /// Forgets the libraries that are not open any more, and gives back what was held of them.
    void KeepOnly(const std::function<bool(const CZovLibrary&)>& isOpen);

private:
    struct SFile
    {
        std::optional<SFileState> state;
        std::optional<CLibraryLock> lock;
        std::optional<SHolder> holder;
    };
    std::map<const CZovLibrary*, SFile> m_files;
};

} // namespace zov::app
