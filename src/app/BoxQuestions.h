// SPDX-License-Identifier: Apache-2.0
/// Questions of the engines as message boxes.
#pragma once

#include "base/Questions.h"

class QWidget;

namespace zov::app {

class CBoxQuestions final : public CQuestions
{
public:
    /// @param parent of the boxes; outlives this
    explicit CBoxQuestions(QWidget& parent)
        : m_parent(parent)
    {
    }
    bool YesNo(std::string_view text) override;

private:
    QWidget& m_parent;
};

} // namespace zov::app
