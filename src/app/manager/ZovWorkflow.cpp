// SPDX-License-Identifier: Apache-2.0
#include "app/manager/ZovWorkflow.h"

#include "app/manager/CommandIds.h"
#include "ui/EventFilters.h"

#include <QAction>
#include <QLabel>
#include <QScrollArea>
#include <QToolBox>
#include <QToolButton>
#include <QVBoxLayout>

#include <array>

namespace zov::app {
namespace {

constexpr SWorkflowStep kOpenStep = {"Open a library", "Models are kept in the project library.",
                                     ID_FILE_OPEN};
constexpr SWorkflowStep kNewStep = {"Or make a new one", "", ID_FILE_NEW};
constexpr SWorkflowStep kTouchstoneStep = {"View S-parameters",
                                           "See what a Touchstone file holds before it is used.",
                                           ID_OPEN_CURVE_FILES};
constexpr SWorkflowStep kSaveStep = {"Save the library", "", ID_FILE_SAVE};

constexpr std::array kIcSteps = {
    kOpenStep,
    kNewStep,
    SWorkflowStep{"Check an IBIS file", "Finds what a simulator would stumble over.",
                  ID_CHECK_IBIS},
    SWorkflowStep{"Look into an IBIS file", "Its components, pins and models.", ID_LOAD_IBIS},
    SWorkflowStep{"Add an IC", "Then choose its IBIS file and component in the editor.", ID_ADD_IC},
    kSaveStep,
};
constexpr std::array kDiscreteSteps = {
    kOpenStep,
    kNewStep,
    SWorkflowStep{"Vendor decap libraries", "Makers' data that complete generated capacitors.",
                  ID_VENDOR_DECAP_LIBRARY},
    SWorkflowStep{"Generate from a part list", "A model for each row of a spreadsheet.",
                  ID_TOOLS_GENERATE},
    SWorkflowStep{"Add a capacitor", "", ID_ADD_CAPACITOR},
    SWorkflowStep{"Add an inductor", "", ID_ADD_INDUCTOR},
    SWorkflowStep{"Add a resistor", "", ID_ADD_RESISTOR},
    SWorkflowStep{"Compare impedances", "Of the models that are selected in the list.",
                  ID_SHOW_IMPEDANCE},
    kSaveStep,
};
constexpr std::array kVrmSteps = {
    kOpenStep,
    kNewStep,
    SWorkflowStep{"Add a VRM", "Then enter its rails with their voltages.", ID_ADD_VRM},
    SWorkflowStep{"View curves", "Measured output impedances, for example.", ID_OPEN_CURVE_FILES},
    kSaveStep,
};
constexpr std::array kConnectorSteps = {
    kOpenStep,
    kNewStep,
    kTouchstoneStep,
    SWorkflowStep{"Add a connector", "Then choose its circuit file.", ID_ADD_CONNECTOR},
    kSaveStep,
};
constexpr std::array kPackageSteps = {
    kOpenStep,
    kNewStep,
    kTouchstoneStep,
    SWorkflowStep{"Add a package", "Then choose its circuit file.", ID_ADD_PACKAGE},
    kSaveStep,
};
constexpr std::array kSpiceSteps = {
    kOpenStep,
    kNewStep,
    SWorkflowStep{"Import sub-circuits", "Each sub-circuit of an .sp file becomes a model.",
                  ID_IMPORT_LIB_FILE},
    SWorkflowStep{"Add a SPICE circuit", "Then choose its file and sub-circuit.", ID_ADD_SPICE},
    kSaveStep,
};

constexpr std::array<SWorkflowPage, 6> kPages = {{
    {"page", "ZOVWorkflowIC", "IC", "From an IBIS file to a model with its buffers.", kIcSteps},
    {"page_2", "ZOVWorkflowDiscrete", "Discrete",
     "Capacitors, inductors and resistors, one by one or from a part list.", kDiscreteSteps},
    {"page_3", "ZOVWorkFlowVRM", "VRM", "Supplies with their rails and tolerances.", kVrmSteps},
    {"page_4", "ZOVWorkFlowConnector", "Connector", "Connectors with a circuit.", kConnectorSteps},
    {"page_5", "ZOVWorkFlowPage", "Package", "Packages with a circuit.", kPackageSteps},
    {"page_6", "ZOVWorkFlowSpice", "SPICE", "General circuits.", kSpiceSteps},
}};

} // namespace

std::span<const SWorkflowPage> WorkflowPages()
{
    return kPages;
}

CQZovWorkflow::CQZovWorkflow(ui::CCommandActions& actions, QWidget* parent)
    : QDockWidget(tr("Analysis Models"), parent)
    , m_pages(new QToolBox(this))
{
    setObjectName(QStringLiteral("ZOVWorkflow"));
    m_pages->setObjectName(QStringLiteral("ZOVWorkflowPages"));
    for (const SWorkflowPage& page : kPages) {
        m_pages->addItem(NewPage(page, actions), tr(page.title));
    }
    setWidget(m_pages);
}

QWidget* CQZovWorkflow::NewPage(const SWorkflowPage& page, ui::CCommandActions& actions)
{
    auto* scroll = new QScrollArea(m_pages);
    scroll->setObjectName(QLatin1String(page.objectName));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    ui::CQtHelpTopicEventFilter::SetTopic(*scroll, QLatin1String(page.contextKey));
    auto* content = new QWidget(scroll);
    auto* layout = new QVBoxLayout(content);
    auto* intro = new QLabel(tr(page.intro), content);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    int number = 0;
    for (const SWorkflowStep& step : page.steps) {
        auto* button = new QToolButton(content);
        button->setText(tr("%1. %2").arg(++number).arg(tr(step.text)));
        button->setObjectName(
            QStringLiteral("%1_step%2").arg(QLatin1String(page.objectName)).arg(number));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setIcon(actions.Action(step.command)->icon());
        button->setAutoRaise(true);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        actions.Bind(*button, step.command);
        layout->addWidget(button);
        if (*step.why != '\0') {
            auto* why = new QLabel(tr(step.why), content);
            why->setWordWrap(true);
            why->setIndent(button->iconSize().width() + 12);
            why->setForegroundRole(QPalette::PlaceholderText);
            layout->addWidget(why);
        }
    }
    layout->addStretch();
    scroll->setWidget(content);
    return scroll;
}

const char* CQZovWorkflow::ContextKeyOf(int page)
{
    const bool isKnown = page >= 0 && page < static_cast<int>(kPages.size());
    return kPages[isKnown ? static_cast<std::size_t>(page) : 0].contextKey;
}

QString CQZovWorkflow::ContextKey() const
{
    return QLatin1String(ContextKeyOf(m_pages->currentIndex()));
}

int CQZovWorkflow::CurrentPage() const
{
    return m_pages->currentIndex();
}

void CQZovWorkflow::SetCurrentPage(int page)
{
    m_pages->setCurrentIndex(page);
}

} // namespace zov::app
