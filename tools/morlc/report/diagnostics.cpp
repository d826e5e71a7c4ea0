// SPDX-License-Identifier: MIT
#include "report/diagnostics.h"

#include "platform.h"
#include "text.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace morlc {
namespace {

namespace messages = ns_ruke::messages;

using ns_ruke::LogLevel;
using ns_ruke::LogLine;
using ns_ruke::TamberLogSystem;

/// The collection in force on this thread, or null.
thread_local LogCollection* currentCollection = nullptr;

bool StartsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

// Users who do not want colour can say so in the environment, too.
bool WantsColour(const std::string& when)
{
    const char* const noColour = std::getenv("NO_COLOR");
    const bool isRefused = noColour != nullptr && *noColour != '\0';
    return when == "always" || (when == "auto" && !isRefused && HasColourTerminal());
}

/// The name that a message reports as an unknown node; empty for other messages.
std::string UnknownNode(const std::string& text)
{
    constexpr std::string_view kStart = messages::kUnknownNode;
    return StartsWith(text, kStart) ? text.substr(kStart.size()) : "";
}

}  // namespace

Diagnostics::Diagnostics(DiagnosticFormat newFormat, const std::string& colour, bool showParseLines)
    : format(newFormat), showParses(showParseLines), isColoured(WantsColour(colour))
{
    previous = TamberLogSystem::SetSink(
        [this](LogLevel level, const std::string& /*category*/, const std::string& message) {
            const LogLine log(level, message);
            if (showParses || !log.IsParseMark()) {
                Deliver(Describe(log));
            }
        });
}

Diagnostics::~Diagnostics()
{
    TamberLogSystem::SetSink(std::move(previous));
    WritePending();
}

void Diagnostics::SetNodeOrigins(std::shared_ptr<const NodeOrigins> newOrigins)
{
    origins = std::move(newOrigins);
}

void Diagnostics::ReportMissingFile(const std::string& shownAs, const std::string& path)
{
    Report(ErrorAt({shownAs}, messages::kFileNotFound + path + " (a file without nodes holds [])"));
}

void Diagnostics::Report(Diagnostic diagnostic)
{
    if (!diagnostic.node.empty() && origins) {
        ns_ruke::Excerpt excerpt = std::move(diagnostic.place.excerpt);
        diagnostic.place = origins->OnDisk(diagnostic.node, diagnostic.nodePlace);
        diagnostic.place.excerpt = std::move(excerpt);
        Place reference = origins->ReferenceOnDisk(diagnostic.node, diagnostic.reference);
        if (reference.line > 0) {
            diagnostic.place = std::move(reference);
        }
    }
    if (!shown.insert(Identity(diagnostic)).second) {
        return;
    }
    if (warningsAreErrors && diagnostic.severity == Severity::Warning) {
        diagnostic.severity = Severity::Error;
    }
    diagnostic.text += Hint(diagnostic.unknownNode);
    errors += diagnostic.IsError() ? 1 : 0;
    warnings += diagnostic.severity == Severity::Warning ? 1 : 0;
    const bool mayHaveHint =
        diagnostic.check.empty() && diagnostic.IsError() && !diagnostic.node.empty();
    if (mayHaveHint && diagnostic.hint.empty()) {
        diagnostic.hint = ns_ruke::HintFor(diagnostic.place.excerpt, diagnostic.text);
    }
    const bool isOnSameLine = pending && diagnostic.IsError() && pending->IsError() &&
                              !diagnostic.node.empty() && pending->node == diagnostic.node &&
                              pending->nodePlace.line == diagnostic.nodePlace.line;
    if (isOnSameLine && !showAll && format == DiagnosticFormat::Text) {
        ++pending->more;
        return;
    }
    WritePending();
    pending = std::move(diagnostic);
}

void Diagnostics::WritePending()
{
    if (pending && format == DiagnosticFormat::Collected) {
        collected.push_back(std::move(*pending));
        pending.reset();
    } else if (pending) {
        const std::string line = format == DiagnosticFormat::Json
                                     ? FormatJson(*pending)
                                     : FormatText(*pending, isColoured);
        std::fwrite(line.data(), 1, line.size(), stderr);
        pending.reset();
    }
}

std::vector<Diagnostic> Diagnostics::TakeCollected()
{
    WritePending();
    return std::move(collected);
}

void Diagnostics::Error(const std::string& text)
{
    Report(ErrorAt({}, text));
}

Diagnostic Diagnostics::Describe(const LogLine& log) const
{
    Diagnostic diagnostic;
    diagnostic.severity = log.IsError() ? Severity::Error : Severity::Info;
    diagnostic.node = log.node;
    diagnostic.nodePlace = {log.line, log.column};
    diagnostic.unknownNode = UnknownNode(log.text);
    diagnostic.text = log.text;
    return diagnostic;
}

// Runs on the thread that logs; the log lets one line through at a time.
void Diagnostics::Deliver(Diagnostic diagnostic)
{
    if (currentCollection == nullptr) {
        Report(std::move(diagnostic));
        return;
    }
    const bool isOfNode = diagnostic.IsError() && diagnostic.nodePlace.line > 0;
    if (isOfNode && currentCollection->mode != LogCollection::Mode::ShowAll) {
        return;
    }
    currentCollection->AddExcerpt(diagnostic);
    if (currentCollection->mode != LogCollection::Mode::Keep) {
        Report(std::move(diagnostic));
    } else {
        currentCollection->kept.push_back(std::move(diagnostic));
    }
}

std::string Diagnostics::Hint(const std::string& unknownNode)
{
    // Comparing with all names takes time, and nobody reads hundreds of hints.
    constexpr std::size_t kMaxHints = 20;
    if (unknownNode.empty() || !origins || hints >= kMaxHints) {
        return {};
    }
    ++hints;
    const std::string suggestion = Suggestion(origins->Names(), unknownNode);
    const bool isList = suggestion.empty() && unknownNode.find(',') != std::string::npos;
    return isList ? " (in a manifest, each node is a string of its own)" : suggestion;
}

LogCollection::LogCollection(const ns_ruke::MorlCompiler& owner, Mode newMode)
    : compiler(owner), mode(newMode)
{
    currentCollection = this;
}

Diagnostic LogCollection::Describe(const ns_ruke::ReportFault& fault)
{
    Diagnostic diagnostic;
    diagnostic.node = fault.node;
    diagnostic.nodePlace = {fault.line, fault.column};
    diagnostic.text = fault.text;
    diagnostic.hint = fault.hint;
    AddExcerpt(diagnostic);
    return diagnostic;
}

void LogCollection::AddExcerpt(Diagnostic& diagnostic)
{
    const ns_ruke::TextPlace& place = diagnostic.nodePlace;
    if (place.line == 0) {
        return;
    }
    if (diagnostic.node != lastNode || !lastSource) {
        const ns_ruke::MorlNode* const node = compiler.FindNode(diagnostic.node);
        lastNode = diagnostic.node;
        lastSource.emplace("", node != nullptr ? node->GetContent() : "");
    }
    diagnostic.place.excerpt = lastSource->At(place.line, place.column).excerpt;
}

LogCollection::~LogCollection()
{
    currentCollection = nullptr;
}

}  // namespace morlc
