// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "curve/CurveFile.h"
#include "curve/CurveLines.h"
#include "curve/CurveMessages.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <optional>

namespace zov::curve {

namespace {

/// The tokens of a header line that mean something.
constexpr std::size_t kHeaderTokens = 4;
/// Shortest line that gives a point: two numbers of a digit, a blank and a line feed.
constexpr std::size_t kShortestPoint = 4;

std::optional<EKind> KindOfFirstLine(const SLine& line)
{
    for (const SBanner& banner : Banners()) {
        const EBannerEnd end =
            banner.kind == EKind::FrequencyDomain ? EBannerEnd::LineBreak : EBannerEnd::Anything;
        if (IsBanner(line, banner.text, end)) {
            return banner.kind;
        }
    }
    return std::nullopt;
}

class CFileReader
{
public:
    CFileReader(std::string_view text, EValueClass setClass, const SCurveReadOptions& options)
        : m_lines(text)
        , m_class(setClass)
        , m_options(options)
    {
    }

    CResult<SCurveFile> Read(std::string_view path)
    {
        SLine line;
        const auto kind = m_lines.Next(line) ? KindOfFirstLine(line) : std::nullopt;
        if (!kind) {
            return Fail(EErr::Format, fmt::format("{}{}{}", kFile, path, kNotPlenvo));
        }
        m_file.kind = *kind;
        while (m_lines.Next(line)) {
            if (IsAttributeLine(line.text)) {
                KeepAttributes(line.text);
            } else if (IsBanner(line, kCurveBanner, EBannerEnd::LineBreak)) {
                RETURN_IF_ERROR(ReadBlocks());
            }
        }
        if (m_file.curves.empty()) {
            return Fail(EErr::Format, fmt::format("{}{}", kNoValidCurve, path));
        }
        return std::move(m_file);
    }

private:
    enum class EBlockEnd
    {
        End,
        NextCurve,
        File
    };

    void KeepAttributes(std::string_view line)
    {
        m_file.hasAttributes = true;
        if (TAttributeGroup group = ReadAttributes(line); !group.empty()) {
            m_attributes.push_back(std::move(group));
        }
    }

    /// Behind a curve banner. A second one inside a block begins the next block.
    CResult<void> ReadBlocks()
    {
        EBlockEnd end = EBlockEnd::NextCurve;
        while (end == EBlockEnd::NextCurve) {
            SLine line;
            if (!m_lines.Next(line) || IsBanner(line, kEndBanner, EBannerEnd::LineBreak)) {
                return {};
            }
            auto curve = std::make_shared<CCurve>();
            SCurveHeader& header = curve->Header();
            ReadHeader(line.text, header);
            RETURN_IF_ERROR(CheckClass(ClassOf(header.valueName)));
            header.attributeGroups = std::move(m_attributes);
            m_attributes.clear();
            m_file.curves.push_back(curve);
            end = HasComplexValues(m_file.kind) ? ReadPoints<true>(*curve)
                                                : ReadPoints<false>(*curve);
            curve->Points().Trim();
            std::move(m_attributes.begin(), m_attributes.end(),
                      std::back_inserter(header.attributeGroups));
            m_attributes.clear();
        }
        return {};
    }

    void ReadHeader(std::string_view rest, SCurveHeader& header)
    {
        std::array<std::string_view, kHeaderTokens> tokens;
        for (std::string_view& token : tokens) {
            token = NextToken(rest);
        }
        const bool full = !tokens.back().empty();
        if (full) {
            header.name = tokens[0];
            header.valueName = StoredValueName(tokens[1]);
            TakeNames(header);
        }
        const auto style = FindStyle(full ? tokens[2] : tokens[0]);
        header.style = style.value_or(ELineStyle::Solid);
        header.legend = style ? std::string(full ? tokens[3] : tokens[1]) : m_options.defaultLegend;
    }

    /// What the names of a full header say about the file.
    void TakeNames(SCurveHeader& header)
    {
        if (m_file.kind == EKind::Voltage) {
            m_file.kind = EKind::VoltageFullHeader;
        }
        if (HasComplexValues(m_file.kind) && NamesMode(header.name, header.valueName)) {
            m_file.kind = EKind::MixedMode;
            header.modes = ModesOf(header.name, header.valueName);
        }
    }

    CResult<void> CheckClass(EValueClass joining)
    {
        if (joining == EValueClass::None || joining == m_class) {
            return {};
        }
        if (m_class != EValueClass::None) {
            return Fail(
                EErr::Format,
                std::string(joining == EValueClass::Propagation ? kNoPropagation : kNoImpedance));
        }
        m_class = joining;
        return {};
    }

    template <bool IsComplex>
    EBlockEnd ReadPoints(CCurve& curve)
    {
        SLine line;
        bool first = true;
        while (m_lines.Next(line)) {
            if (!line.text.empty() && line.text.front() == '*') {
                if (IsAttributeLine(line.text)) {
                    KeepAttributes(line.text);
                    continue;
                }
                if (IsBanner(line, kEndBanner, EBannerEnd::LineBreak)) {
                    return EBlockEnd::End;
                }
                if (IsBanner(line, kCurveBanner, EBannerEnd::LineBreak)) {
                    return EBlockEnd::NextCurve;
                }
            }
            TakeDataLine<IsComplex>(line, first, curve);
        }
        return EBlockEnd::File;
    }

    template <bool IsComplex>
    void TakeDataLine(const SLine& line, bool& first, CCurve& curve)
    {
        std::string_view rest = line.text;
        const auto x = NextNumber(rest);
        if (!x) {
            if (Trim(rest).empty()) {
                return;
            }
            if (first) {
                TakeTitles(line.text, curve.Header());
            } else {
                Skip(line);
            }
            first = false;
            return;
        }
        std::array<double, kPointNumbers> numbers; // NOLINT: written before it is read
        numbers[0] = *x;
        const std::size_t count = ReadValues<IsComplex>(rest, numbers);
        if (count == 0) {
            Skip(line);
        } else {
            const auto given = std::span(numbers).first(count);
            if (curve.Points().Empty()) {
                curve.Points().Reserve(PointsAhead(line.text.size()), count);
            }
            curve.Points().Add(given);
        }
        first = false;
    }

    /// Numbers behind x; how many of the point's numbers there are with it, 0 when it lacks some.
    template <bool IsComplex>
    static std::size_t ReadValues(std::string_view& rest,
                                  std::array<double, kPointNumbers>& numbers)
    {
        constexpr std::size_t kNeeded = IsComplex ? 3 : 2;
        std::size_t count = 1;
        for (; count < kPointNumbers; ++count) {
            if (!IsComplex && count == 2) {
                // A real value has no imaginary part, whatever stands there.
                if (NextToken(rest).empty()) {
                    return count;
                }
                numbers[count] = 0.0;
                continue;
            }
            const auto number = NextNumber(rest);
            if (!number) {
                break;
            }
            numbers[count] = *number;
        }
        if (!IsComplex && count == 3) {
            count = 2;
        }
        return count < kNeeded ? 0 : count;
    }

    void TakeTitles(std::string_view line, SCurveHeader& header)
    {
        header.columnTitles = Trim(line);
        if (header.columnTitles.starts_with('*')) {
            // Without what stands before it, it would read back as an attribute or a banner.
            header.columnTitles.insert(0, line.substr(0, line.find('*')));
        }
        std::string_view rest = line;
        static_cast<void>(NextToken(rest));
        const std::string_view unit = NextToken(rest);
        if (EqualsNoCase(unit, "Real(Ohm)")) {
            m_file.unitClass = EUnitClass::Ohm;
        } else if (EqualsNoCase(unit, "Real(S)")) {
            m_file.unitClass = EUnitClass::Siemens;
        }
    }

    void Skip(const SLine& line)
    {
        if (m_file.skippedLines++ == 0) {
            m_file.firstSkippedLine = line.number;
        }
    }

    /// About how many points follow, by the length of the first line and the next asterisk, which
    /// is that of the end banner in all but odd files.
    [[nodiscard]] std::size_t PointsAhead(std::size_t lineLength) const
    {
        const std::string_view rest = m_lines.Rest();
        const std::size_t bytes = std::min(rest.find('*'), rest.size());
        const std::size_t guess = bytes / std::max(lineLength + 1, kShortestPoint);
        return guess + guess / 16 + 16;
    }

    CLineReader m_lines;
    EValueClass m_class;
    const SCurveReadOptions& m_options;
    SCurveFile m_file;
    std::vector<TAttributeGroup> m_attributes; ///< read since the last curve
};

} // namespace

CResult<SCurveFile> ReadCurveText(std::string_view text, std::string_view path,
                                  EValueClass setClass, const SCurveReadOptions& options)
{
    if (text.empty()) {
        return Fail(EErr::Format, fmt::format("{}{}{}", kFile, path, kNotValid));
    }
    return CFileReader(text, setClass, options).Read(path);
}

CResult<SCurveFile> ReadCurveFile(const std::filesystem::path& path, const CCurveSet& set,
                                  const SCurveReadOptions& options)
{
    const std::string shown = PathText(path);
    CResult<CFileView> view = CFileView::Open(path);
    if (!view) {
        SError error = Fail(view.Error().code, fmt::format("{}{}", shown, kCannotBeOpened));
        error.notes.push_back(view.Error().text);
        return error;
    }
    if (set.HasSource(shown)) {
        return Fail(EErr::Argument, fmt::format("{}{}{}", kCannotLoad, shown, kAlreadyLoaded));
    }
    return ReadCurveText(view->Bytes(), shown, set.ValueClass(), options);
}

void AddCurveFile(const std::filesystem::path& path, const SCurveFile& file, CCurveSet& set,
                  CCurveJournal& journal)
{
    const std::string shown = PathText(path);
    for (const TCurvePtr& curve : file.curves) {
        set.Add(curve);
    }
    set.AddSource(shown);
    set.TakeKind(file.kind);
    if (file.unitClass != EUnitClass::None) {
        set.unitClass = file.unitClass;
    }
    set.name = "Curve";
    set.description = fmt::format("(Load from file: {})", shown);
    if (set.onChanged) {
        set.onChanged();
    }
    JournalLoad(journal, shown, file.curves);
}

void LoadCurveFile(const std::filesystem::path& path, CCurveSet& set, CLogSink& messages,
                   CCurveJournal& journal, const SCurveReadOptions& options)
{
    const CResult<SCurveFile> file = ReadCurveFile(path, set, options);
    if (!file) {
        messages.Write(file.Error().text);
        return;
    }
    AddCurveFile(path, *file, set, journal);
}

} // namespace zov::curve
