// SPDX-License-Identifier: MIT
#pragma once

#include "nodes/node_origins.h"
#include "report/diagnostic.h"

#include <morl/morl.h>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace morlc {

/// Shows problems on standard error and, for as long as it lives, the compiler's log as well.
/// Nothing is shown twice: a node that several passes use is parsed several times, but its faults
/// need to be fixed only once.
class Diagnostics {
public:
    /// @param colour when to colour text: "auto" (on a terminal), "always" or "never"
    /// @param showParseLines also show the information lines about each parse
    Diagnostics(DiagnosticFormat newFormat, const std::string& colour, bool showParseLines);
    Diagnostics(const Diagnostics&) = delete;
    Diagnostics& operator=(const Diagnostics&) = delete;
    ~Diagnostics();

    /// Sets where the nodes are from.
    void SetNodeOrigins(std::shared_ptr<const NodeOrigins> origins);

    /// Makes errors of all warnings that are reported from now on.
    void SetWarningsAsErrors(bool areErrors) { warningsAreErrors = areErrors; }

    /// Shows all messages of a line; otherwise only the first one, with the number of the others.
    void SetShowAll(bool showsAll) { showAll = showsAll; }

    /// Reports a node file that cannot be read, as the compiler would.
    /// @param shownAs the file as the caller would name it.
    void ReportMissingFile(const std::string& shownAs, const std::string& path);

    /// Shows a diagnostic. If a node is unknown, suggests one with a similar name.
    void Report(Diagnostic diagnostic);

    /// Reports an error of the tool itself, without a location.
    void Error(const std::string& text);

    /// With DiagnosticFormat::Collected, what was reported.
    std::vector<Diagnostic> TakeCollected();

    std::size_t ErrorCount() const { return errors; }
    std::size_t WarningCount() const { return warnings; }

private:
    Diagnostic Describe(const ns_ruke::LogLine& log) const;
    void Deliver(Diagnostic diagnostic);
    void WritePending();
    std::string Hint(const std::string& unknownNode);

    DiagnosticFormat format;
    bool showParses;
    bool isColoured;
    bool warningsAreErrors = false;
    bool showAll = false;
    std::optional<Diagnostic> pending;  ///< shown when the next one is on another line
    std::vector<Diagnostic> collected;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::shared_ptr<const NodeOrigins> origins;  ///< null: nothing is known
    std::unordered_set<std::string> shown;       ///< by identity
    std::size_t hints = 0;                       ///< how many have been given
    ns_ruke::LogSink previous;
};

/// While it lives, adds source lines to what one compiler logs on this thread.
class LogCollection {
public:
    enum class Mode {
        ShowAll,  ///< show everything
        Show,     ///< show all but the faults of nodes: reports tell these better
        Keep      ///< likewise, but collect them here
    };

    LogCollection(const ns_ruke::MorlCompiler& owner, Mode newMode);
    LogCollection(const LogCollection&) = delete;
    LogCollection& operator=(const LogCollection&) = delete;
    ~LogCollection();

    /// A fault of a report.
    Diagnostic Describe(const ns_ruke::ReportFault& fault);

    std::vector<Diagnostic> kept;

private:
    friend class Diagnostics;

    void AddExcerpt(Diagnostic& diagnostic);

    const ns_ruke::MorlCompiler& compiler;
    Mode mode;
    // The source of the node that logged last: a parse reports all its faults in a row.
    std::string lastNode;
    std::optional<SourceText> lastSource;
};

}  // namespace morlc
