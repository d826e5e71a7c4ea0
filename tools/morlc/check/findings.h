// SPDX-License-Identifier: MIT
#pragma once

#include "report/diagnostic.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace morlc {

/// What a shader is in which something was found.
struct FindingContext {
    std::string target;
    std::string shader;   ///< of the manifest; empty: none
    std::string variant;  ///< of the shader
};

/// Something that is wrong, at its place.
struct Finding {
    Severity severity = Severity::Error;
    std::string check;  ///< of the library; empty: a fault, or a verdict
    std::string node;
    int line = 0;
    int column = 0;
    std::string reference;  ///< of the node, if the text is about one; empty: none
    std::string text;
    std::string hint;  ///< empty: none
    bool isVerdict = false;
    std::string generated;  ///< the line of the text that the verdict is about
};

/// Collects findings of many shaders, each fault once, with the targets in which it was found.
class Findings {
public:
    void Add(const Finding& finding, const FindingContext& context);

    /// The findings in the order in which they were first found. A verdict on a
    /// line that a warning is about confirms the warning, which becomes an error.
    /// @param allTargets how many targets were checked; a finding in all of them does not list them
    std::vector<Diagnostic> Tell(std::size_t allTargets) const;

    /// Whether compilers refuse what a check finds.
    static bool IsRefused(const std::string& check);

private:
    struct Entry {
        Finding finding;
        FindingContext first;
        std::set<std::string> targets;
    };
    using Key = std::tuple<std::string, std::string, std::string, int, int, std::string>;
    using Line = std::pair<std::string, int>;

    bool ConfirmsAWarning(const Entry& verdict) const;

    std::vector<Entry> entries;
    std::map<Key, std::size_t> byKey;
    std::set<Line> refused;  ///< the lines of warnings of what compilers refuse
};

}  // namespace morlc
