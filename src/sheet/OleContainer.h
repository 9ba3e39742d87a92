// SPDX-License-Identifier: Apache-2.0
/// The compound file (OLE container) around binary workbooks and around encrypted ones.
#pragma once

#include "base/Result.h"

#include <memory>
#include <optional>
#include <string_view>

namespace librevenge {
class RVNGInputStream;
class RVNGStringStream;
} // namespace librevenge

namespace zov::sheet {

/// A stream that lies in the file in one piece, as spreadsheet programs write it: a view, where the
/// library would copy the file three times. None for a stream that is scattered, small or not
/// there, and for a container with anything unusual about it.
[[nodiscard]] std::optional<std::string_view> OleStreamInOnePiece(std::string_view bytes,
                                                                  std::string_view name);

/// Any stream of any container.
class COleContainer
{
public:
    /// The bytes must outlive the container.
    /// Errors: Format: the container is broken. Limit.
    static CResult<std::unique_ptr<COleContainer>> Open(std::string_view bytes);
    ~COleContainer();
    COleContainer(const COleContainer&) = delete;
    COleContainer& operator=(const COleContainer&) = delete;

    [[nodiscard]] bool Has(const char* name) const;
    /// A stream as a whole; it lives until the next call. Empty when it can't be read.
    std::string_view Read(const char* name);

private:
    explicit COleContainer(std::string_view bytes);

    std::unique_ptr<librevenge::RVNGStringStream> m_input;
    std::unique_ptr<librevenge::RVNGInputStream> m_stream;
};

} // namespace zov::sheet
