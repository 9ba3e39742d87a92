// SPDX-License-Identifier: Apache-2.0
#include "app/assignment/WhyText.h"

#include <QCoreApplication>

#include <algorithm>

namespace zov::app {
namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("zov::app::WhyText", text);
}

QString Html(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size())).toHtmlEscaped();
}

QString ModelLine(const SModelRef& model)
{
    return Tr("<b>%1</b> (%2) in %3")
        .arg(Html(model.record->Name()), Html(InfoOf(model.type).name),
             Html(model.library->Name()));
}

} // namespace

QString WhyHtml(const SWhy& why, const SFound& found, const SExplanation& told)
{
    QString html = QStringLiteral("<p><b>%1</b></p>").arg(Html(why.name));
    if (why.models.empty()) {
        html += QStringLiteral("<p>%1</p>").arg(Tr("No model is assigned."));
    }
    for (const SModelRef& model : why.models) {
        html += QStringLiteral("<p>%1<br/>%2</p>").arg(ModelLine(model), Html(why.how));
    }
    // Those that the row has by other means than the mapping are not others.
    QString list;
    std::size_t others = told.others;
    for (const SRunnerUp& one : told.runnersUp) {
        if (std::ranges::find(why.models, one.model) != why.models.end()) {
            --others;
            continue;
        }
        list += QStringLiteral("<li>%1%2</li>")
                    .arg(ModelLine(one.model), found.model || why.models.empty()
                                                   ? QStringLiteral(": ") + Html(one.reason)
                                                   : QString());
    }
    if (list.isEmpty()) {
        return html + QStringLiteral("<p>%1</p>").arg(Tr("No other model matches."));
    }
    html +=
        QStringLiteral("<p>%1</p><ul>%2</ul>").arg(Tr("Others that match: %1").arg(others), list);
    if (others > told.runnersUp.size()) {
        html += QStringLiteral("<p>%1</p>").arg(Tr("More are in the libraries."));
    }
    return html;
}

} // namespace zov::app
