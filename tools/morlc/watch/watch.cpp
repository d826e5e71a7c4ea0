// SPDX-License-Identifier: MIT
#include "watch/watch.h"

#include "build/build.h"
#include "build/manifest.h"
#include "check/check.h"
#include "json_file.h"
#include "nodes/node_files.h"
#include "nodes/source_files.h"
#include "output_file.h"
#include "path.h"
#include "report/diagnostics.h"
#include "watch/file_times.h"

#include <morl/morl.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <iomanip>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <thread>
#include <utility>

namespace morlc {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kRoundVersion = 1;  ///< of the JSON object of a round

/// How often files are looked at.
constexpr milliseconds kPoll(100);

/// A change has settled when nothing more has happened for so long.
constexpr milliseconds kSettle(50);

/// For so long, a file with a fault may be one that is still being written.
constexpr milliseconds kPatience(150);
/// What is written again and again is read all the same.
constexpr milliseconds kMostWait{2000};

volatile std::sig_atomic_t isEnding = 0;

/// A second signal ends the process at once.
extern "C" void End(int signal)
{
    isEnding = 1;
    std::signal(signal, SIG_DFL);
}

/// Something by name, as a text that changes when it does.
using Texts = std::map<std::string, std::string>;

/// What the inputs hold.
struct Inputs {
    Texts nodes;
    Texts shaders;                                         ///< of the manifest
    std::map<std::string, std::set<std::string>> nodesOf;  ///< by shader
};

/// The names whose texts are not the same in both.
std::set<std::string> Different(const Texts& one, const Texts& other)
{
    std::set<std::string> names;
    for (const auto* texts : {&one, &other}) {
        const Texts& others = texts == &one ? other : one;
        for (const auto& [name, text] : *texts) {
            const auto found = others.find(name);
            if (found == others.end() || found->second != text) {
                names.insert(name);
            }
        }
    }
    return names;
}

Json::Value ToJson(const std::vector<std::string>& texts)
{
    Json::Value list(Json::arrayValue);
    for (const std::string& text : texts) {
        list.append(text);
    }
    return list;
}

/// What a round has done.
struct Round {
    std::vector<std::string> changed;  ///< files, as the caller would write them
    std::vector<std::string> shaders;
    bool isWhole = false;  ///< everything was done; `shaders` is empty
    BuildResult built;
};

class Watching {
public:
    explicit Watching(const Options& newOptions)
        : options(newOptions),
          isBuild(newOptions.command == Command::Build),
          manifestFile(isBuild ? newOptions.build.manifest : newOptions.check.manifest),
          prefix(EnterDirectory(newOptions.common.directory))
    {
        RequireNodeFolder(prefix);
    }

    ExitStatus Run()
    {
        std::signal(SIGINT, End);
        std::signal(SIGTERM, End);
        FileTimes times = Times();
        Do({});
        while (isEnding == 0) {
            std::this_thread::sleep_for(kPoll);
            FileTimes now = Times();
            if (now == times || isEnding != 0) {
                continue;
            }
            now = Settled(std::move(now));
            std::vector<std::string> changed = now.ChangedSince(times);
            times = std::move(now);
            for (std::string& file : changed) {
                file = AsGiven(prefix, ToPath(file));
            }
            Do(changed);
        }
        return kSuccess;
    }

private:
    FileTimes Times() const
    {
        std::vector<std::string> files;
        if (!manifestFile.empty()) {
            files.push_back(manifestFile);
        }
        for (const char* nodeFile : ns_ruke::kNodeFiles) {
            files.emplace_back(nodeFile);
            try {
                const std::vector<std::string> sources = ListSources(nodeFile);
                files.insert(files.end(), sources.begin(), sources.end());
            } catch (const std::exception&) {
                // The folder is gone, or will be reported when the nodes are read.
            }
        }
        return FileTimes(files);
    }

    /// Waits until nothing changes any more, and a file with a fault is not just half written.
    FileTimes Settled(FileTimes times) const
    {
        milliseconds wait = kSettle;
        const Clock::time_point start = Clock::now();
        while (isEnding == 0 && Clock::now() - start < kMostWait) {
            std::this_thread::sleep_for(wait);
            FileTimes now = Times();
            if (now == times && (wait == kPatience || IsReadable())) {
                break;
            }
            wait = now == times ? kPatience : kSettle;
            times = std::move(now);
        }
        return times;
    }

    bool IsReadable() const
    {
        Diagnostics quiet(DiagnosticFormat::Collected, "never", false);
        try {
            return Read(quiet).has_value();
        } catch (const std::exception&) {
            return false;
        }
    }

    /// What the inputs hold; nothing if they have faults.
    std::optional<Inputs> Read(Diagnostics& diagnostics) const
    {
        const LoadedNodes loaded = LoadNodes(prefix, diagnostics);
        if (!loaded.compiler) {
            return std::nullopt;
        }
        Inputs inputs;
        for (const std::string& name : loaded.compiler->GetNodeNames()) {
            const ns_ruke::MorlNode& node = *loaded.compiler->FindNode(name);
            inputs.nodes[name] = FormatJsonLine(ToJson(node.GetReference())) + node.GetContent();
        }
        if (manifestFile.empty()) {
            return inputs;
        }
        for (const ManifestShader& shader : Manifest(manifestFile, prefix).shaders) {
            inputs.shaders[shader.name] =
                FormatJsonLine(shader.entry) + FormatJsonLine(ToJson(shader.targets));
            for (const auto* pass : {&shader.vertex, &shader.fragment}) {
                for (const NodeName& node : *pass) {
                    inputs.nodesOf[shader.name].insert(node.name);
                }
            }
        }
        return inputs;
    }

    /// Whether a change concerns more than single shaders: what a node that comes or goes means for
    /// others, what is left of a shader that goes, a dependency list, which is for all, and nodes
    /// of no shader.
    bool ConcernsAll(const Inputs& now) const
    {
        const auto isKnown = [](const auto& one, const auto& other) {
            return one.first == other.first;
        };
        const bool areNodesKnown = std::equal(known->nodes.begin(), known->nodes.end(),
                                              now.nodes.begin(), now.nodes.end(), isKnown);
        const bool isShaderGone =
            std::any_of(known->shaders.begin(), known->shaders.end(),
                        [&](const auto& shader) { return now.shaders.count(shader.first) == 0; });
        return !areNodesKnown || isShaderGone || (isBuild && !options.build.depfile.empty()) ||
               (!isBuild && HasUnnamed(Different(known->nodes, now.nodes), now));
    }

    /// Whether no shader names one of some nodes, which only a whole round looks at.
    static bool HasUnnamed(const std::set<std::string>& nodes, const Inputs& inputs)
    {
        return std::any_of(nodes.begin(), nodes.end(), [&](const std::string& node) {
            return std::none_of(inputs.nodesOf.begin(), inputs.nodesOf.end(),
                                [&](const auto& shader) { return shader.second.count(node) > 0; });
        });
    }

    /// The shaders that the changes concern, among those that were asked for.
    std::vector<std::string> Concerned(const Inputs& now) const
    {
        const std::set<std::string> nodes = Different(known->nodes, now.nodes);
        std::set<std::string> shaders = Different(known->shaders, now.shaders);
        shaders.insert(unfinished.begin(), unfinished.end());
        for (const auto& [shader, names] : now.nodesOf) {
            const bool isConcerned =
                std::any_of(names.begin(), names.end(),
                            [&](const std::string& name) { return nodes.count(name) > 0; });
            if (isConcerned) {
                shaders.insert(shader);
            }
        }
        const std::vector<std::string>& wanted =
            isBuild ? options.build.shaders : options.check.shaders;
        std::vector<std::string> concerned;
        for (const std::string& shader : shaders) {
            const bool isWanted =
                wanted.empty() || std::find(wanted.begin(), wanted.end(), shader) != wanted.end();
            if (isWanted && now.shaders.count(shader) > 0) {
                concerned.push_back(shader);
            }
        }
        return concerned;
    }

    void Do(const std::vector<std::string>& changed)
    {
        const Clock::time_point start = Clock::now();
        const bool asJson = options.common.diagnostics == "json";
        Round round;
        round.changed = changed;
        std::vector<Diagnostic> faults;
        std::size_t errors = 0;
        std::size_t warnings = 0;
        {
            Diagnostics diagnostics(asJson ? DiagnosticFormat::Collected : DiagnosticFormat::Text,
                                    options.common.color, options.common.verbose);
            diagnostics.SetShowAll(options.common.showAll);
            try {
                Do(round, diagnostics);
            } catch (const ClosedPipe&) {
                throw;
            } catch (const DiagnosticError& error) {
                diagnostics.Report(error.diagnostic);
            } catch (const std::exception& error) {
                diagnostics.Error(error.what());
            }
            faults = diagnostics.TakeCollected();
            errors = diagnostics.ErrorCount();
            warnings = diagnostics.WarningCount();
        }
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        ++number;
        WriteWhole("-",
                   asJson ? Json(round, faults, seconds) : Line(round, errors, warnings, seconds));
    }

    void Do(Round& round, Diagnostics& diagnostics)
    {
        std::optional<Inputs> inputs = Read(diagnostics);
        if (!inputs) {
            return;
        }
        round.isWhole = !known || manifestFile.empty() || ConcernsAll(*inputs);
        if (!round.isWhole) {
            round.shaders = Concerned(*inputs);
        }
        // Until they are done, they are to be done.
        unfinished.insert(round.shaders.begin(), round.shaders.end());
        if (round.isWhole) {
            known.reset();
        }
        if (round.isWhole || !round.shaders.empty()) {
            Run(round, diagnostics);
        }
        unfinished.clear();
        known = std::move(inputs);
    }

    void Run(Round& round, Diagnostics& diagnostics) const
    {
        if (isBuild) {
            BuildOptions build = options.build;
            build.shaders = round.isWhole ? build.shaders : round.shaders;
            round.built = BuildShaders(build, prefix, diagnostics);
        } else {
            CheckOptions check = options.check;
            check.shaders = round.isWhole ? check.shaders : round.shaders;
            CheckShaders(check, prefix, diagnostics);
        }
    }

    static std::string Line(const Round& round, std::size_t errors, std::size_t warnings,
                            double seconds)
    {
        std::ostringstream line;
        for (const std::string& file : round.changed) {
            line << file << (&file == &round.changed.back() ? ": " : ", ");
        }
        if (!round.built.summary.empty()) {
            line << round.built.summary << '\n';
            return line.str();
        }
        if (!round.isWhole) {
            line << round.shaders.size()
                 << (round.shaders.size() == 1 ? " shader, " : " shaders, ");
        }
        line << errors << (errors == 1 ? " error, " : " errors, ") << warnings
             << (warnings == 1 ? " warning, " : " warnings, ") << std::fixed << std::setprecision(2)
             << seconds << " s\n";
        return line.str();
    }

    std::string Json(const Round& round, const std::vector<Diagnostic>& faults,
                     double seconds) const
    {
        Json::Value object(Json::objectValue);
        object["version"] = kRoundVersion;
        object["round"] = static_cast<Json::UInt64>(number);
        object["changed"] = ToJson(round.changed);
        object["whole"] = round.isWhole;
        object["shaders"] = ToJson(round.shaders);
        object["outputs"] = ToJson(round.built.outputs);
        object["seconds"] = seconds;
        object["faults"] = Json::Value(Json::arrayValue);
        for (const Diagnostic& fault : faults) {
            object["faults"].append(morlc::ToJson(fault));
        }
        return FormatJsonLine(object) + "\n";
    }

    const Options& options;
    const bool isBuild;
    const std::string manifestFile;  ///< empty: passes are checked
    const std::string prefix;
    std::size_t number = 0;            ///< of the last round, from 1
    std::optional<Inputs> known;       ///< of the last round that could read all
    std::set<std::string> unfinished;  ///< shaders that a round has failed to do
};

}  // namespace

ExitStatus Watch(const Options& options)
{
    return Watching(options).Run();
}

}  // namespace morlc
