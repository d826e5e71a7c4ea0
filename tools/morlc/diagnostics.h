// SPDX-License-Identifier: MIT
#pragma once

#include <morl/morl.h>
#include <string>

namespace morlc {

/// Routes the compiler's log to standard error for as long as it lives, one line per message:
/// "node NAME:LINE:COLUMN: error: TEXT", or "morlc: error: TEXT" where no node is concerned.
class Diagnostics {
public:
    /// @param showParseLines also print the information lines about each parse.
    explicit Diagnostics(bool showParseLines);
    Diagnostics(const Diagnostics&) = delete;
    Diagnostics& operator=(const Diagnostics&) = delete;
    ~Diagnostics();

    /// The nodes among which a name that is unknown is looked for, to offer the nearest one.
    void SetCompiler(const ns_ruke::MorlCompiler* newCompiler);

    /// Reports an error of the tool itself.
    void Error(const std::string& text);

    bool HasErrors() const { return hasErrors; }

private:
    void Print(const ns_ruke::LogLine& log);
    std::string Hint(const std::string& text) const;

    bool showParses;
    bool hasErrors = false;
    const ns_ruke::MorlCompiler* compiler = nullptr;
    ns_ruke::LogSink previous;
};

}  // namespace morlc
