// SPDX-License-Identifier: Apache-2.0
/// The workflow dock: a page per kind of model with the steps that lead to one. Each step starts
/// the work that it names.
#pragma once

#include "ui/CommandActions.h"

#include <QDockWidget>

#include <span>

class QToolBox;

namespace zov::app {

struct SWorkflowStep
{
    const char* text = "";
    const char* why = ""; ///< what it is good for
    unsigned command = 0;
};

struct SWorkflowPage
{
    const char* objectName = "";
    const char* contextKey = ""; ///< for help and for the state of the page
    const char* title = "";
    const char* intro = "";
    std::span<const SWorkflowStep> steps;
};

std::span<const SWorkflowPage> WorkflowPages();

class CQZovWorkflow : public QDockWidget
{
    Q_OBJECT

public:
    /// @param actions of the frame that the steps' commands belong to
    CQZovWorkflow(ui::CCommandActions& actions, QWidget* parent);

    /// Of the current page.
    [[nodiscard]] QString ContextKey() const;
    [[nodiscard]] static const char* ContextKeyOf(int page);
    [[nodiscard]] int CurrentPage() const;
    void SetCurrentPage(int page);

private:
    QWidget* NewPage(const SWorkflowPage& page, ui::CCommandActions& actions);

    QToolBox* m_pages;
};

} // namespace zov::app
