// SPDX-License-Identifier: Apache-2.0
/// Changes of a library's records as edits that can be undone, a stack of them per open library.
///
///     CLibraryChange change(library);
///     change.Replace(record).SetDouble(EPropId::Volt, 16);
///     change.Remove(other);
///     session.Edits().Apply(change, tr("Edit Models"));
///
/// Records keep their address through edits, undo and redo: who shows one may hold on to it.
#pragma once

#include "core/ZovLibrary.h"

#include <QObject>
#include <QString>
#include <QUndoGroup>

#include <map>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QUndoStack;

namespace zov::app {

/// A change that is being put together. The library is not touched before the change is applied.
class CLibraryChange
{
public:
    using TLibrary = std::shared_ptr<CZovLibrary>;

    explicit CLibraryChange(TLibrary library);

    /// A draft of what the record becomes; the same one for the same record.
    CZovRcdProps& Replace(const CZovRcdProps& record);
    /// The same with the content of another record of its type.
    CZovRcdProps& ReplaceBy(const CZovRcdProps& record, const CZovRcdProps& content);
    /// A draft of a new record at the end.
    CZovRcdProps& Insert(ERecordType type);
    /// The same as a copy of a record of any library.
    CZovRcdProps& InsertCopy(const CZovRcdProps& record);
    void Remove(const CZovRcdProps& record);
    /// The library's records become those of `result`, in their order: an import is one step.
    /// Records that are alike in both, or carry the same type and name, stay the same records.
    /// Drafts and removals before this call are dropped. May run beside the window, as long as the
    /// library does not change; takes a pass over both libraries, and is where the copying is done.
    void ReplaceAllBy(const CZovLibrary& result);

    [[nodiscard]] const TLibrary& Library() const { return m_library; }

private:
    friend class CLibraryEdits;

    struct SReplaced
    {
        CZovRcdProps* target = nullptr;
        CZovRcdProps* draft = nullptr;
        bool differs = false; ///< that they differ is known
    };

    TLibrary m_library;
    CZovLibrary m_drafts;
    std::unordered_map<const CZovRcdProps*, CZovRcdProps*> m_draftOf;
    std::vector<SReplaced> m_replaced;
    std::unordered_set<const CZovRcdProps*> m_removed;
    std::vector<CZovRcdProps*> m_inserted; ///< at the end
    // Of ReplaceAllBy: where records go out, and where drafts stand afterwards.
    std::vector<CZovLibrary::SPlace> m_removedAt;
    std::vector<CZovLibrary::SPlace> m_insertedAt;
};

class CLibraryEdits : public QObject
{
    Q_OBJECT

public:
    /// Steps that can be undone.
    static constexpr int kMaxSteps = 500;

    using TLibrary = CLibraryChange::TLibrary;

    CLibraryEdits();
    ~CLibraryEdits() override;

    /// Does it, and makes its library the active one. A change that changes nothing is no step. The
    /// change is used up. Large ones give their memory to the library, so that even a million
    /// records hold up the window for a moment only.
    /// @param text what "Undo" says behind its own word: "Delete 3 Models"
    /// @return the new records, in the order in which they were asked for
    std::vector<CZovRcdProps*> Apply(CLibraryChange& change, const QString& text);

    /// The library that "Undo" and "Redo" work on; null for none.
    void SetActive(const TLibrary& library);
    [[nodiscard]] bool CanUndo() const { return m_group.canUndo(); }
    [[nodiscard]] bool CanRedo() const { return m_group.canRedo(); }
    [[nodiscard]] QString UndoText() const { return m_group.undoText(); }
    [[nodiscard]] QString RedoText() const { return m_group.redoText(); }
    void Undo() { m_group.undo(); }
    void Redo() { m_group.redo(); }

    /// Whether the records are others than those that were saved last.
    [[nodiscard]] bool IsModified(const CZovLibrary& library) const;
    void SetSaved(const TLibrary& library);
    /// Records were changed by other means: what was done before can't be undone any more.
    void Forget(const TLibrary& library, bool modified);
    /// The library is closed.
    void Drop(const CZovLibrary& library);

Q_SIGNALS:
    /// Around each change of records, undo and redo included.
    void AboutToChange(zov::CZovLibrary* library);
    void Changed(zov::CZovLibrary* library);
    void ModifiedChanged();

private:
    QUndoStack& StackOf(const TLibrary& library);

    QUndoGroup m_group;
    std::map<const CZovLibrary*, std::unique_ptr<QUndoStack>> m_stacks;
};

} // namespace zov::app
