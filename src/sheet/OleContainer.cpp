// SPDX-License-Identifier: Apache-2.0
#include "sheet/OleContainer.h"

#include "base/Text.h"
#include "sheet/XlsRecords.h"

#include <algorithm>
#include <librevenge-stream/librevenge-stream.h>
#include <limits>
#include <vector>

namespace zov::sheet {
namespace {

constexpr std::size_t kHeaderBytes = 512;
constexpr std::size_t kEntryBytes = 128;
constexpr std::size_t kTableSectorsInHeader = 109;
constexpr std::uint32_t kLastSector = 0xFFFFFFFA; // above are marks

/// The sectors of a container and which one follows which.
class CSectors
{
public:
    explicit CSectors(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    /// False when the header or the allocation table is not plain.
    bool Load()
    {
        if (m_bytes.size() < kHeaderBytes) {
            return false;
        }
        const unsigned shift = U16At(m_bytes, 30);
        if (shift != 9 && shift != 12) {
            return false;
        }
        m_size = std::size_t{1} << shift;
        const std::uint32_t count = U32At(m_bytes, 44);
        if (count > m_bytes.size() / m_size) {
            return false;
        }
        for (std::size_t i = 0; i < std::min<std::size_t>(count, kTableSectorsInHeader); ++i) {
            m_table.push_back(U32At(m_bytes, 76 + 4 * i));
        }
        // Files above some 7 MB list the rest in sectors whose last entry names the next of them.
        std::uint32_t list = U32At(m_bytes, 68);
        while (m_table.size() < count) {
            const std::string_view sector = Sector(list);
            if (sector.empty()) {
                return false;
            }
            for (std::size_t at = 0; at + 4 < m_size && m_table.size() < count; at += 4) {
                m_table.push_back(U32At(sector, at));
            }
            list = U32At(sector, m_size - 4);
        }
        return true;
    }
    [[nodiscard]] std::size_t Size() const { return m_size; }
    [[nodiscard]] std::size_t Offset(std::uint32_t sector) const
    {
        return (sector + std::size_t{1}) * m_size;
    }
    [[nodiscard]] std::string_view Sector(std::uint32_t sector) const
    {
        const std::size_t offset = Offset(sector);
        return sector >= kLastSector || offset + m_size > m_bytes.size()
                   ? std::string_view{}
                   : m_bytes.substr(offset, m_size);
    }
    [[nodiscard]] std::uint32_t Next(std::uint32_t sector) const
    {
        const std::size_t perSector = m_size / 4;
        const std::string_view table =
            sector / perSector < m_table.size() ? Sector(m_table[sector / perSector]) : "";
        return table.empty() ? kLastSector : U32At(table, sector % perSector * 4);
    }

private:
    std::string_view m_bytes;
    std::size_t m_size = 0;
    std::vector<std::uint32_t> m_table;
};

struct SEntry
{
    std::uint32_t start = kLastSector;
    std::uint32_t size = 0;
};

bool IsNamed(std::string_view entry, std::string_view name)
{
    if (U16At(entry, 64) != 2 * name.size() + 2) {
        return false;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (ToLower(entry[2 * i]) != ToLower(name[i]) || entry[2 * i + 1] != 0) {
            return false;
        }
    }
    return true;
}

SEntry FindEntry(const CSectors& sectors, std::uint32_t directory, std::string_view name)
{
    constexpr char kStream = 2;
    constexpr int kMaxSectors = 4096; // a chain that runs in a circle ends too
    for (int i = 0; i < kMaxSectors; ++i, directory = sectors.Next(directory)) {
        const std::string_view sector = sectors.Sector(directory);
        if (sector.empty()) {
            break;
        }
        for (std::size_t at = 0; at < sector.size(); at += kEntryBytes) {
            const std::string_view entry = sector.substr(at, kEntryBytes);
            if (entry[66] == kStream && IsNamed(entry, name)) {
                return {U32At(entry, 116), U32At(entry, 120)};
            }
        }
    }
    return {};
}

} // namespace

std::optional<std::string_view> OleStreamInOnePiece(std::string_view bytes, std::string_view name)
{
    CSectors sectors(bytes);
    if (!sectors.Load()) {
        return std::nullopt;
    }
    const SEntry entry = FindEntry(sectors, U32At(bytes, 48), name);
    const std::uint32_t smallest = U32At(bytes, 56); // smaller streams are kept elsewhere
    if (entry.start >= kLastSector || entry.size == 0 || entry.size < smallest ||
        sectors.Offset(entry.start) + entry.size > bytes.size()) {
        return std::nullopt;
    }
    const std::size_t count = (entry.size + sectors.Size() - 1) / sectors.Size();
    for (std::uint32_t sector = entry.start; sector + std::size_t{1} < entry.start + count;
         ++sector) {
        if (sectors.Next(sector) != sector + 1) {
            return std::nullopt;
        }
    }
    return bytes.substr(sectors.Offset(entry.start), entry.size);
}

COleContainer::COleContainer(std::string_view bytes)
    : m_input(std::make_unique<librevenge::RVNGStringStream>(
          reinterpret_cast<const unsigned char*>(bytes.data()),
          static_cast<unsigned>(bytes.size())))
{
}

COleContainer::~COleContainer() = default;

CResult<std::unique_ptr<COleContainer>> COleContainer::Open(std::string_view bytes)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        return Fail(EErr::Limit, "it is larger than 4 GiB");
    }
    std::unique_ptr<COleContainer> container(new COleContainer(bytes));
    if (!container->m_input->isStructured()) {
        return Fail(EErr::Format, "it is broken or incomplete; get the file again");
    }
    return container;
}

bool COleContainer::Has(const char* name) const
{
    return m_input->existsSubStream(name);
}

std::string_view COleContainer::Read(const char* name)
{
    m_stream.reset(m_input->getSubStreamByName(name));
    if (!m_stream || m_stream->seek(0, librevenge::RVNG_SEEK_END) != 0) {
        return {};
    }
    const long size = m_stream->tell();
    unsigned long got = 0;
    if (size <= 0 || m_stream->seek(0, librevenge::RVNG_SEEK_SET) != 0) {
        return {};
    }
    const unsigned char* data = m_stream->read(static_cast<unsigned long>(size), got);
    return {reinterpret_cast<const char*>(data), data == nullptr ? 0 : got};
}

} // namespace zov::sheet
