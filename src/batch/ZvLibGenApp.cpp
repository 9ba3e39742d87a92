// SPDX-License-Identifier: Apache-2.0
#include "batch/ZvLibGenApp.h"

#include "batch/BatchLog.h"
#include "batch/BatchRun.h"
#include "batch/Messages.h"

#include <exception>

namespace zov::batch {

CZvLibGenApp::CZvLibGenApp(const std::vector<std::string>& arguments)
    : m_options(ParseCommandLine(arguments))
{
}

int CZvLibGenApp::RunBatch(const std::filesystem::path& logFolder, CLogSink& trouble) const
{
    CBatchLog log(logFolder / kBatchLogName);
    if (!log.Ok()) {
        trouble.Write(Text("cannot write %s in the current folder; the run goes on without a log",
                           std::string(kBatchLogName)));
    }
    try {
        return BatchZvLibGen(m_options, log) ? 0 : 1;
    } catch (const std::exception& fault) { // memory that ran out, a file system that went away
        log.Write(Text("[ERROR]: the run was broken off: %s", fault.what()));
        return 1;
    }
}

} // namespace zov::batch
