// SPDX-License-Identifier: Apache-2.0
#include "cli/Ibis.h"

#include <CLI/CLI.hpp>

namespace zov::cli {

namespace {

constexpr const char* kFooter = R"(Examples:
  zov ibis tree buffer.ibs --depth 2
  zov ibis pins controller.ibs --component ctrl)";

} // namespace

CResult<std::string> ChooseComponent(const std::vector<std::string>& names,
                                     const std::string& asked)
{
    if (!asked.empty() || names.size() == 1) {
        return asked.empty() ? names.front() : asked;
    }
    std::string all;
    for (const std::string& name : names) {
        all += (all.empty() ? "" : ", ") + name;
    }
    return Fail(EErr::Argument,
                "the file has several components, choose one by --component: " + all);
}

void AddIbis(CLI::App& zov, SChosen& chosen)
{
    CLI::App* ibis =
        zov.add_subcommand("ibis", "IBIS files as objects: look into, compose, annotate");
    ibis->footer(kFooter);
    ibis->require_subcommand(1);
    AddIbisTree(*ibis, chosen);
    AddIbisPins(*ibis, chosen);
    AddIbisCompose(*ibis, chosen);
    AddIbisBuses(*ibis, chosen);
}

} // namespace zov::cli
