// SPDX-License-Identifier: MIT
#include "compile.h"
#include "diagnostics.h"
#include "options.h"

#include <csignal>
#include <exception>

int main(int argc, char** argv)
{
    // A reader that closes its pipe shall be reported like any other failed write.
    std::signal(SIGPIPE, SIG_IGN);
    morlc::Options options;
    morlc::ExitStatus status = morlc::kSuccess;
    if (!morlc::ReadOptions(argc, argv, options, status)) {
        return status;
    }
    morlc::Diagnostics diagnostics(options.verbose);
    try {
        morlc::Compile(options, diagnostics);
    } catch (const std::exception& error) {
        diagnostics.Error(error.what());
    }
    return diagnostics.HasErrors() ? morlc::kErrors : morlc::kSuccess;
}
