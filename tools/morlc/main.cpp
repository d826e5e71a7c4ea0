// SPDX-License-Identifier: MIT
#include "build.h"
#include "compile.h"
#include "diagnostics.h"
#include "node_files.h"
#include "node_graph.h"
#include "node_list.h"
#include "options.h"
#include "output_file.h"

#include <csignal>
#include <exception>

namespace morlc {
namespace {

void List(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const NodeFiles files(prefix, diagnostics);
    const auto compiler = LoadNodes(files, prefix, diagnostics);
    if (compiler) {
        const LogCollection log(*compiler, LogCollection::Mode::Show);
        WriteWhole(options.graph.output, FormatNodeList(*compiler, files.FileByNode()));
    }
}

void Draw(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const NodeFiles files(prefix, diagnostics);
    const auto compiler = LoadNodes(files, prefix, diagnostics);
    if (compiler) {
        const NodeGraph graph(*compiler, files.FileByNode());
        WriteWhole(options.graph.output,
                   options.graph.format == "svg" ? graph.FormatSvg() : graph.FormatDot());
    }
}

void Run(const Options& options, Diagnostics& diagnostics)
{
    switch (options.command) {
    case Command::Pass:
        Compile(options, diagnostics);
        break;
    case Command::List:
        List(options, diagnostics);
        break;
    case Command::Graph:
        Draw(options, diagnostics);
        break;
    case Command::Build:
        Build(options, diagnostics);
        break;
    }
}

int Main(int argc, char** argv)
{
    // A reader that closes its pipe shall be reported like any other failed write.
    std::signal(SIGPIPE, SIG_IGN);
    Options options;
    ExitStatus status = kSuccess;
    if (!ReadOptions(argc, argv, options, status)) {
        return status;
    }
    const bool asJson = options.common.diagnostics == "json";
    Diagnostics diagnostics(asJson ? DiagnosticFormat::Json : DiagnosticFormat::Text,
                            options.common.verbose);
    try {
        Run(options, diagnostics);
    } catch (const DiagnosticError& error) {
        diagnostics.Report(error.diagnostic);
    } catch (const std::exception& error) {
        diagnostics.Error(error.what());
    }
    return diagnostics.ErrorCount() > 0 ? kErrors : kSuccess;
}

}  // namespace
}  // namespace morlc

int main(int argc, char** argv)
{
    return morlc::Main(argc, argv);
}
