// SPDX-License-Identifier: MIT
#include "support/random_graph.h"

#include <algorithm>
#include <iterator>

namespace morl_test {
namespace {

const char* const kTypes[] = {"", "float", "float2", "float3", "float4"};
const char* const kSwizzles[][3] = {
    {}, {"x", "y", "x"}, {"xy", "yx", "xx"}, {"xyz", "zyx", "xxy"}, {"xyzw", "wzyx", "xxyw"}};
const char* const kVaryings[] = {"oFirst", "oSecond", "oThird"};  // with 2, 3 and 4 components
constexpr int kDepth = 2;

}  // namespace

RandomGraph::RandomGraph(unsigned seed) : random(seed)
{
    macros = {{"COUNT", Pick(4)}, {"QUALITY", Pick(3)}, {"FANCY", Pick(2)}};
    AddVertexNode();
    const int count = 1 + Pick(4);
    for (int i = 0; i < count; ++i) {
        AddFragmentNode(i, i + 1 == count);
    }
    for (std::size_t i = fragmentNodes.size(); i > 1; --i) {
        std::swap(fragmentNodes[i - 1],
                  fragmentNodes[static_cast<std::size_t>(Pick(static_cast<int>(i)))]);
    }
}

// std::uniform_int_distribution gives other numbers with other libraries.
int RandomGraph::Pick(int count)
{
    return static_cast<int>(random() % static_cast<unsigned>(count));
}

template <class List>
const auto& RandomGraph::PickFrom(const List& list)
{
    return *std::next(std::begin(list), Pick(static_cast<int>(std::size(list))));
}

std::string RandomGraph::VariableOf(int width)
{
    const Variable& variable = PickFrom(scope);
    if (variable.width < width || variable.width == 1) {
        return width == 1 ? variable.name
                          : std::string(kTypes[width]) + "(" + Join(1, 0, width) + ")";
    }
    if (variable.width == width && Pick(3) > 0) {
        return variable.name;
    }
    return variable.name + "." + kSwizzles[width][variable.width > width ? Pick(2) : Pick(3)];
}

std::string RandomGraph::Join(int width, int depth, int count)
{
    std::string list = Expression(width, depth);
    for (int i = 1; i < count; ++i) {
        list += ", " + Expression(width, depth);
    }
    return list;
}

std::string RandomGraph::Call(int width, int depth)
{
    if (width == 1 && Pick(2) == 0) {
        return Pick(2) == 0 ? "dot(" + Join(2 + Pick(3), depth, 2) + ")"
                            : "length(" + Expression(2 + Pick(3), depth) + ")";
    }
    if (width == 3 && Pick(3) == 0) {
        return std::string(Pick(2) == 0 ? "cross(" : "reflect(") + Join(3, depth, 2) + ")";
    }
    if (width == 4 && hasMap && Pick(2) == 0) {
        return "tex2D(map, " + Expression(2, depth) + ")";
    }
    static const std::pair<const char*, int> functions[] = {
        {"max", 2}, {"min", 2}, {"saturate", 1}, {"clamp", 3}, {"lerp", 3},
        {"abs", 1}, {"sin", 1}, {"cos", 1},      {"tan", 1}};
    const auto& [name, count] = PickFrom(functions);
    return std::string(name) + "(" + Join(width, depth, count) + ")";
}

std::string RandomGraph::Expression(int width, int depth)
{
    const int kind = depth > 0 ? Pick(8) : Pick(2);
    if (kind == 0 && width == 1) {
        static const char* const numbers[] = {"0.5", "1.0", "2.25", "0.125"};
        return PickFrom(numbers);
    }
    if (kind < 3) {
        return VariableOf(width);
    }
    if (kind == 3) {
        return width == 1 ? "(-" + VariableOf(1) + ")"
                          : std::string(kTypes[width]) + "(" + Join(1, depth - 1, width) + ")";
    }
    if (kind < 6) {
        static const char* const operators[] = {" + ", " - ", " * "};
        return "(" + Expression(width, depth - 1) + PickFrom(operators) +
               Expression(width, depth - 1) + ")";
    }
    return Call(width, depth - 1);
}

std::string RandomGraph::Declaration(const char* kind, const std::string& name, int width,
                                     const std::string& end)
{
    scope.push_back({name, width, false});
    return std::string(kind) + kTypes[width] + " " + name + end;
}

std::string RandomGraph::Condition()
{
    static const char* const conditions[] = {"FANCY", "QUALITY > 1", "QUALITY == 0",
                                             "(COUNT < 2) || FANCY"};
    return PickFrom(conditions);
}

/// Statements in braces; what they declare ends with them.
std::string RandomGraph::Body(int depth)
{
    const std::size_t outside = scope.size();
    const std::string statements = Statements(1 + Pick(2), depth);
    scope.resize(outside);
    return "{\n" + statements + "}";
}

std::string RandomGraph::Assignment()
{
    std::vector<Variable> locals;
    std::copy_if(scope.begin(), scope.end(), std::back_inserter(locals),
                 [](const Variable& variable) { return variable.isLocal; });
    if (locals.empty()) {
        return "// nothing to assign\n";
    }
    const Variable& variable = PickFrom(locals);
    static const char* const operators[] = {" = ", " += ", " -= ", " *= "};
    if (variable.width > 1 && Pick(3) == 0) {
        return variable.name + ".y" + PickFrom(operators) + Expression(1, kDepth) + ";\n";
    }
    return variable.name + PickFrom(operators) + Expression(variable.width, kDepth) + ";\n";
}

std::string RandomGraph::Statement(int depth)
{
    const int kind = depth > 0 ? Pick(12) : Pick(6);
    const std::string name = prefix + std::to_string(names);
    if (kind < 3) {
        ++names;
        const int width = 1 + Pick(4);
        const std::string value = Expression(width, kDepth);
        scope.push_back({name, width, true});
        return std::string(kTypes[width]) + " " + name + " = " + value + ";\n";
    }
    if (kind < 5) {
        return Assignment();
    }
    if (kind == 5) {
        return Pick(2) == 0 ? "// a remark\n" : "/* a remark\nof two lines */\n";
    }
    if (kind < 8) {
        const std::string condition = Expression(1, 1) + " < " + Expression(1, 1);
        const std::string body = "if (" + condition + ") " + Body(depth - 1);
        return body + (Pick(2) == 0 ? "\n" : "\nelse " + Body(depth - 1) + "\n");
    }
    if (kind == 8) {
        ++names;
        return "for (int " + name + " = 0; " + name + " < 3; " + name + "++) " + Body(0) + "\n";
    }
    if (kind < 11) {
        const std::size_t outside = scope.size();
        std::string block = "#if " + Condition() + "\n" + Statements(1 + Pick(2), depth - 1);
        scope.resize(outside);
        if (Pick(2) == 0) {
            block += "#else\n" + Statements(1, depth - 1);
            scope.resize(outside);
        }
        return block + "#endif\n";
    }
    return "#for COUNT : 0\nfloat " + name + "_COUNT = " + Expression(1, 1) + ";\n#endfor\n";
}

std::string RandomGraph::Statements(int count, int depth)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += Statement(depth);
        names += 1;
    }
    return text;
}

std::string RandomGraph::Globals()
{
    std::string text = Pick(3) == 0 ? "// a node\n" : "";
    for (int i = Pick(3); i >= 0; --i) {
        text += Declaration("uniform ", "u" + prefix + std::to_string(i), 1 + Pick(4), ";\n");
    }
    if (Pick(2) == 0) {
        text += "#if " + Condition() + "\nuniform float4 " + prefix + "extra;\n#endif\n";
    }
    if (Pick(2) == 0) {
        text += "#for COUNT : 0\nuniform float3 " + prefix + "light_COUNT;\n#endfor\n";
    }
    return text;
}

void RandomGraph::AddVertexNode()
{
    prefix = "v";
    std::string text = Globals() + Declaration("in ", "aPosition", 3, " : POSITION;\n") +
                       Declaration("in ", "aCoord", 2, " : TEXCOORD0;\n") +
                       "out float4 oProjPos : SV_Position;\n";
    std::string end = "oProjPos = float4(aPosition, 1.0);\n";
    for (int i = 0; i < 3; ++i) {
        text += std::string("out ") + kTypes[i + 2] + " " + kVaryings[i] + " : TEXAUTO;\n";
    }
    text += "void main() {\n" + Statements(2 + Pick(4), 2) + end;
    for (int i = 0; i < 3; ++i) {
        text += std::string(kVaryings[i]) + " = " + Expression(i + 2, kDepth) + ";\n";
    }
    nodes.push_back({"vertex", text + "}", {}});
    vertexNodes = {"vertex"};
    scope.clear();
}

void RandomGraph::AddFragmentNode(int index, bool isLast)
{
    prefix = std::string(1, static_cast<char>('a' + index));
    names = 0;
    std::string text = Globals();
    if (index == 0) {
        for (int i = 0; i < 3; ++i) {
            text += Declaration("in ", kVaryings[i], i + 2, " : TEXAUTO;\n");
        }
        hasMap = Pick(2) == 0;
        text += hasMap ? "uniform sampler2D map : SAUTO;\n" : "";
    }
    text += isLast ? "out float4 oColor : COLOR0;\n" : "";
    text += "void main() {\n" + Statements(1 + Pick(6), 2);
    text += isLast ? "oColor = " + Expression(4, kDepth) + ";\n" : "";
    const std::string name = "node_" + prefix;
    const std::vector<std::string> references =
        index == 0 ? std::vector<std::string>() : std::vector<std::string>{nodes.back().name};
    nodes.push_back({name, text + "}", references});
    fragmentNodes.push_back(name);
}

std::string Damaged(const std::string& source, std::mt19937& random)
{
    static const std::string characters = "(){};:=+-*/%.<>!&|#$\n\t ,[]1a@\xe9";
    std::string damaged = source;
    for (std::size_t changes = 1 + random() % 3; changes > 0 && !damaged.empty(); --changes) {
        const std::size_t place = random() % damaged.size();
        const char character = characters[random() % characters.size()];
        switch (random() % 4) {
        case 0:
            damaged.erase(place, 1 + random() % 3);
            break;
        case 1:
            damaged.insert(place, 1, character);
            break;
        case 2:
            damaged[place] = character;
            break;
        default:
            damaged.resize(place);
        }
    }
    return damaged;
}

}  // namespace morl_test
