// SPDX-License-Identifier: Apache-2.0
/// Runs commands in process, in a folder of their own whose name shows as "@".
#pragma once

#include "base/File.h"
#include "base/Text.h"
#include "cli/CommandLine.h"
#include "core/LibraryFiles.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace zov::test {

struct SRun
{
    int status = -1;
    std::string out;
    std::string err;
};

class CZovTest : public testing::Test
{
protected:
    /// Arguments separated by blanks; "@" is the folder.
    SRun Zov(std::string_view line)
    {
        const std::string folder = PathText(m_folder.Path());
        std::vector<std::string> arguments;
        for (const std::string_view piece : Split(line, ' ')) {
            arguments.push_back(ReplaceAll(piece, "@", folder));
        }
        cli::CStringOutput out;
        cli::CStringOutput err;
        SRun run;
        run.status = cli::RunZov(arguments, {out, err});
        run.out = ReplaceAll(out.Text(), folder, "@");
        run.err = ReplaceAll(err.Text(), folder, "@");
        return run;
    }
    /// Status, output and messages as one text, for a look at all of them at once.
    std::string Told(std::string_view line)
    {
        const SRun run = Zov(line);
        return run.out + (run.err.empty() ? "" : "--\n" + run.err) + "= " +
               std::to_string(run.status);
    }
    void Save(const CZovLibrary& library, const std::string& name)
    {
        CNullLog log;
        ASSERT_TRUE(SaveLibrary(library, m_folder.Path() / name, {}, log).Ok());
    }
    static CZovRcdProps& AddCapacitor(CZovLibrary& library, std::string_view name, double cnom)
    {
        CZovRcdProps& record = library.Add(ERecordType::Capacitor);
        record.SetString(EPropId::ModelName, name);
        record.SetString(EPropId::Size, "0402E");
        record.SetDouble(EPropId::Cnom, cnom);
        record.SetDouble(EPropId::Rv, 0.01);
        record.SetDouble(EPropId::Cv, cnom);
        return record;
    }
    CTempFolder m_folder;
};

} // namespace zov::test
