// SPDX-License-Identifier: Apache-2.0
/// Questions that an engine has for its user. The engine never asks itself: its caller answers,
/// with a message box, with an option of the command line, or with what a test wants.
#pragma once

#include <string_view>

namespace zov {

class CQuestions
{
public:
    CQuestions() = default;
    CQuestions(const CQuestions&) = delete;
    CQuestions& operator=(const CQuestions&) = delete;
    virtual ~CQuestions() = default;

    /// A Yes/No question; true is Yes.
    virtual bool YesNo(std::string_view text) = 0;
};

/// The same answer to every question.
class CFixedAnswer final : public CQuestions
{
public:
    explicit CFixedAnswer(bool yes)
        : m_yes(yes)
    {
    }
    bool YesNo(std::string_view) override { return m_yes; }

private:
    bool m_yes;
};

} // namespace zov
