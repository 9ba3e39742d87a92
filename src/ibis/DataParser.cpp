// SPDX-License-Identifier: Apache-2.0
#include "ibis/DataParser.h"

#include "base/File.h"
#include "base/Text.h"

#include <algorithm>

namespace zov::ibis {

namespace {

using ibischk::EFileType;

constexpr EFileType kParsed[] = {EFileType::Pkg, EFileType::Ims, EFileType::Ebd};
/// Of the time that checking and parsing take.
constexpr double kCheckShare = 0.7;
constexpr EFileType kNotParsed[] = {EFileType::Emd, EFileType::Ems, EFileType::Ami};

void CollectInOrder(CIPDataObject& object, std::vector<CIPDataObject*>& all)
{
    for (const auto& child : object.Children()) {
        all.push_back(child.get());
        CollectInOrder(*child, all);
    }
}

} // namespace

CResult<EFileType> IPFileTypeOf(const std::filesystem::path& path)
{
    const std::string extension = ExtensionOf(path);
    const auto is = [&](EFileType type) {
        return EqualsNoCase(extension, ibischk::ExtensionOf(type));
    };
    if (std::ranges::any_of(kNotParsed, is)) {
        return Fail(EErr::Unsupported, "'" + PathText(path) +
                                           "' is of a kind that is checked but not shown as "
                                           "objects, expected .ibs, .pkg, .ims or .ebd");
    }
    const auto* const found = std::ranges::find_if(kParsed, is);
    return found == std::end(kParsed) ? EFileType::Ibs : *found;
}

int CIBISDataParser::ReadFile(const std::filesystem::path& path, const SIPReadOptions& options)
{
    CResult<void> result = Read(path, options);
    m_error = result.Ok() ? SError() : result.TakeError();
    return result.Ok() ? 1 : 0;
}

CResult<void> CIBISDataParser::Read(const std::filesystem::path& path,
                                    const SIPReadOptions& options)
{
    m_data.reset();
    m_check = {};
    ASSIGN_OR_RETURN(const EFileType type, IPFileTypeOf(path));
    ASSIGN_OR_RETURN(std::string text, ReadWholeFile(path));
    bool stopped = false;
    const auto goOn = [&](double share) {
        stopped = stopped || (options.progress && !options.progress(share));
        return !stopped;
    };
    if (options.check == EIPCheckFirst::Yes) {
        CheckIbisFile(PathText(path).c_str(), &m_check,
                      {type, options.temporaryFolder,
                       [&](double share) { return goOn(share * kCheckShare); }, text});
    }
    if (goOn(kCheckShare)) {
        Parse(std::move(text), type,
              [&](double share) { return goOn(kCheckShare + share * (1.0 - kCheckShare)); });
    }
    if (stopped) {
        m_data.reset();
        m_check = {};
        return Fail(EErr::Cancelled, "reading was stopped");
    }
    MarkMessages();
    return {};
}

void CIBISDataParser::ReadText(std::string text, EFileType type)
{
    Parse(std::move(text), type, {});
}

void CIBISDataParser::Parse(std::string text, EFileType type, FIPProgress progress)
{
    if (type == EFileType::Ebd) {
        m_parser = std::make_unique<CParserEBD>();
    } else {
        m_parser = std::make_unique<CParserIBS>();
    }
    m_parser->SetProgress(std::move(progress));
    m_data = m_parser->Parse(std::move(text));
    m_parser->SetProgress({});
}

/// A message's line belongs to the last object that begins at or before it.
void CIBISDataParser::MarkMessages()
{
    std::vector<CIPDataObject*> all;
    CollectInOrder(*m_data, all);
    std::ranges::stable_sort(all, {}, &CIPDataObject::Line);
    for (std::size_t i = 0; i < m_check.messages.size(); ++i) {
        const std::size_t line = m_check.messages[i].line;
        const auto after = std::ranges::upper_bound(all, line, {}, &CIPDataObject::Line);
        if (line != 0 && after != all.begin()) {
            (*std::prev(after))->Mark(EIPMark::Checker, line, i);
        }
    }
}

} // namespace zov::ibis
