// SPDX-License-Identifier: Apache-2.0
#include "cli/CheckExplain.h"

#include "base/Text.h"
#include "cli/CheckPrinter.h"
#include "cli/Reporting.h"
#include "ibischk/Explain.h"

namespace zov::cli {

namespace {

constexpr std::size_t kWidth = 78;
constexpr std::string_view kIndent = "  ";

/// The words in lines of at most kWidth characters.
void PrintWrapped(const SStreams& streams, std::string_view text)
{
    std::string line;
    for (const std::string_view word : Split(text, ' ')) {
        if (!line.empty() && line.size() + 1 + word.size() > kWidth - kIndent.size()) {
            Print(streams.out, "{}{}\n", kIndent, line);
            line.clear();
        }
        line += line.empty() ? "" : " ";
        line += word;
    }
    Print(streams.out, "{}{}\n", kIndent, line);
}

void PrintPart(const SStreams& streams, std::string_view title, std::string_view text)
{
    if (!text.empty()) {
        Print(streams.out, "\n{}\n", title);
        PrintWrapped(streams, text);
    }
}

void PrintLines(const SStreams& streams, std::string_view title, std::string_view lines)
{
    if (lines.empty()) {
        return;
    }
    Print(streams.out, "\n{}\n", title);
    for (const std::string_view line : Split(lines, '\n')) {
        Print(streams.out, "{}{}\n", kIndent, line);
    }
}

} // namespace

int ExplainCode(const std::string& word, const SStreams& streams)
{
    const auto messages = ibischk::FindMessages(word);
    if (messages.empty()) {
        Print(streams.err,
              "zov: no message or rule '{}': give a code like E1009 or a rule like "
              "header/file-name-once; zov check --list-codes lists all\n",
              word);
        return kExitUsage;
    }
    const std::string rule = ibischk::RuleName(*messages.front());
    Print(streams.out, "{}\n", rule);
    for (const ibischk::SMessage* message : messages) {
        Print(streams.out, "{}{:04} {}: {}\n", kIndent, message->code, WordOf(message->severity),
              OneLine(Trim(message->text)));
    }
    const auto text = ibischk::Explain(rule);
    if (!text) {
        return kExitGood;
    }
    PrintPart(streams, "What it means", text->meaning);
    PrintPart(streams, "Why it matters", text->why);
    PrintPart(streams, "Usual causes", text->causes);
    PrintPart(streams, "What to do", text->action);
    PrintLines(streams, "Wrong", text->wrong);
    PrintLines(streams, "Right", text->right);
    return kExitGood;
}

} // namespace zov::cli
