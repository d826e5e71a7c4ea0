// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morl_test {

/// One case of a case file: what is given, and what comes of it.
///
/// A case file (tests/cases/<folder>/*.txt) begins with a remark and holds cases:
///
///     == TITLE
///     -- SECTION, a line that says what is given; the lines below it belong to it
///     -> OUTCOME, written by "./dev golden" and looked at before it is committed
///
/// What may be given:
///
///     -- node NAME [REFERENCE...]       a node of the graph, and its source
///     -- file PATH                      a file of the case's directory
///     -- source                         a source to parse: tree and log
///     -- load                           loads the node files: nodes and log
///     -- request TARGET[,TARGET...] STAGE [NODE...] [MACRO=INTEGER...] [in:NAME=SEMANTIC...]
///           [sampler:NAME=INTEGER...]   a request to the graph: texts, tables and the whole log.
///                                       "all" are all targets
///     -- run COMMAND                    a shell command in the case's directory, where morlc is
///                                       found and $EXAMPLES names the samples: status and output
///
/// Nodes and files come before what uses them. The requests of a case share one compiler. In a
/// text "\xHH" is a byte; a backslash that ends an outcome says that its last line is not ended.
/// An outcome that is empty (no log, say) is left out, and so is compared as well.
struct Case {
    std::string title;
    std::string written;   ///< as the file has it
    std::string rendered;  ///< from what is given and what came of it
};

/// Carries out the cases of a file. The first element is the remark above the first case.
/// @throws std::runtime_error for a section that is none
std::vector<Case> RunCases(const std::filesystem::path& file);

/// All case files, sorted.
std::vector<std::filesystem::path> CaseFiles();

}  // namespace morl_test
