// SPDX-License-Identifier: Apache-2.0
#include "app/BoxQuestions.h"

#include "ui/Prompt.h"

namespace zov::app {

bool CBoxQuestions::YesNo(std::string_view text)
{
    return ui::CPrompt::Ask(&m_parent,
                            QString::fromUtf8(text.data(), static_cast<int>(text.size())),
                            ui::EButtons::YesNo) == ui::EAnswer::Yes;
}

} // namespace zov::app
