// SPDX-License-Identifier: Apache-2.0
/// Opens the files that records name in the window for their kind, from any window, also from those
/// that know nothing of that window.
///
///     if (!OpenModelFile(path)) {
///         Tell(tr("There is no window for such files."));
///     }
#pragma once

#include <QString>

#include <functional>

namespace zov::app {

/// Takes files while it lives.
class CModelFileOpener
{
public:
    /// @return whether the file is of a kind that is opened
    using FOpen = std::function<bool(const QString& path)>;
    explicit CModelFileOpener(FOpen open);
    ~CModelFileOpener();
    CModelFileOpener(const CModelFileOpener&) = delete;
    CModelFileOpener& operator=(const CModelFileOpener&) = delete;

private:
    friend bool OpenModelFile(const QString& path);
    FOpen m_open;
};

/// Opens a file by the opener that was made last and takes it; false when none does.
bool OpenModelFile(const QString& path);

} // namespace zov::app
