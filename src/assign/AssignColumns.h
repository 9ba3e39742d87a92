// SPDX-License-Identifier: Apache-2.0
/// The columns of the assignment view, as data.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zov {

enum class EAssignView
{
    Component, ///< a row per component
    RefDes     ///< a row per reference designator
};

enum class EAssignColumn : std::uint32_t
{
    Name = 0,
    Origin = 1, ///< original model, in RefDes view the device
    ModelType = 2,
    AssignedModels = 3,
    Description = 4,
    Unused = 5,
    Status = 6
};

constexpr std::uint32_t kColumnFormat = 0xF;
constexpr std::uint32_t kModelColumnFlag = 0x140;

struct SAssignColumn
{
    std::uint32_t format = kColumnFormat;
    int width = 0; ///< negative: relative
    std::string_view header;
    EAssignColumn id = EAssignColumn::Name;
    std::uint32_t flags = 0; ///< kModelColumnFlag for the columns of the model
};
using TAssignColumns = std::array<SAssignColumn, 7>;

namespace columns {

constexpr TAssignColumns Layout(std::string_view name, int nameWidth, std::string_view origin,
                                int originWidth, std::string_view models)
{
    using enum EAssignColumn;
    return {{{kColumnFormat, nameWidth, name, Name, 0},
             {kColumnFormat, originWidth, origin, Origin, 0},
             {kColumnFormat, -15, "Model Type", ModelType, kModelColumnFlag},
             {kColumnFormat, -20, models, AssignedModels, kModelColumnFlag},
             {kColumnFormat, -15, "Description", Description, 0},
             {kColumnFormat, 0, "", Unused, 0},
             {kColumnFormat, -20, "Status", Status, 0}}};
}

constexpr TAssignColumns kComponent = Layout("Component", -40, "", 0, "Assigned Models");
constexpr TAssignColumns kRefDes = Layout("RefDes", -40, "", 0, "Assigned Models");
constexpr TAssignColumns kComponentWithOriginal =
    Layout("Component", -15, "Original Model", -25, "Assigned Model");
constexpr TAssignColumns kRefDesWithDevice = Layout("RefDes", -15, "Device", -25, "Assigned Model");

} // namespace columns

/// @param withOrigin  with the original model, in RefDes view with the device
[[nodiscard]] constexpr const TAssignColumns& ColumnsOf(EAssignView view, bool withOrigin)
{
    if (view == EAssignView::Component) {
        return withOrigin ? columns::kComponentWithOriginal : columns::kComponent;
    }
    return withOrigin ? columns::kRefDesWithDevice : columns::kRefDes;
}

} // namespace zov
