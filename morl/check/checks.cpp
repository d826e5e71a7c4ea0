// SPDX-License-Identifier: MIT
#include "morl/check/checks.h"

#include "morl/check/internal/check_kind.h"
#include "morl/translator/targets.h"

#include <cstddef>
#include <iterator>

namespace ns_ruke {
namespace {

constexpr unsigned kAny = ~0U;

// The order is that of a sentence about a check, which costs each row eight bytes.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct CheckRow {
    CheckKind kind;
    std::string_view name;
    std::string_view group;
    std::string_view text;
    std::string_view cure;
    unsigned traits;
    bool isRefused = false;
};

/// The only list of checks.
constexpr CheckRow kChecks[] = {
    {CheckKind::UndeclaredName, "undeclared-name", "names", "'{}' is not declared here", "", kAny,
     true},
    {CheckKind::UnknownReference, "unknown-reference", "names",
     "no node is called '{}', so this reference does nothing", "", kAny},
    {CheckKind::Redeclared, "redeclared", "names",
     "this declaration of '{}' does not count: an earlier one is different", "make them the same",
     kAny},
    {CheckKind::RepeatedName, "repeated-name", "names", "'{}' is declared twice in the shader",
     "use another name", kAny, true},
    {CheckKind::AssignedUniform, "assigned-uniform", "names",
     "the uniform '{}' cannot be assigned: the engine sets it", "assign a local variable", kAny,
     true},
    {CheckKind::ComponentRange, "component-range", "names",
     "'.{}' names no components of this value", "", kAny, true},
    {CheckKind::RepeatedComponent, "repeated-component", "names",
     "'.{}' assigns one component twice", "each component once", kAny, true},
    {CheckKind::ArgumentCount, "argument-count", "names", "'{}' has the wrong number of arguments",
     "", kAny, true},
    {CheckKind::WholeArray, "whole-array", "names", "the array '{}' is assigned as a whole",
     "assign each element", kAny, true},
    {CheckKind::CopiedName, "copied-name", "names",
     "inputs and outputs are copied to variables, whose names clash because of '{}'",
     "use another name", kAny, true},
    {CheckKind::UnsetMacro, "unset-macro", "macros",
     "the macro '{}' is not set: it counts as 0, and a '#for' over it is left out",
     "set it, to 0 if that is meant", kAny},
    {CheckKind::UnusedMacro, "unused-macro", "macros",
     "the macro '{}' is set, but no node asks for it", "", kAny},
    {CheckKind::UnusedSampler, "unused-sampler", "macros",
     "a register is given for '{}', which is no sampler bound to SAUTO", "", kAny},
    {CheckKind::MacroAsValue, "macro-as-value", "macros",
     "'{}' is a macro: here its name is written, not its value",
     "use it only in '#if', '#for' and parts of names", kAny, true},
    {CheckKind::ConditionOrder, "condition-order", "macros",
     "this condition comes out otherwise than it reads: '&&' and '||' have one priority, and the "
     "digits after a point are a number of their own",
     "put parentheses around each part, and use integers", kAny},
    {CheckKind::BrokenBlock, "broken-block", "lost-code",
     "this block falls apart at the node's line {}, which yields no statement: what is before it "
     "is lost, what follows is always written",
     "remove that line, or write ':;'", kAny},
    {CheckKind::OpenBlock, "open-block", "lost-code",
     "this block is not closed before the '}' in line {}: all of it is lost",
     "add '#endif' or '#endfor'", kAny},
    {CheckKind::StrayDirective, "stray-directive", "lost-code",
     "'{}' is dropped: it belongs to no block", "remove it, or add the block's head", kAny},
    {CheckKind::NoEffect, "no-effect", "lost-code", "this is dropped: it yields no statement",
     "remove it; an empty statement is ':;'", kAny},
    {CheckKind::TornCondition, "torn-condition", "lost-code",
     "the condition of this '#if' ends before this", "'==' compares, and no ';' follows", kAny},
    {CheckKind::LostDeclaration, "lost-declaration", "lost-code",
     "inside of 'main' this word is dropped, and a local variable is left",
     "put the declaration outside of 'main'", kAny},
    {CheckKind::OpenComment, "open-comment", "lost-code",
     "this comment has no end, so all that follows is lost", "add '*/'", kAny},
    {CheckKind::While, "while", "lost-code",
     "there is no 'while': the word and its condition are dropped, and what follows runs once",
     "use 'for'", kAny},
    {CheckKind::BlockInLoop, "block-in-loop", "lost-code",
     "a macro block or macro assignment directly inside a 'for' is dropped",
     "put it around the 'for', or into an 'if' inside it", kAny},
    {CheckKind::BlockInDeclareLoop, "block-in-declare-loop", "lost-code",
     "a macro block inside a '#for' around declarations becomes a declaration without a name",
     "put the '#if' outside, with a '#for' in each branch", kAny, true},
    {CheckKind::SecondMain, "second-main", "lost-code",
     "this 'main' is dropped: line {} has another one", "put all statements into one", kAny},
    {CheckKind::MainInBlock, "main-in-block", "lost-code",
     "a 'main' inside a macro block is dropped", "put the block inside 'main'", kAny},
    {CheckKind::UnusedFunction, "unused-function", "lost-code",
     "the function '{}' is not written: only 'void main()' is", "put shared code into a node",
     kAny},
    {CheckKind::MacroStep, "macro-step", "lost-code",
     "this sets nothing: only '$NAME = VALUE;' does", "'$x = $x + 1;'", kAny},
    {CheckKind::LostArraySize, "lost-array-size", "lost-code",
     "the array size of '{}' is dropped: only uniforms and local variables are arrays",
     "declare one name for each element", kAny},
    {CheckKind::UnreadChange, "unread-change", "values", "nothing after this reads '{}'", "", kAny},
    {CheckKind::UnassignedRead, "unassigned-read", "values",
     "'{}' is read here, and may not have been assigned before", "assign it where it is declared",
     kAny},
    {CheckKind::PartialOutput, "partial-output", "values",
     "the output '{}' is not always assigned as a whole", "assign it before any 'if'", kAny},
    {CheckKind::OverwrittenOutput, "overwritten-output", "values",
     "this replaces the value of the output '{}'", "", kAny},
    {CheckKind::HiddenUniform, "hidden-uniform", "values",
     "the local variable '{}' hides the uniform of this name", "use another name", kAny},
    {CheckKind::IntDivision, "int-division", "values",
     "integers are divided, and the fraction is lost", "write '1.0 / 2.0', or 'float(i) / 2.0'",
     kAny},
    {CheckKind::PostfixValue, "postfix-value", "values",
     "'++' and '--' are written before their operand, so this is the value after the step",
     "a statement of its own for the step", kAny},
    {CheckKind::UnmatchedInput, "unmatched-input", "stages",
     "no output of the vertex pass is called '{}'", "", kAny, true},
    {CheckKind::VaryingType, "varying-type", "stages", "'{}' has another type in the vertex pass",
     "declare it the same in both", kAny, true},
    {CheckKind::VaryingPlace, "varying-place", "stages",
     "'{}' is not where the vertex pass has it: Direct3D 10 matches by position as well",
     "declare all varyings of the vertex pass up to the last one that is read", kTextureObjects},
    {CheckKind::VaryingSemantic, "varying-semantic", "stages",
     "'{}' has another semantic in the vertex pass", "bind both to TEXAUTO", kHlsl},
    {CheckKind::MissingSemantic, "missing-semantic", "stages",
     "'{}' has no semantic, and HLSL matches by them", "TEXAUTO for what goes from pass to pass",
     kHlsl, true},
    {CheckKind::UnassignedTexcoord, "unassigned-texcoord", "stages",
     "'{}' has no texture coordinate: none was assigned by a vertex pass",
     "compile the vertex pass first, and pass on the semantics that it assigns", kHlsl, true},
    {CheckKind::SharedRegister, "shared-register", "stages",
     "the sampler '{}' has the register of another one", "give each of them one of its own", kHlsl},
    {CheckKind::SamplerRegister, "sampler-register", "stages",
     "the register of the sampler '{}' is out of range", "", kHlsl},
    {CheckKind::SharedSemantic, "shared-semantic", "stages", "'{}' has the semantic of another one",
     "give each of them one of its own", kAny},
    {CheckKind::MatrixVarying, "matrix-varying", "stages",
     "the matrix '{}' takes the place of its semantic and of the next ones",
     "a vector for each row", kHlsl},
    {CheckKind::WrongStage, "wrong-stage", "stages",
     "'{}' belongs to the other stage: are the nodes of both passes exchanged?", "", kAny, true},
    {CheckKind::NoPosition, "no-position", "stages",
     "no output of this vertex pass is bound to SV_Position, so nothing is drawn",
     "add the node that declares it", kAny},
    {CheckKind::NoColor, "no-color", "stages",
     "this fragment pass has no output, so it draws nothing", "add the node that declares it",
     kAny},
    {CheckKind::NoFirstColor, "no-first-color", "stages",
     "nothing goes to the first render target: '{}' is for a further one",
     "bind the first output to COLOR0", kAny},
    {CheckKind::UnwrittenOutput, "unwritten-output", "stages", "the output '{}' is never assigned",
     "assign it, or remove it", kAny},
    {CheckKind::PositionInput, "position-input", "stages",
     "GLSL ES does not hand on '{}': it is the position itself", "another output for its value",
     kGlslEs, true},
    {CheckKind::MulOperand, "mul-operand", "targets",
     "'mul' becomes '*' in GLSL, which takes only a part of what is meant here",
     "a local variable, or parentheses", kGlsl},
    {CheckKind::MulMember, "mul-member", "targets",
     "'mul' becomes '*' in GLSL, and the member is taken of its second operand alone",
     "a local variable", kGlsl, true},
    {CheckKind::MatrixProduct, "matrix-product", "targets",
     "'*' multiplies a matrix by component in HLSL", "'mul'", kHlsl},
    {CheckKind::VectorTimesMatrix, "vector-times-matrix", "targets",
     "'*' of a vector and a matrix: only GLSL multiplies them so", "'mul'", kHlsl, true},
    {CheckKind::MatrixIndex, "matrix-index", "targets", "'m[i]' is a row in HLSL, a column in GLSL",
     "'mul' with a unit vector", kGlsl},
    {CheckKind::MatrixConstructor, "matrix-constructor", "targets",
     "the arguments of '{}' are rows in HLSL, columns in GLSL", "sums of products", kGlsl},
    {CheckKind::MatrixCast, "matrix-cast", "targets",
     "Direct3D and strict GLSL ES do not make '{}' of a larger matrix",
     "a vector with 'w' 0, and the larger matrix", kHlsl | kGlslEs, true},
    {CheckKind::MatrixHelper, "matrix-helper", "targets",
     "'glsl' has no '{}': the name of HLSL is written", "'dot' with each vector", kDesktopGlsl,
     true},
    {CheckKind::MatrixHelperOperand, "matrix-helper-operand", "targets",
     "'{}' takes the components of the last part of an argument alone", "a local variable", kHlsl,
     true},
    {CheckKind::MatrixHelperUse, "matrix-helper-use", "targets",
     "HLSL writes a semicolon after '{}'", "a local variable", kHlsl, true},
    {CheckKind::MatrixShape, "matrix-shape", "targets",
     "'glsl' exchanges rows and columns of a '{}', and 'glsles' has none",
     "'float4x4', or a vector per column", kGlsl, true},
    {CheckKind::IntForFloat, "int-for-float", "targets",
     "'{}' is an integer where a float is needed, and GLSL ES converts nothing",
     "'1.0' for '1', 'float(i)' for 'i'", kGlslEs, true},
    {CheckKind::FloatForInt, "float-for-int", "targets",
     "an integer is given a float, and GLSL converts nothing", "'int(k)' for 'k'", kGlsl, true},
    {CheckKind::WidthMismatch, "width-mismatch", "targets",
     "{}: GLSL converts no vectors, and HLSL only cuts them",
     "a swizzle such as '.xyz', or a constructor such as 'float3(s, s, s)'", kGlsl, true},
    {CheckKind::ScalarConstructor, "scalar-constructor", "targets",
     "'{}' of one other value: Direct3D wants all components", "'float4(s, s, s, s)', or a swizzle",
     kHlsl, true},
    {CheckKind::ConstructorArguments, "constructor-arguments", "targets",
     "'{}' gets the wrong number of components", "one value for each", kAny, true},
    {CheckKind::VectorCompare, "vector-compare", "targets",
     "'if' wants a number: HLSL compares vectors by component", "'dot' of the difference", kHlsl,
     true},
    {CheckKind::ConditionType, "condition-type", "targets",
     "the condition is a number, and GLSL wants a comparison", "'if (k > 0.0)'", kGlsl, true},
    {CheckKind::ChainedCompare, "chained-compare", "targets",
     "this compares the outcome of a comparison", "'a < b && b < c'", kAny, true},
    {CheckKind::ScalarMember, "scalar-member", "targets",
     "'.{}' of a number: GLSL has components of vectors only", "'float3(k, k, k)'", kGlsl, true},
    {CheckKind::ComponentNames, "component-names", "targets",
     "'.{}': HLSL calls components 'xyzw' or 'rgba'", "'.xy'", kHlsl, true},
    {CheckKind::SamplerKind, "sampler-kind", "targets", "'{}' does not sample this", "", kAny,
     true},
    {CheckKind::IntVector, "int-vector", "targets",
     "'glsl' and 'glsles' keep the name '{}' of HLSL", "float vectors", kGlsl, true},
    {CheckKind::DoubleMinus, "double-minus", "targets", "two minus signs in a row become '--'",
     "parentheses, as in 'a - (-b)'", kAny, true},
    {CheckKind::Modulo, "modulo", "targets", "'%' vanishes from the shader", "arithmetic", kAny,
     true},
    {CheckKind::Cotangent, "cotangent", "targets", "no target has 'cot'", "'cos(a) / sin(a)'", kAny,
     true},
    {CheckKind::ProjectedSampling, "projected-sampling", "targets",
     "'hlsl10' does not divide in 'tex2Dproj', and GLSL 1.50 has no such name",
     "divide, then 'tex2D'", kTextureObjects | kDesktopGlsl},
    {CheckKind::SamplerType, "sampler-type", "targets", "only 'hlsl10' has '{}'", "'sampler2D'",
     kPlainSamplers, true},
    {CheckKind::UnboundSampler, "unbound-sampler", "targets",
     "'hlsl10' writes no sampler state for '{}'", "': SAUTO'", kTextureObjects, true},
    {CheckKind::ShadowMapColor, "shadow-map-color", "targets",
     "'hlsl10' compares in '{}', as in every map whose name begins with 'shadowMap'",
     "'#if', as the node 'shadow_map', or another name", kTextureObjects, true},
    {CheckKind::ShadowMapCompare, "shadow-map-compare", "targets",
     "only 'hlsl10' compares in '{}'; GLSL takes a bias", "'#if', as the node 'shadow_map'",
     kPlainSamplers, true},
    {CheckKind::SecondColor, "second-color", "targets",
     "GLSL ES does not declare the output '{}': it has one", "one output", kGlslEs, true},
    {CheckKind::LoopBound, "loop-bound", "targets",
     "this loop does not end at a constant, which WebGL and OpenGL ES 2 require",
     "'#for', or an 'if' inside", kGlslEs},
    {CheckKind::LoopForm, "loop-form", "targets", "WebGL and OpenGL ES 2 do not take this 'for'",
     "", kGlslEs},
    {CheckKind::ComputedIndex, "computed-index", "targets",
     "this index of '{}' is computed, which WebGL and OpenGL ES 2 refuse in a fragment pass",
     "a loop's variable as the index, or 'if'", kGlslEs},
    {CheckKind::ReservedName, "reserved-name", "targets", "'{}' is reserved in this target",
     "another name", kAny, true},
    {CheckKind::BoneIndex, "bone-index", "targets",
     "'{}' is unsigned in 'hlsl10', and floats elsewhere", "'int(indices.x)'",
     kTextureObjects | kGlsl, true},
    {CheckKind::VertexTexture, "vertex-texture", "targets",
     "no vertex stage of Direct3D takes '{}'", "the fragment pass", kHlsl, true},
    {CheckKind::ColorInput, "color-input", "targets",
     "'hlsl10' makes '{}' a render target, which only outputs of a fragment pass are",
     "': COLOR', or ': TEXAUTO' from pass to pass", kTextureObjects, true},
    {CheckKind::ColorOutput, "color-output", "targets",
     "'hlsl10' does not make '{}' a render target", "': COLOR0'", kTextureObjects, true},
    {CheckKind::MixedTexcoords, "mixed-texcoords", "targets",
     "'{}' may share its texture coordinate with an output bound to TEXAUTO",
     "bind all of them to TEXAUTO", kHlsl},
    {CheckKind::ManySamplers, "many-samplers", "limits", "'{}' is one sampler too many", "", kAny},
    {CheckKind::ManyUniforms, "many-uniforms", "limits", "'{}' is one uniform too many", "", kAny},
    {CheckKind::ManyAttributes, "many-attributes", "limits", "'{}' is one vertex input too many",
     "", kAny},
    {CheckKind::ManyVaryings, "many-varyings", "limits", "'{}' is one varying too many", "", kAny},
};

constexpr bool AreInOrder()
{
    for (std::size_t i = 0; i < std::size(kChecks); ++i) {
        if (kChecks[i].kind != static_cast<CheckKind>(i)) {
            return false;
        }
    }
    return std::size(kChecks) == static_cast<std::size_t>(CheckKind::Count);
}
static_assert(AreInOrder(), "one row for each kind, in their order");

/// The names of the targets that a check concerns; empty: all of them.
std::string TargetsWith(unsigned traits)
{
    std::string names;
    bool areAll = true;
    for (const std::string& target : MorlTargets()) {
        const bool isConcerned = FindTargetInfo(target)->Has(traits);
        names += isConcerned ? (names.empty() ? "" : " ") + target : "";
        areAll = areAll && isConcerned;
    }
    return areAll ? std::string() : names;
}

std::vector<CheckInfo> MakeChecks()
{
    std::vector<CheckInfo> checks;
    for (const CheckRow& row : kChecks) {
        checks.push_back({row.name, row.group, row.text, row.cure, TargetsWith(row.traits),
                          row.traits, row.isRefused});
    }
    return checks;
}

}  // namespace

const std::vector<CheckInfo>& MorlChecks()
{
    static const std::vector<CheckInfo> checks = MakeChecks();
    return checks;
}

const CheckInfo& InfoOf(CheckKind kind)
{
    return MorlChecks()[static_cast<std::size_t>(kind)];
}

std::string WarningText(const CheckInfo& info, std::string_view name, std::string_view hint)
{
    constexpr std::string_view kPlace = "{}";
    std::string text;
    text.reserve(info.text.size() + 2 * name.size() + info.cure.size() + hint.size());
    std::string_view rest = info.text;
    for (std::size_t found = rest.find(kPlace); found != std::string_view::npos;
         found = rest.find(kPlace)) {
        text.append(rest.substr(0, found)).append(name);
        rest.remove_prefix(found + kPlace.size());
    }
    text.append(rest);
    if (!info.cure.empty()) {
        text.append(info.group == "targets" ? "; instead: " : "; ").append(info.cure);
    }
    return text.append(hint);
}

}  // namespace ns_ruke
