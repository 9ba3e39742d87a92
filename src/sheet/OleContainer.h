// SPDX-License-Identifier: Apache-2.0
/// The compound file (OLE container) around binary workbooks and around encrypted ones.
#pragma once

#include "base/Result.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zov::sheet {

class COleContainer
{
public:
    /// The bytes must outlive the container.
    /// Errors: Format: the container is broken.
    static CResult<std::unique_ptr<COleContainer>> Open(std::string_view bytes);
    COleContainer() = default;
    COleContainer(const COleContainer&) = delete;
    COleContainer& operator=(const COleContainer&) = delete;
    virtual ~COleContainer() = default;

    [[nodiscard]] virtual bool Has(const char* name) const = 0;
    /// A stream as a whole; it lives as long as the container. Errors: NotFound, Format.
    virtual CResult<std::string_view> Read(const char* name) = 0;
};

} // namespace zov::sheet
