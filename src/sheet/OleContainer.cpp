// SPDX-License-Identifier: Apache-2.0
#include "sheet/OleContainer.h"

#include <librevenge-stream/librevenge-stream.h>
#include <limits>

namespace zov::sheet {
namespace {

class CRevengeContainer final : public COleContainer
{
public:
    explicit CRevengeContainer(std::string_view bytes)
        : m_input(reinterpret_cast<const unsigned char*>(bytes.data()),
                  static_cast<unsigned>(bytes.size()))
    {
    }
    bool IsOle() { return m_input.isStructured(); }
    [[nodiscard]] bool Has(const char* name) const override
    {
        return m_input.existsSubStream(name);
    }
    CResult<std::string_view> Read(const char* name) override
    {
        m_stream.reset(m_input.getSubStreamByName(name));
        if (!m_stream || m_stream->seek(0, librevenge::RVNG_SEEK_END) != 0) {
            return Fail(EErr::Format, "the stream can't be read");
        }
        const long size = m_stream->tell();
        unsigned long got = 0;
        m_stream->seek(0, librevenge::RVNG_SEEK_SET);
        const unsigned char* data = m_stream->read(static_cast<unsigned long>(size), got);
        return std::string_view(reinterpret_cast<const char*>(data), data == nullptr ? 0 : got);
    }

private:
    mutable librevenge::RVNGStringStream m_input;
    std::unique_ptr<librevenge::RVNGInputStream> m_stream;
};

} // namespace

CResult<std::unique_ptr<COleContainer>> COleContainer::Open(std::string_view bytes)
{
    if (bytes.size() > std::numeric_limits<unsigned>::max()) {
        return Fail(EErr::Limit, "larger than 4 GiB");
    }
    auto container = std::make_unique<CRevengeContainer>(bytes);
    if (!container->IsOle()) {
        return Fail(EErr::Format, "it is broken");
    }
    return std::unique_ptr<COleContainer>(std::move(container));
}

} // namespace zov::sheet
