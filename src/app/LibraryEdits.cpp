// SPDX-License-Identifier: Apache-2.0
#include "app/LibraryEdits.h"

#include "base/Text.h"

#include <QUndoStack>

#include <algorithm>

namespace zov::app {
namespace {

using TPlaces = std::vector<CZovLibrary::SPlace>;

/// Smaller changes are copied: their memory, a block at the least, would be more than they hold.
constexpr std::size_t kWorthAdopting = 2000;

/// What a step does, in this order; undone in the opposite one.
struct SStep
{
    /// A record of the library, and a loose one that holds its other content.
    std::vector<std::pair<CZovRcdProps*, CZovRcdProps*>> exchanged;
    TPlaces removed;  ///< where they stood before
    TPlaces inserted; ///< where they stand afterwards

    [[nodiscard]] bool IsEmpty() const
    {
        return exchanged.empty() && removed.empty() && inserted.empty();
    }
};

class CLibraryEdit final : public QUndoCommand
{
public:
    CLibraryEdit(CLibraryEdits& edits, std::shared_ptr<CZovLibrary> library, SStep step,
                 const QString& text)
        : QUndoCommand(text)
        , m_edits(edits)
        , m_library(std::move(library))
        , m_step(std::move(step))
    {
    }

    void redo() override
    {
        Q_EMIT m_edits.AboutToChange(m_library.get());
        ExchangeAll();
        m_library->TakeOut(m_step.removed);
        m_library->PutIn(m_step.inserted);
        Q_EMIT m_edits.Changed(m_library.get());
    }
    void undo() override
    {
        Q_EMIT m_edits.AboutToChange(m_library.get());
        m_library->TakeOut(m_step.inserted);
        m_library->PutIn(m_step.removed);
        ExchangeAll();
        Q_EMIT m_edits.Changed(m_library.get());
    }

private:
    void ExchangeAll()
    {
        for (const auto& [record, loose] : m_step.exchanged) {
            m_library->Exchange(*record, *loose);
        }
    }

    CLibraryEdits& m_edits;
    std::shared_ptr<CZovLibrary> m_library;
    SStep m_step;
};

/// Records of a library by type and name, each handed out once, equal names in their order.
class CRecordsByName
{
public:
    explicit CRecordsByName(const CZovLibrary& library)
    {
        m_byName.reserve(library.Count());
        for (std::size_t i = library.Count(); i > 0; --i) {
            const CZovRcdProps& record = library.At(i - 1);
            m_byName[Key(record)].push_back(i - 1);
        }
    }
    /// The position of the next record of that type and name; none when all are taken.
    std::optional<std::size_t> Take(const CZovRcdProps& like)
    {
        const auto at = m_byName.find(Key(like));
        if (at == m_byName.end() || at->second.empty()) {
            return std::nullopt;
        }
        const std::size_t position = at->second.back();
        at->second.pop_back();
        return position;
    }

private:
    static std::size_t Key(const CZovRcdProps& record)
    {
        // Two names that share a hash cost a record its identity, nothing else.
        return HashNoCase(record.Name()) ^ static_cast<std::size_t>(record.Type());
    }
    std::unordered_map<std::size_t, std::vector<std::size_t>> m_byName;
};

} // namespace

// --- CLibraryChange ------------------------------------------------------------------------------

CLibraryChange::CLibraryChange(TLibrary library)
    : m_library(std::move(library))
{
}

CZovRcdProps& CLibraryChange::Replace(const CZovRcdProps& record)
{
    CZovRcdProps*& draft = m_draftOf[&record];
    if (draft == nullptr) {
        draft = &m_drafts.AddCopy(record);
        m_replaced.push_back({const_cast<CZovRcdProps*>(&record), draft, false}); // NOLINT
    }
    return *draft;
}

CZovRcdProps& CLibraryChange::ReplaceBy(const CZovRcdProps& record, const CZovRcdProps& content)
{
    CZovRcdProps& draft = Replace(record);
    m_drafts.Replace(draft, content);
    return draft;
}

CZovRcdProps& CLibraryChange::Insert(ERecordType type)
{
    CZovRcdProps& draft = m_drafts.Add(type);
    m_inserted.push_back(&draft);
    return draft;
}

CZovRcdProps& CLibraryChange::InsertCopy(const CZovRcdProps& record)
{
    CZovRcdProps& draft = m_drafts.AddCopy(record);
    m_inserted.push_back(&draft);
    return draft;
}

void CLibraryChange::Remove(const CZovRcdProps& record)
{
    m_removed.insert(&record);
}

void CLibraryChange::ReplaceAllBy(const CZovLibrary& result)
{
    m_draftOf.clear();
    m_replaced.clear();
    m_inserted.clear();
    m_removed.clear();
    m_removedAt.clear();
    m_insertedAt.clear();
    m_drafts.Clear();
    CRecordsByName old(*m_library);
    std::vector<bool> stays(m_library->Count());
    std::size_t nextInOrder = 0;
    for (std::size_t i = 0; i < result.Count(); ++i) {
        const CZovRcdProps& wanted = result.At(i);
        const std::optional<std::size_t> position = old.Take(wanted);
        // A record that would stand before one that it stands behind now is made anew: the step
        // then is what went out and what came in.
        if (!position || *position < nextInOrder ||
            m_library->At(*position).Type() != wanted.Type()) {
            m_insertedAt.push_back({i, &m_drafts.AddCopy(wanted)});
            continue;
        }
        nextInOrder = *position + 1;
        stays[*position] = true;
        CZovRcdProps& record = m_library->At(*position);
        if (!SameProperties(record, wanted)) {
            m_replaced.push_back({&record, &m_drafts.AddCopy(wanted), true});
        }
    }
    for (std::size_t i = 0; i < stays.size(); ++i) {
        if (!stays[i]) {
            m_removedAt.push_back({i, &m_library->At(i)});
        }
    }
}

// --- CLibraryEdits -------------------------------------------------------------------------------

CLibraryEdits::CLibraryEdits() = default;

CLibraryEdits::~CLibraryEdits()
{
    blockSignals(true); // a stack that goes says that it is clean, to windows that go, too
    m_stacks.clear();   // before the group that they stand in
}

QUndoStack& CLibraryEdits::StackOf(const TLibrary& library)
{
    std::unique_ptr<QUndoStack>& stack = m_stacks[library.get()];
    if (!stack) {
        stack = std::make_unique<QUndoStack>();
        stack->setUndoLimit(kMaxSteps);
        m_group.addStack(stack.get());
        connect(stack.get(), &QUndoStack::cleanChanged, this, &CLibraryEdits::ModifiedChanged);
    }
    return *stack;
}

std::vector<CZovRcdProps*> CLibraryEdits::Apply(CLibraryChange& change, const QString& text)
{
    CZovLibrary& library = *change.Library();
    Q_EMIT AboutToChange(&library);
    const bool adopts = change.m_drafts.Count() >= kWorthAdopting;
    if (adopts) {
        library.Adopt(std::move(change.m_drafts));
    }
    const auto loose = [&](CZovRcdProps* draft) {
        return adopts ? draft : &library.MakeLoose(*draft);
    };
    SStep step;
    for (const auto& [target, draft, differs] : change.m_replaced) {
        if (differs || (!change.m_removed.contains(target) && !SameProperties(*target, *draft))) {
            step.exchanged.emplace_back(target, loose(draft));
        }
    }
    step.removed = std::move(change.m_removedAt);
    for (std::size_t i = 0; !change.m_removed.empty() && i < library.Count(); ++i) {
        if (change.m_removed.contains(&library.At(i))) {
            step.removed.push_back({i, &library.At(i)});
        }
    }
    step.inserted = std::move(change.m_insertedAt);
    for (CZovLibrary::SPlace& place : step.inserted) {
        place.record = loose(place.record);
    }
    const std::size_t end = library.Count() - step.removed.size() + step.inserted.size();
    for (std::size_t i = 0; i < change.m_inserted.size(); ++i) {
        step.inserted.push_back({end + i, loose(change.m_inserted[i])});
    }
    std::vector<CZovRcdProps*> added;
    std::ranges::transform(step.inserted, std::back_inserter(added), &CZovLibrary::SPlace::record);
    SetActive(change.Library());
    if (step.IsEmpty()) {
        Q_EMIT Changed(&library);
    } else {
        StackOf(change.Library())
            .push(new CLibraryEdit(*this, change.Library(), std::move(step), text));
    }
    return added;
}

void CLibraryEdits::SetActive(const TLibrary& library)
{
    m_group.setActiveStack(library ? &StackOf(library) : nullptr);
}

bool CLibraryEdits::IsModified(const CZovLibrary& library) const
{
    const auto stack = m_stacks.find(&library);
    return stack != m_stacks.end() && !stack->second->isClean();
}

void CLibraryEdits::SetSaved(const TLibrary& library)
{
    StackOf(library).setClean();
}

void CLibraryEdits::Forget(const TLibrary& library, bool modified)
{
    QUndoStack& stack = StackOf(library);
    stack.clear();
    if (modified) {
        stack.resetClean();
    } else {
        stack.setClean(); // a stack that was empty is left as it is by clear()
    }
}

void CLibraryEdits::Drop(const CZovLibrary& library)
{
    const auto at = m_stacks.find(&library);
    if (at == m_stacks.end()) {
        return;
    }
    const std::unique_ptr<QUndoStack> stack = std::move(at->second);
    m_stacks.erase(at);
    stack->disconnect(this);
    if (!stack->isClean()) {
        Q_EMIT ModifiedChanged();
    }
}

} // namespace zov::app
