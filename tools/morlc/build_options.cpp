// SPDX-License-Identifier: MIT
// The options of "morlc build".
#include "command_line.h"

#include <thread>

namespace morlc {
namespace {

constexpr int kMaxJobs = 256;

/// The options as CLI11 reads them, before they are checked against each other.
struct RawBuildOptions {
    std::string jobs = "1";
};

void Declare(CLI::App& app, Options& options, RawBuildOptions& raw)
{
    DeclareCommon(app, options.common);
    BuildOptions& build = options.build;
    app.add_option("manifest", build.manifest, "The manifest, a JSON file")->type_name("FILE");
    app.add_option("-o,--output", build.output, "The directory to write to")->type_name("DIR");
    app.add_option("-j,--jobs", raw.jobs, "Use N threads (0: one per processor)")->type_name("N");
    app.add_option("--shader", build.shaders, "Build only these shaders")
        ->type_name("NAME,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("--no-index", build.noIndex, "Leave the index as it is");
    app.add_flag("--index", build.indexOnly, "Only write the index of the shaders built before");
    CLI::Option* const ninja = app.add_option("--ninja", build.ninjaFile,
                                              "Only write a Ninja file, with one edge per shader")
                                   ->type_name("FILE");
    app.add_option("--launcher", build.launcher,
                   "Let the Ninja file put COMMAND in front of every compilation")
        ->type_name("COMMAND")
        ->needs(ninja);
    app.add_option("--depfile", build.depfile,
                   "Write the files that the shaders were made from, as Ninja and Make read it")
        ->type_name("FILE");
    app.add_flag("-q,--quiet", build.quiet, "No progress, and no summary");
    app.footer(
        "Writes DIR/SHADER/TARGET/VARIANT.vert and .frag (variants of equal text once),\n"
        "DIR/SHADER.json with what each text needs of the engine, and DIR/index.json, which tells\n"
        "the file of each shader, target and variant. Files that would not change are left alone.\n"
        "Paths are relative to the directory given with -C.\n"
        "\n"
        "Exit status: 0 without errors, 1 after any error, 2 for wrong usage.");
}

std::size_t ReadCount(const std::string& option, const std::string& text, int least, int most)
{
    const int value = ReadInteger(option, text);
    if (value < least || value > most) {
        throw CLI::ValidationError(option, text + " is not between " + std::to_string(least) +
                                               " and " + std::to_string(most));
    }
    return static_cast<std::size_t>(value);
}

/// The options of which at most one may be given, as each says what is to be made.
void CheckExclusive(const CLI::App& app)
{
    std::string given;
    for (const char* name : {"--shader", "--index", "--ninja"}) {
        if (app.count(name) == 0) {
            continue;
        }
        if (!given.empty()) {
            throw CLI::ValidationError(name, "does not go with " + given + ": give one of them");
        }
        given = name;
    }
    for (const char* name : {"--index", "--ninja"}) {
        for (const char* other : {"--depfile", "--no-index"}) {
            if (app.count(other) > 0 && given == name) {
                throw CLI::ValidationError(other, "does not go with " + given);
            }
        }
    }
}

void Check(const CLI::App& app, Options& options, const RawBuildOptions& raw)
{
    BuildOptions& build = options.build;
    if (build.manifest.empty()) {
        throw CLI::ValidationError("FILE", "name the manifest, such as shaders.json");
    }
    if (build.output.empty()) {
        throw CLI::ValidationError("--output", "say where to write: -o DIR");
    }
    CheckExclusive(app);
    build.jobs = ReadCount("--jobs", raw.jobs, 0, kMaxJobs);
    if (build.jobs == 0) {
        build.jobs = std::max(std::thread::hardware_concurrency(), 1U);
    }
}

}  // namespace

bool ReadBuildOptions(int argc, char** argv, Options& options, ExitStatus& status)
{
    CLI::App app("Builds the shaders of a manifest.", "morlc build");
    RawBuildOptions raw;
    Declare(app, options, raw);
    return ParseCommandLine(
        app, argc, argv, [&] { Check(app, options, raw); }, status);
}

}  // namespace morlc
