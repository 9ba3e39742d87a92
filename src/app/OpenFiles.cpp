// SPDX-License-Identifier: Apache-2.0
#include "app/OpenFiles.h"

namespace zov::app {

void COpenFiles::SetState(const CZovLibrary& library, const SFileState& state)
{
    m_files[&library].state = state;
}

void COpenFiles::LookAt(const CZovLibrary& library)
{
    SFile& file = m_files[&library];
    if (!file.state && !library.Path().empty()) {
        if (const CResult<SFileState> state = FileStateOf(library.Path())) {
            file.state = *state;
        }
    }
}

EFileChange COpenFiles::ChangeOf(const CZovLibrary& library) const
{
    const auto at = m_files.find(&library);
    return at == m_files.end() || !at->second.state || library.Path().empty()
               ? EFileChange::None
               : ChangeSince(*at->second.state, library.Path());
}

std::optional<COpenFiles::SHolder> COpenFiles::Hold(const CZovLibrary& library,
                                                    CLibraryLock::ETake how)
{
    SFile& file = m_files[&library];
    if (library.Path().empty()) {
        return std::nullopt;
    }
    const bool isHeld = file.lock && file.lock->Library() == library.Path();
    if (isHeld && file.lock->IsStillMine()) {
        return std::nullopt;
    }
    file.lock.reset();
    SLockOutcome outcome = CLibraryLock::Take(library.Path(), MyLockOwner(), how);
    file.lock = std::move(outcome.lock);
    file.holder.reset();
    if (!file.lock && outcome.holder) {
        file.holder = SHolder{*outcome.holder, outcome.mayBeOld};
    }
    return file.holder;
}

std::optional<COpenFiles::SHolder> COpenFiles::HolderOf(const CZovLibrary& library) const
{
    const auto at = m_files.find(&library);
    return at == m_files.end() ? std::nullopt : at->second.holder;
}

void COpenFiles::KeepOnly(const std::function<bool(const CZovLibrary&)>& isOpen)
{
    std::erase_if(m_files, [&](const auto& file) { return !isOpen(*file.first); });
}

} // namespace zov::app
