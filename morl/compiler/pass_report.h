// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/report_fault.h"

#include <string>
#include <string_view>
#include <vector>

namespace ns_ruke {

/// Something that is probably a mistake, although the source has no fault.
struct ReportWarning {
    std::string_view check;  ///< the name of the check; valid as long as the library is loaded
    std::string node;        ///< empty: the request as a whole
    int line = 0;            ///< 1-based, in the node's content; 0: no place
    int column = 0;          ///< 1-based, in bytes; 0: no place
    std::string name;        ///< what the text is about, such as a variable; may be empty
    std::string text;        ///< what happens, and what to do
};

/// What a line of a written shader was made from.
struct ReportLine {
    int node = -1;  ///< an index into PassReport::nodes; -1: from no node, such as the header
    int line = 0;   ///< 1-based, in the node's content; 0 without a node
};

/// A uniform, an input or an output of a pass. The views are of texts of the library.
struct ReportDeclare {
    std::string name;
    int node = -1;                 ///< the node that declares it: an index into PassReport::nodes
    int line = 0;                  ///< 1-based, in the node's content
    int column = 0;                ///< 1-based, in bytes
    std::string_view type;         ///< as declared, such as "float4" or "auto"
    std::string_view writtenType;  ///< as the target spells it
    std::string arraySize;         ///< as written; empty: no array
    int elements = 0;              ///< the array size if it is a number, otherwise 0
    std::string_view semantic;     ///< as declared, such as "TEXAUTO"; empty: not bound
    int number = -1;  ///< the sampler's register or the texture coordinate, as written; -1: none
};

/// A macro that conditions and loops of the nodes have asked for.
struct ReportMacro {
    std::string name;
    int value = 0;       ///< the value used
    bool isSet = false;  ///< by the request; otherwise it counted as 0, or its loop did not run
};

/// How much of a report is filled in.
enum class ReportParts {
    Faults,  ///< only the faults, at no cost
    All
};

/// What a host may want to know about a request, in addition to its output.
struct PassReport {
    /// The faults of the nodes that took part, also of those parsed by earlier requests, and of the
    /// request. They are logged as well, those of the nodes when they are parsed.
    std::vector<ReportFault> faults;
    std::vector<std::string> nodes;  ///< those that were merged, in this order
    std::vector<ReportLine> lines;   ///< one for each line of ShaderOutput::code
    // In the order in which they are first written.
    std::vector<ReportDeclare> uniforms;
    std::vector<ReportDeclare> inputs;
    std::vector<ReportDeclare> outputs;
    // In ascending order of the names.
    std::vector<ReportMacro> macros;
    std::vector<std::string> unusedMacros;  ///< set by the request, but never asked for
};

}  // namespace ns_ruke
