// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/draw.h"
#include "support/graph.h"

#include <filesystem>
#include <string>
#include <vector>

namespace morl_test {

/// A line of a node that may not carry over to every target, and one that means the same
/// everywhere. The list is tests/pictures/probes.json.
struct Probe {
    std::string row;    ///< its name in docs/targets.md
    std::string check;  ///< the name of the check that finds it
    std::string rule;   ///< the rule of docs/language.md that it illustrates, or empty
    bool isInVertexPass = false;
    std::string wrong;  ///< statements that assign `result`
    std::string right;  ///< likewise; empty: the question is only whether `wrong` is accepted
    std::string declare;
    std::string rightDeclare;
    std::string output;  ///< the semantic of the fragment output beside `wrong`
    std::string webGl;   ///< "yes" if WebGL accepts `wrong`, otherwise "refused": see webgl_test.js
    /// The targets in which Microsoft's compiler refuses `wrong`: see direct3d_test.py.
    std::vector<std::string> refusedByDirect3d;
};

std::vector<Probe> ReadProbes();

/// The nodes "vertex" and "fragment" of a probe's line.
std::vector<NodeSource> NodesOfProbe(const Probe& probe, bool isRight);

/// The texts of a probe's line in a target.
/// @throws std::logic_error when the compiler logs an error
SampleTexts CompileProbe(const Probe& probe, const std::string& target, bool isRight);

/// What the compiler warns of in a probe's line, in a target.
std::vector<ns_ruke::ReportWarning> CheckProbe(const Probe& probe, const std::string& target,
                                               bool isRight);

/// What each target made of each wrong line: "yes" if it draws the same as the right line, "other
/// picture", "refused", or, without a right line, "accepted".
/// @throws std::runtime_error if a target refuses a right line or draws it differently, or if the
///         checks do not find a wrong line, find fault with a right one, or have no line of their
///         own
std::string ProbeTable();

/// The rules for portable nodes, each with a right and a wrong line.
std::string RuleTable();

}  // namespace morl_test
