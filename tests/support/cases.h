// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morl_test {

/// One case of a case file: its input and its outcome.
///
/// A case file (tests/cases/<folder>/*.txt) begins with a remark and holds cases:
///
///     == TITLE
///     -- SECTION, a line that describes an input; the lines below it belong to it
///     -> OUTCOME, written by "./dev golden" and reviewed before it is committed
///
/// The possible inputs:
///
///     -- node NAME [REFERENCE...]       a node of the graph, and its source
///     -- file PATH                      a file of the case's directory
///     -- source                         a source to parse: tree and log
///     -- load                           loads the node files: nodes and log
///     -- request TARGET[,TARGET...] STAGE [NODE...] [MACRO=INTEGER...] [in:NAME=SEMANTIC...]
///           [sampler:NAME=INTEGER...]   a request to the graph: texts, tables and the whole log.
///                                       "all" means all targets
///     -- run COMMAND                    a shell command in the case's directory, where morlc is
///                                       found and $EXAMPLES names the samples: status and output,
///                                       with $DIRECTORY, $EXAMPLES and $TOOLS for these paths
///
/// Nodes and files come before what uses them. The requests of a case share one compiler. In a
/// text, "\xHH" is a byte; a backslash at the end of an outcome means that its last line has no
/// line break. Empty outcomes (no log, for example) are left out, so their absence is compared,
/// too.
struct Case {
    std::string title;
    std::string written;   ///< as the file has it
    std::string rendered;  ///< the same inputs with the actual outcomes
    bool isSkipped = false;
};

/// The system that the library and the tool are for. Cases with "(POSIX)" at the end of their title
/// are skipped on Windows.
enum class System { Posix, Windows };

/// Carries out the cases of a file. The first element is the remark above the first case.
/// @throws std::runtime_error for an unknown section
std::vector<Case> RunCases(const std::filesystem::path& file, System system = System::Posix);

/// All case files, sorted.
std::vector<std::filesystem::path> CaseFiles();

}  // namespace morl_test
