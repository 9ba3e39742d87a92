// SPDX-License-Identifier: Apache-2.0
#include "base/File.h"
#include "base/Number.h"
#include "base/Text.h"
#include "cli/Commands.h"
#include "cli/NetFiles.h"
#include "network/Convert.h"
#include "network/Interpolate.h"
#include "network/Losses.h"
#include "network/MixedMode.h"
#include "network/MixedModeOrder.h"
#include "network/TouchstoneMessages.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zov::cli {

using namespace network;

namespace {

constexpr const char* kFooter =
    R"(What is not given stays as in IN; the version is 2 when OUT ends in .ts, else 1. What OUT cannot hold is
told on standard error (with --strict nothing is written then), and so is a change of the values' scale:
version 1 files hold Z, Y, G and H normalised to the references, version 2 files in ohm and siemens.
Frequencies at which the wanted parameters do not exist are told and left out (status 4).

Examples:
  zov net convert filter.s2p filter.ts --type Z --format RI
  zov net convert cable.s4p modes.ts --mixed-mode 'D1,2 D3,4 C1,2 C3,4' --reference 50)";

struct SOptions
{
    std::string in;
    std::string out;
    std::string type;
    std::string format;
    std::string unit;
    std::string touchstone;
    std::string order;
    std::string reference;
    std::string storage;
    std::string points;
    std::string like;
    bool strict = false;
};

/// One or N numbers above 0, separated by commas.
CResult<std::vector<double>> ReadReferences(const std::string& text, std::size_t ports)
{
    std::vector<double> references;
    for (const std::string_view word : Split(text, ',')) {
        const std::optional<double> ohm = ParseDouble(word);
        if (!ohm || *ohm <= 0.0) {
            return Fail(EErr::Argument,
                        "--reference: '" + std::string(word) + "' is no impedance above 0 ohm");
        }
        references.push_back(*ohm);
    }
    if (references.size() == 1) {
        references.resize(ports, references.front());
    }
    if (references.size() != ports) {
        return Fail(EErr::Argument, fmt::format("--reference: {} impedances for {} ports",
                                                references.size(), ports));
    }
    return references;
}

/// "single", or descriptors as in [Mixed-Mode Order].
CResult<std::vector<SPort>> ReadOrder(const std::string& text, std::uint32_t ports)
{
    if (EqualsNoCase(text, "single")) {
        return DefaultPorts(ports);
    }
    std::vector<SPort> order;
    std::string_view rest = text;
    if (!ReadPortDescriptors(rest, order) || order.size() != ports) {
        return Fail(EErr::Argument,
                    fmt::format("--mixed-mode: expected {} descriptors such as S1, D1,2 or C1,2, "
                                "or 'single'",
                                ports));
    }
    return order;
}

/// "FROM:TO:COUNT" with ":log" behind it for a logarithmic list; in Hz.
CResult<std::vector<double>> ReadPoints(const std::string& text)
{
    const std::vector<std::string_view> parts = Split(text, ':');
    const bool log = parts.size() == 4 && EqualsNoCase(parts[3], "log");
    const bool formed = parts.size() == 3 || log;
    const std::optional<double> from = formed ? ParseDouble(parts[0]) : std::nullopt;
    const std::optional<double> to = formed ? ParseDouble(parts[1]) : std::nullopt;
    const std::int64_t count = formed ? ParseInt(parts[2]).value_or(-1) : -1;
    if (!from || !to || count < 0) {
        return Fail(EErr::Argument, "--points: expected FROM:TO:COUNT or FROM:TO:COUNT:log, in Hz");
    }
    return FrequencyList(*from, *to, static_cast<std::size_t>(count),
                         log ? ESpacing::Logarithmic : ESpacing::Linear);
}

class CConversion
{
public:
    CConversion(const SOptions& options, const SStreams& streams)
        : m_options(options)
        , m_streams(streams)
    {
    }

    int Run()
    {
        std::optional<CNetworkData> data = LoadNetwork(m_options.in, m_streams);
        if (!data) {
            return kExitFile;
        }
        m_data = std::move(*data);
        if (!m_options.like.empty()) {
            const std::optional<CNetworkData> like = LoadNetwork(m_options.like, m_streams);
            if (!like) {
                return kExitFile;
            }
            m_points = like->FrequenciesHz();
        }
        if (const CResult<void> changed = Change(); !changed) {
            PrintError(m_streams, changed.Error());
            return changed.Error().code == EErr::Singular ? kExitNotRight : kExitUsage;
        }
        return Write();
    }

private:
    CResult<void> Apply(CResult<SConverted> converted)
    {
        RETURN_IF_ERROR(converted);
        if (!converted->singularHz.empty()) {
            Print(m_streams.err, "zov: {}: {}\n", m_options.in,
                  SingularText(converted->data.Parameter(), converted->singularHz));
            m_inPart = true;
        }
        m_data = std::move(converted->data);
        return {};
    }

    CResult<void> Change()
    {
        const std::uint32_t ports = m_data.PortCount();
        std::vector<SPort> order;
        if (!m_options.order.empty()) {
            ASSIGN_OR_RETURN(order, ReadOrder(m_options.order, ports));
            RETURN_IF_ERROR(ToSingleEnded(m_data));
        }
        if (!m_options.reference.empty()) {
            ASSIGN_OR_RETURN(std::vector<double> references,
                             ReadReferences(m_options.reference, ports));
            RETURN_IF_ERROR(Apply(Renormalise(std::move(m_data), std::move(references))));
        }
        if (!m_options.points.empty()) {
            ASSIGN_OR_RETURN(m_points, ReadPoints(m_options.points));
        }
        if (!m_points.empty()) {
            ASSIGN_OR_RETURN(m_data, Interpolate(m_data, m_points));
        }
        const std::optional<EParameter> type = ParameterOfLetter(m_options.type);
        if (type && *type != m_data.Parameter()) {
            RETURN_IF_ERROR(Apply(ConvertTo(std::move(m_data), *type)));
        }
        return order.empty() ? CResult<void>() : ToModes(m_data, order);
    }

    [[nodiscard]] SWriteOptions Options() const
    {
        SWriteOptions options = OptionsLike(m_data);
        options.version = !m_options.touchstone.empty() ? m_options.touchstone.front() - '0'
                          : EqualsNoCase(ExtensionOf(TextPath(m_options.out)), ".ts") ? 2
                                                                                      : 1;
        options.format = FormatOfWord(m_options.format).value_or(options.format);
        options.unit = UnitOfWord(m_options.unit).value_or(options.unit);
        for (const EStorage storage : {EStorage::Full, EStorage::Lower, EStorage::Upper}) {
            if (EqualsNoCase(m_options.storage, WordOf(storage))) {
                options.storage = storage;
            }
        }
        return options;
    }

    /// Values whose scale the target's version changes.
    void TellScale(int version)
    {
        const bool normalised = version == 1;
        if (m_data.Parameter() != EParameter::S &&
            normalised != (m_data.Normalised() == ENormalised::Yes)) {
            Print(m_streams.err,
                  "zov: {}: {} values are {} the references ({}): version {} files hold {}\n",
                  m_options.out, LetterOf(m_data.Parameter()),
                  normalised ? "normalised to" : "no longer normalised to", ReferencesText(m_data),
                  version, normalised ? "them so" : "ohm and siemens");
        }
    }

    int Write()
    {
        const SWriteOptions options = Options();
        const std::vector<std::string> losses = LossesOf(m_data, options);
        for (const std::string& loss : losses) {
            Print(m_streams.err, "zov: {}: {}\n", m_options.out, loss);
        }
        if (m_options.strict && !losses.empty()) {
            Print(m_streams.err, "zov: {}: not written\n", m_options.out);
            return kExitNotRight;
        }
        TellScale(options.version);
        if (const CResult<void> written = WriteTouchstone(m_data, TextPath(m_options.out), options);
            !written) {
            PrintError(m_streams, written.Error());
            return kExitFile;
        }
        Print(m_streams.out, "{}: {}, {} {}, version {}, {}\n", m_options.out,
              Counted(m_data.PortCount(), "port"), LetterOf(m_data.Parameter()),
              WordOf(options.format), options.version, Counted(m_data.FrequencyCount(), "point"));
        return StatusOf(kExitGood, m_inPart);
    }

    const SOptions& m_options;
    const SStreams& m_streams;
    CNetworkData m_data;
    std::vector<double> m_points;
    bool m_inPart = false;
};

void AddOptions(CLI::App& command, SOptions& options)
{
    const auto choice = [&](const char* name, std::string& value, std::vector<std::string> words,
                            const char* text, const char* shown) {
        command.add_option(name, value, text)
            ->transform(CLI::IsMember(std::move(words), CLI::ignore_case).description(""))
            ->type_name(shown);
    };
    command.add_option("IN", options.in, "Touchstone file")->required()->type_name("");
    command.add_option("OUT", options.out, "File to write")->required()->type_name("");
    choice("--type", options.type, {"S", "Z", "Y", "G", "H"}, "Parameters", "S|Z|Y|G|H");
    choice("--format", options.format, {"DB", "MA", "RI"},
           "Decibels, magnitude or real and imaginary", "DB|MA|RI");
    choice("--unit", options.unit, {"Hz", "KHz", "MHz", "GHz"}, "Unit of the frequencies",
           "Hz|KHz|MHz|GHz");
    choice("--touchstone", options.touchstone, {"1", "2"}, "Version of the file", "1|2");
    choice("--storage", options.storage, {"full", "lower", "upper"},
           "Which part of symmetrical matrices a version 2 file holds", "full|lower|upper");
    command
        .add_option("--mixed-mode", options.order,
                    "Modes of the ports, such as 'D1,2 C1,2 S3'; 'single' makes all single-ended")
        ->type_name("ORDER");
    command
        .add_option("--reference", options.reference,
                    "Other reference impedances: one, or one a port separated by commas")
        ->type_name("OHMS");
    CLI::Option* points =
        command
            .add_option(
                "--points", options.points,
                "Interpolates to FROM:TO:COUNT in Hz, with :log behind for a logarithmic list")
            ->type_name("LIST");
    command.add_option("--like", options.like, "Interpolates to the frequencies of another file")
        ->type_name("FILE")
        ->excludes(points);
    command.add_flag("--strict", options.strict, "Writes nothing when something would be lost");
}

} // namespace

void AddNetConvert(CLI::App& net, SChosen& chosen)
{
    auto options = std::make_shared<SOptions>();
    CLI::App* command =
        net.add_subcommand("convert", "Other parameters, format, unit, version, modes, references");
    command->footer(kFooter);
    AddOptions(*command, *options);
    command->callback([options, &chosen] {
        chosen.run = [options](const SStreams& streams) {
            return CConversion(*options, streams).Run();
        };
    });
}

} // namespace zov::cli
