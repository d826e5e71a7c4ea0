// SPDX-License-Identifier: MIT
#pragma once

#include "support/graph.h"

#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace morl_test {

/// A random graph for one shader: its passes are valid, and mean the same, in every target. The
/// same seed gives the same graph with every compiler.
class RandomGraph {
public:
    explicit RandomGraph(unsigned seed);

    std::vector<NodeSource> nodes;
    std::vector<std::string> vertexNodes;
    std::vector<std::string> fragmentNodes;  ///< in no particular order
    std::unordered_map<std::string, int> macros;

private:
    struct Variable {
        std::string name;
        int width;  ///< the number of components
        bool isLocal;
    };

    int Pick(int count);
    template <class List>
    const auto& PickFrom(const List& list);
    std::string VariableOf(int width);
    std::string Join(int width, int depth, int count);
    std::string Call(int width, int depth);
    std::string Expression(int width, int depth);
    std::string Declaration(const char* kind, const std::string& name, int width,
                            const std::string& end);
    std::string Condition();
    std::string Body(int depth);
    std::string Assignment();
    std::string Statement(int depth);
    std::string Statements(int count, int depth);
    std::string Globals();
    void AddVertexNode();
    void AddFragmentNode(int index, bool isLast);

    std::mt19937 random;
    std::vector<Variable> scope;
    std::string prefix;  ///< of the names that the current node declares
    int names = 0;       ///< how many it has declared
    bool hasMap = false;
};

/// The source after a few random changes of single characters; it may no longer be valid.
std::string Damaged(const std::string& source, std::mt19937& random);

}  // namespace morl_test
