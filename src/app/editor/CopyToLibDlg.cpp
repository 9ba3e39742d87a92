// SPDX-License-Identifier: Apache-2.0
#include "app/editor/CopyToLibDlg.h"

#include "app/RunBeside.h"
#include "app/editor/AddModelDlg.h"
#include "base/File.h"
#include "base/Text.h"
#include "core/RecordFiles.h"

#include <QPushButton>

#include <numeric>
#include <unordered_set>

namespace zov::app {
namespace {

/// Fewer are copied before anybody could notice.
constexpr std::size_t kWorthAThread = 2000;

QString Shown(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

std::filesystem::path FolderOf(const CZovLibrary& library)
{
    return std::filesystem::absolute(library.Path()).lexically_normal().parent_path();
}

QString StepText(bool move, std::size_t count)
{
    if (count == 1) {
        return move ? CCopyToLibDlg::tr("Move Model") : CCopyToLibDlg::tr("Copy Model");
    }
    return (move ? CCopyToLibDlg::tr("Move %1 Models") : CCopyToLibDlg::tr("Copy %1 Models"))
        .arg(count);
}

/// Puts copies into a change of the target, one by one; names that copies of the same step took
/// count as taken, too.
class CCopier
{
public:
    CCopier(CLibraryChange& change, EExisting existing)
        : m_change(change)
        , m_existing(existing)
    {
    }

    /// False when the model stays where it is, since its name was taken.
    bool Copy(const CZovRcdProps& record, CFileRebaser& rebaser)
    {
        std::string name(record.Name());
        const CZovRcdProps* there = m_change.Library()->Find(record.Type(), name);
        const bool isCopied = m_names.contains(Key(record.Type(), name));
        const bool isTaken = there != nullptr || isCopied;
        if (isTaken &&
            (m_existing == EExisting::Keep || (isCopied && m_existing == EExisting::Replace))) {
            ++m_copied.kept;
            return false;
        }
        const bool replaces = isTaken && m_existing == EExisting::Replace;
        if (isTaken && !replaces) {
            name = NextFree(record.Type(), name);
        }
        CZovRcdProps& draft =
            replaces ? m_change.ReplaceBy(*there, record) : m_change.InsertCopy(record);
        ++(replaces ? m_copied.replaced : m_copied.added);
        draft.SetString(EPropId::ModelName, name);
        rebaser.Rebase(draft);
        m_names.insert(Key(record.Type(), name));
        return true;
    }
    [[nodiscard]] const SCopied& Copied() const { return m_copied; }

private:
    static std::string Key(ERecordType type, const std::string& name)
    {
        return std::to_string(static_cast<unsigned>(type)) + '|' + LowerCase(name);
    }
    std::string NextFree(ERecordType type, const std::string& name) const
    {
        std::string free = name;
        for (int number = 2;
             m_change.Library()->Find(type, free) != nullptr || m_names.contains(Key(type, free));
             ++number) {
            free = name + '_' + std::to_string(number);
        }
        return free;
    }

    CLibraryChange& m_change;
    EExisting m_existing;
    SCopied m_copied;
    std::unordered_set<std::string> m_names;
};

} // namespace

CCopyToLibDlg::CCopyToLibDlg(CZovSession& session, std::size_t count, const CZovLibrary* from,
                             QWidget* parent)
    : CqtDialogRes(parent)
    , m_session(session)
{
    m_form.ui_IDC_WHAT->setText(count == 1 ? tr("Copy the selected model to another library.")
                                           : tr("Copy %1 models to another library.").arg(count));
    AddTargets(from);
    m_form.ui_IDC_HINT->setText(
        tr("Files that the models name stay where they are; their names are adapted."));
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_form.ui_IDC_BUTTONS, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void CCopyToLibDlg::AddTargets(const CZovLibrary* from)
{
    const CLibraryTree& tree = m_session.Tree();
    const auto collectionOf = [&](CLibraryTree::TNode node) {
        for (const auto& [collection, name] : tree.Collections()) {
            if (collection == node) {
                return Shown(name) + QStringLiteral(" / ");
            }
        }
        return QString();
    };
    for (const CZovSession::TLibrary& library : tree.LibrariesOf(CLibraryTree::kRoot)) {
        if (library.get() != from) {
            m_form.ui_IDC_TARGET->addItem(collectionOf(tree.ParentOf(tree.Find(*library))) +
                                          Shown(library->Name()));
            m_targets.push_back({library, CLibraryTree::kRoot});
        }
    }
    m_form.ui_IDC_TARGET->addItem(tr("(new library)"));
    m_targets.push_back({nullptr, CLibraryTree::kRoot});
    for (const auto& [collection, name] : tree.Collections()) {
        m_form.ui_IDC_TARGET->addItem(tr("%1 / (new library)").arg(Shown(name)));
        m_targets.push_back({nullptr, collection});
    }
}

CZovSession::TLibrary CCopyToLibDlg::Target()
{
    const STarget& chosen =
        m_targets[static_cast<std::size_t>(m_form.ui_IDC_TARGET->currentIndex())];
    if (chosen.library) {
        return chosen.library;
    }
    const QString path = ui::CPrompt::SaveFile(
        this, tr("New ZOV Library"), tr("ZOV Library (*.zov)"), QStringLiteral("new_lib_file"));
    if (path.isEmpty()) {
        return nullptr;
    }
    const std::filesystem::path file = TextPath(path.toStdString());
    if (const CResult<void> made = m_session.NewExternal(file, chosen.collection); !made) {
        ui::CPrompt::Tell(this, Shown(made.Error().text), ui::EIcon::Error);
        return nullptr;
    }
    std::error_code ignored;
    for (const SLibraryEntry& entry : m_session.Set().Externals()) {
        if (std::filesystem::equivalent(entry.path, file, ignored)) {
            return entry.library;
        }
    }
    return nullptr;
}

SCopied CopyModels(CZovSession& session, const std::vector<CModelListView::SSelected>& models,
                   const CZovSession::TLibrary& target, EExisting existing, bool move)
{
    CLibraryChange change(target);
    CCopier copier(change, existing);
    std::vector<CLibraryChange> removals;
    std::size_t moved = 0;
    const auto copy = [&] {
        for (const auto& [library, records] : models) {
            if (library == target) {
                continue;
            }
            CFileRebaser rebaser(FolderOf(*library), FolderOf(*target));
            CLibraryChange& removal = removals.emplace_back(library);
            for (const CZovRcdProps* record : records) {
                if (copier.Copy(*record, rebaser) && move) {
                    removal.Remove(*record);
                    ++moved;
                }
            }
        }
    };
    const std::size_t selected =
        std::accumulate(models.begin(), models.end(), std::size_t{0},
                        [](std::size_t sum, const auto& of) { return sum + of.records.size(); });
    if (selected < kWorthAThread) {
        copy();
    } else {
        RunBeside(copy);
    }
    const std::size_t count = copier.Copied().added + copier.Copied().replaced;
    for (CLibraryChange& removal : removals) {
        if (move) {
            session.Edits().Apply(removal, StepText(true, moved));
        }
    }
    session.Edits().Apply(change, StepText(move, count));
    return copier.Copied();
}

} // namespace zov::app
