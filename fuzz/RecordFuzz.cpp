// SPDX-License-Identifier: Apache-2.0
/// Records, briefs, locators and extra indexes of any bytes: read or refused; what was read is
/// written and read back the same.
#include "ui/replay/Brief.h"
#include "ui/replay/BriefEdit.h"
#include "ui/replay/ExtraIndex.h"
#include "ui/replay/KeyNames.h"
#include "ui/replay/RecordFile.h"
#include "ui/replay/RecordXml.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace zov::ui::replay;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (auto record = ParseRecord(text, "x.xml")) {
        UpgradeRecord(*record);
        const std::string written = FormatRecord(*record);
        const auto again = ParseRecord(written, "x.xml");
        Require(again.Ok() && FormatRecord(*again) == written);
        const SBrief brief = MakeBrief(*record);
        static_cast<void>(ParseBrief(FormatBrief(brief), "x.brf"));
        Require(ApplyBrief(*record, brief, "x.brf")->events.size() == record->events.size());
        SBrief edited = brief;
        for (SBriefLine& line : edited.lines) {
            line.action += line.action.starts_with("KeyInputs ") ? "<Return>\"" : "";
        }
        static_cast<void>(ApplyBrief(*record, edited, "x.brf"));
        for (const SRecordedEvent& event : record->events) {
            static_cast<void>(FitOffset(ParseExtraIndex(event.target.extraIndex), {80, 20}));
        }
    }
    if (const auto brief = ParseBrief(text, "x.brf")) {
        Require(ParseBrief(FormatBrief(*brief), "x.brf").Ok());
    }
    if (const auto located = ParseLocator(text, "x.loc")) {
        Require(ParseLocator(FormatLocator(*located), "x.loc").Ok());
    }
    static_cast<void>(KeysOf(text));
    const SExtraIndex index = ParseExtraIndex(text);
    Require(ParseExtraIndex(FormatExtraIndex(index)).path == index.path);
    return 0;
}
