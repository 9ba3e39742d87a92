// SPDX-License-Identifier: Apache-2.0
#include "app/TruthCache.h"

#include <algorithm>

namespace zov::app {
namespace {

/// Records of one piece of work: results come in soon, and a change need not wait long.
constexpr std::size_t kPiece = 32;

std::filesystem::path FolderOf(const CZovLibrary& library)
{
    return library.Path().empty()
               ? std::filesystem::path()
               : std::filesystem::absolute(library.Path()).lexically_normal().parent_path();
}

} // namespace

struct CTruthCache::SCheckers
{
    std::map<std::filesystem::path, curve::CTruthChecker> byFolder;

    curve::CTruthChecker& Of(const std::filesystem::path& folder, const CDisplayUnits& units)
    {
        return byFolder.try_emplace(folder, folder, units).first->second;
    }
};

CTruthCache::CTruthCache(QObject* parent)
    : QObject(parent)
    , m_checkers(std::make_shared<SCheckers>())
{
    m_start.setSingleShot(true);
    m_start.setInterval(0);
    connect(&m_start, &QTimer::timeout, this, &CTruthCache::Start);
}

CTruthCache::~CTruthCache() = default;

const curve::SRecordTruth* CTruthCache::Find(const CZovLibrary& library, const CZovRcdProps& record)
{
    if (const auto known = m_known.find(&record); known != m_known.end()) {
        return &known->second;
    }
    if (m_isAsked.emplace(&record, true).second) {
        if (m_asked.size() >= kMaxAsked) {
            m_isAsked.erase(m_asked.front().record);
            m_asked.erase(m_asked.begin());
        }
        m_asked.push_back({&record, FolderOf(library)});
        if (!m_job.IsRunning()) {
            m_start.start();
        }
    }
    return nullptr;
}

void CTruthCache::Start()
{
    if (m_asked.empty() || m_job.IsRunning()) {
        return; // what runs starts the rest
    }
    // The work sees copies: it needs no record of a library that may change meanwhile.
    struct SPiece
    {
        CZovLibrary copies;
        std::vector<SAsked> asked;
        std::vector<curve::SRecordTruth> results;
    };
    auto piece = std::make_shared<SPiece>();
    for (std::size_t i = std::min(kPiece, m_asked.size()); i > 0; --i) {
        piece->asked.push_back(std::move(m_asked.back()));
        m_asked.pop_back();
        piece->copies.AddCopy(*piece->asked.back().record);
    }
    m_job.Start(tr("Comparing"),
                [this, piece, checkers = m_checkers, generation = m_generation,
                 units = m_units](CJobState& state) -> CBackgroundJob::Deliver {
                    for (std::size_t i = 0; i < piece->asked.size() && !state.Cancelled(); ++i) {
                        piece->results.push_back(
                            checkers->Of(piece->asked[i].folder, units).Check(piece->copies.At(i)));
                    }
                    return [this, piece, generation] {
                        m_start.start();
                        if (generation != m_generation) {
                            return;
                        }
                        if (m_known.size() > kMaxKept) {
                            m_known.clear();
                        }
                        for (std::size_t i = 0; i < piece->results.size(); ++i) {
                            m_isAsked.erase(piece->asked[i].record);
                            m_known[piece->asked[i].record] = std::move(piece->results[i]);
                        }
                        Q_EMIT Updated();
                    };
                });
}

void CTruthCache::Forget(const CZovRcdProps& record)
{
    m_known.erase(&record);
}

void CTruthCache::Clear()
{
    ++m_generation; // a file that is being read is not waited for
    m_asked.clear();
    m_isAsked.clear();
    m_known.clear();
}

void CTruthCache::SetUnits(const CDisplayUnits& units)
{
    Clear();
    m_units = units;
    m_checkers = std::make_shared<SCheckers>();
}

QColor TruthColor(curve::ETruth verdict)
{
    return verdict == curve::ETruth::Differs ? QColor(0xC0, 0x7A, 0x10) : QColor(0xD9, 0x3A, 0x3A);
}

} // namespace zov::app
