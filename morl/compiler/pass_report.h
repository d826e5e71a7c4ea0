// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/report_fault.h"
#include "morl/core/request_limits.h"
#include "morl/parser/semantic_kind.h"

#include <cstdint>
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
    bool isRefused = false;  ///< whether compilers refuse the text because of it
};

/// What a line of a written shader was made from.
struct ReportLine {
    int node = -1;  ///< an index into PassReport::nodes; -1: from no node, such as the header
    int line = 0;   ///< 1-based, in the node's content; 0 without a node
};

/// What a declaration consists of. The numbers are those of the C interface.
enum class DeclareType : std::uint8_t {
    Unknown = 0,  ///< `auto` that no target can write
    Float = 1,
    Int = 2,
    BoneIndex = 3,  ///< `auto` bound to BLENDINDICES: integers in hlsl10, floats in other targets
    Sampler1D = 4,
    Sampler1DArray = 5,
    Sampler2D = 6,
    Sampler2DArray = 7,
    Sampler3D = 8,
    Sampler3DArray = 9,
    SamplerCube = 10,
};

constexpr bool IsSampler(DeclareType type)
{
    return type >= DeclareType::Sampler1D;
}

/// A uniform, an input or an output of a pass. The views are of texts of the library.
struct ReportDeclare {
    std::string name;
    int node = -1;                 ///< the node that declares it: an index into PassReport::nodes
    int line = 0;                  ///< 1-based, in the node's content
    int column = 0;                ///< 1-based, in bytes
    std::string_view type;         ///< as declared, such as "float4" or "auto"
    std::string_view writtenType;  ///< as the target spells it
    std::string arraySize;         ///< as written; empty: no array
    int elements = 0;  ///< the array size, with the values of macros; 0: no array, or none known
    std::string_view semantic;  ///< as declared, such as "TEXAUTO"; empty: not bound
    /// The sampler's register or the texture coordinate, as written, or the render target; -1:
    /// none.
    int number = -1;
    DeclareType baseType = DeclareType::Unknown;
    int rows = 0;     ///< of a vector or matrix; 1: a number; 0: a sampler, or unknown
    int columns = 0;  ///< of a matrix; 1: a vector or a number; likewise 0
    int bytes = 0;    ///< of all elements, closely packed; 0 if any of these is 0
    /// Of a uniform in hlsl10: where its values are in the pass's constant buffer, in bytes. -1: in
    /// none, or the size of an array before it is not known.
    int offset = -1;
    SemanticKind semanticKind = SemanticKind::None;
    int semanticIndex = 0;  ///< such as 1 of "COLOR1"; -1: the target writes none
    bool isUsed = false;    ///< `main` reads or assigns it
    /// Further nodes that declare it: indexes into PassReport::nodes, ascending. This declaration
    /// is the one that counts.
    std::vector<int> repeatedBy;
};

/// Whether an output of the vertex pass or an input of the fragment pass goes from one to the
/// other. The position does not; a declaration without a name is what is left of a lost macro
/// block.
inline bool IsVarying(const ReportDeclare& declare)
{
    return declare.semanticKind != SemanticKind::ScreenPosition && !declare.name.empty();
}

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
    RequestEnd end = RequestEnd::Written;  ///< how the request has ended
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
    /// The size of the constant buffer for the uniforms that are not samplers, a multiple of 16; 0:
    /// there is none, or not all sizes are known.
    int constantBytes = 0;
};

}  // namespace ns_ruke
