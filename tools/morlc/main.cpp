// SPDX-License-Identifier: MIT
#include "build/build.h"
#include "check/check.h"
#include "compile.h"
#include "completion.h"
#include "graph/node_graph.h"
#include "graph/node_list.h"
#include "nodes/git_files.h"
#include "nodes/node_files.h"
#include "nodes/pack.h"
#include "options.h"
#include "output_file.h"
#include "platform.h"
#include "report/diagnostics.h"
#include "watch/watch.h"

#include <exception>

namespace morlc {
namespace {

/// What "list" and "graph" show.
std::string Describe(const Options& options, const LoadedNodes& nodes)
{
    if (options.command == Command::List) {
        const LogCollection log(*nodes.compiler, LogCollection::Mode::ShowAll);
        return FormatNodeList(*nodes.compiler, *nodes.origins);
    }
    const NodeGraph graph(*nodes.compiler, *nodes.origins);
    return graph.FormatDot();
}

void Show(const Options& options, Diagnostics& diagnostics)
{
    const std::string prefix = EnterDirectory(options.common.directory);
    const LoadedNodes nodes = LoadNodes(prefix, diagnostics);
    if (nodes.compiler) {
        WriteWhole(options.output, Describe(options, nodes));
    }
}

void Run(const Options& options, Diagnostics& diagnostics)
{
    switch (options.command) {
    case Command::Compile:
        Compile(options, diagnostics);
        break;
    case Command::List:
    case Command::Graph:
        Show(options, diagnostics);
        break;
    case Command::Pack:
        Pack(options, diagnostics);
        break;
    case Command::Unpack:
        Unpack(options, diagnostics);
        break;
    case Command::Text:
        ShowText(options, diagnostics);
        break;
    case Command::Merge:
        Merge(options, diagnostics);
        break;
    case Command::Completion:
        WriteWhole("-", FormatCompletion(options.completion));
        break;
    case Command::Build:
        Build(options, diagnostics);
        break;
    case Command::Check:
        Check(options, diagnostics);
        break;
    }
}

int RunWatch(const Options& options)
{
    try {
        return Watch(options);
    } catch (const ClosedPipe&) {
        return kErrors;
    } catch (const std::exception& error) {
        const bool asJson = options.common.diagnostics == "json";
        Diagnostics(asJson ? DiagnosticFormat::Json : DiagnosticFormat::Text, options.common.color,
                    false)
            .Error(error.what());
        return kErrors;
    }
}

int Main(int argc, char** argv)
{
    Options options;
    ExitStatus status = kSuccess;
    if (!ReadOptions(StartProcess(argc, argv), options, status)) {
        return status;
    }
    if (options.watches) {
        return RunWatch(options);
    }
    const bool asJson = options.common.diagnostics == "json";
    Diagnostics diagnostics(asJson ? DiagnosticFormat::Json : DiagnosticFormat::Text,
                            options.common.color, options.common.verbose);
    diagnostics.SetShowAll(options.common.showAll);
    try {
        Run(options, diagnostics);
    } catch (const ClosedPipe&) {
        return kErrors;
    } catch (const DiagnosticError& error) {
        diagnostics.Report(error.diagnostic);
    } catch (const std::exception& error) {
        diagnostics.Error(error.what());
    }
    const bool isFound = options.command == Command::Check && diagnostics.WarningCount() > 0;
    return isFound || diagnostics.ErrorCount() > 0 ? kErrors : kSuccess;
}

}  // namespace
}  // namespace morlc

int main(int argc, char** argv)
{
    return morlc::Main(argc, argv);
}
