// SPDX-License-Identifier: Apache-2.0
#include "cli/CommandLine.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

namespace {

/// A stream of the C library that remembers its first fault.
class CStdOutput final : public zov::cli::COutput
{
public:
    explicit CStdOutput(std::FILE* file)
        : m_file(file)
    {
    }
    void Write(std::string_view text) override
    {
        if (m_error == 0 && std::fwrite(text.data(), 1, text.size(), m_file) != text.size()) {
            m_error = errno;
        }
    }
    void Flush()
    {
        if (m_error == 0 && std::fflush(m_file) != 0) {
            m_error = errno;
        }
    }
    [[nodiscard]] bool Ok() const override { return m_error == 0; }
    [[nodiscard]] int Error() const { return m_error; }

private:
    std::FILE* m_file;
    int m_error = 0;
};

} // namespace

int main(int argc, char** argv)
{
#ifdef SIGPIPE
    // Whoever reads along may go (`zov ... | head`): a library being saved is still saved.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    CStdOutput out(stdout);
    CStdOutput err(stderr);
    const int status = zov::cli::RunZov({argv + (argc > 0 ? 1 : 0), argv + argc}, {out, err});
    out.Flush();
    if (!out.Ok() && out.Error() != EPIPE) {
        zov::cli::Print(err, "zov: cannot write to standard output: {}\n",
                        std::generic_category().message(out.Error()));
        return zov::cli::kExitFile;
    }
    return status;
}
