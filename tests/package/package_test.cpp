// SPDX-License-Identifier: MIT
// Tests the package as installed.
#include "support/graph.h"
#include "support/process.h"

#include <gtest/gtest.h>
#include <morl/morl.h>
#include <memory>
#include <set>
#include <sstream>

namespace {

using morl_test::ProcessResult;
using morl_test::ReadText;
using morl_test::RunProcess;
using morl_test::RunShell;
using morl_test::TemporaryDirectory;
using morl_test::WriteText;

const std::string kExamples = std::string(MORL_SOURCE_DIR) + "/examples";

/// The first line that the example host prints; it prints one for each target.
const std::string kHostOutput =
    "hlsl: vertex 783 bytes, 2 uniforms, 3 semantics; fragment 1933 bytes, 11 uniforms; textures "
    "register(s0)\n";

void Succeed(const std::vector<std::string>& command)
{
    const ProcessResult result = RunProcess(command);
    ASSERT_EQ(result.status, 0) << testing::PrintToString(command) << result.out << result.err;
}

/// Installs the build into a prefix of its own.
class Package : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        directory = std::make_unique<TemporaryDirectory>();
        prefix = (directory->path / "pre fix").string();
        Succeed({"cmake", "--install", MORL_BINARY_DIR, "--prefix", prefix});
    }

    static void TearDownTestSuite() { directory.reset(); }

    /// Builds the project of an example host with CMake and runs one of its programs.
    static ProcessResult RunHost(const std::string& project, const std::string& program,
                                 const std::vector<std::string>& options)
    {
        const TemporaryDirectory build;
        std::vector<std::string> configure = {"cmake",
                                              "-S",
                                              kExamples + "/" + project,
                                              "-B",
                                              build.path.string(),
                                              "-G",
                                              "Ninja",
                                              "-DCMAKE_CXX_COMPILER=" MORL_CXX_COMPILER,
                                              "-DCMAKE_C_COMPILER=" MORL_C_COMPILER,
                                              "-DCMAKE_C_FLAGS=" MORL_SANITIZE_FLAGS,
                                              "-DCMAKE_CXX_FLAGS=" MORL_SANITIZE_FLAGS};
        configure.insert(configure.end(), options.begin(), options.end());
        Succeed(configure);
        Succeed({"cmake", "--build", build.path.string()});
        return RunProcess({(build.path / program).string(), kExamples});
    }

    /// Builds the example host with the output of pkg-config, passed through a filter, and runs it.
    static ProcessResult RunHostOfPkgConfig(const std::string& options, const std::string& filter)
    {
        const TemporaryDirectory build;
        const std::string host = (build.path / "host").string();
        // In the paths that pkg-config prints, spaces are escaped for the shell.
        const ProcessResult compiled =
            RunShell("export PKG_CONFIG_LIBDIR='" + prefix + "/lib/pkgconfig'; eval " +
                     MORL_CXX_COMPILER " -std=c++17 " MORL_SANITIZE_FLAGS " \"'" + kExamples +
                     "/embed/main.cpp'\" -o " + host + " $(pkg-config " + options +
                     " --cflags --libs morl | " + filter + ")");
        EXPECT_EQ(compiled.status, 0) << compiled.err;
        return RunShell("LD_LIBRARY_PATH='" + prefix + "/lib' " + host + " '" + kExamples + "'");
    }

    static std::unique_ptr<TemporaryDirectory> directory;
    static std::string prefix;
};

std::unique_ptr<TemporaryDirectory> Package::directory;
std::string Package::prefix;

TEST_F(Package, IsFoundAndLinked)
{
    const std::vector<std::string> rows[] = {
        {"-DCMAKE_PREFIX_PATH=" + prefix},
        {"-DCMAKE_PREFIX_PATH=" + prefix, "-DSTATIC=ON"},
        {"-DCMAKE_PREFIX_PATH=" MORL_BINARY_DIR},
    };
    for (const std::vector<std::string>& options : rows) {
        const ProcessResult host = RunHost("embed", "embed", options);
        EXPECT_EQ(host.status, 0) << host.err;
        EXPECT_EQ(host.out.substr(0, kHostOutput.size()), kHostOutput);
        EXPECT_EQ(std::count(host.out.begin(), host.out.end(), '\n'), ns_ruke::MorlTargets().size())
            << host.out;
    }
#ifdef MORL_SHARED
    EXPECT_EQ(RunHostOfPkgConfig("", "cat").out.substr(0, kHostOutput.size()), kHostOutput);
#endif
    EXPECT_EQ(RunHostOfPkgConfig("--static", "sed s/-lmorl/-l:libmorl.a/")
                  .out.substr(0, kHostOutput.size()),
              kHostOutput);
}

#ifdef MORL_SHARED
// An editor's loop in three languages prints the same.
TEST_F(Package, ServesEditorsInEveryLanguage)
{
    const std::vector<std::string> options = {"-DCMAKE_PREFIX_PATH=" + prefix};
    const ProcessResult cpp = RunHost("embed", "edit_loop", options);
    const ProcessResult c = RunHost("embed_c", "embed_c", options);
    const ProcessResult staticC =
        RunHost("embed_c", "embed_c", {"-DCMAKE_PREFIX_PATH=" + prefix, "-DSTATIC=ON"});
    const ProcessResult hpp = RunHost("embed_hpp", "embed_hpp", options);
    const ProcessResult python = RunProcess(
        {"python3", kExamples + "/python/edit_loop.py", prefix + "/lib/libmorl.so", kExamples});
    EXPECT_EQ(cpp.status, 0) << cpp.err;
    for (const char* part :
         {"== hlsl10\nunlit:3:35: miss ';':", "surface_texture:2 | uniform Texture2D albedoMap",
          "unlit:3           | \tvec3 lit = albedo.xyz*tint;\n",
          "bind albedoMap (sampler2D) to register 3\nbind tint (float3)\n== glsl\n"}) {
        EXPECT_NE(cpp.out.find(part), std::string::npos) << cpp.out;
    }
    EXPECT_EQ(c.out, cpp.out) << c.err;
    EXPECT_EQ(staticC.out, cpp.out) << staticC.err;
    EXPECT_EQ(hpp.out, cpp.out) << hpp.err;
    EXPECT_EQ(python.out, cpp.out) << python.err;
    // A missing file is reported.
    EXPECT_EQ(RunProcess({"python3", kExamples + "/python/edit_loop.py", prefix + "/lib/libmorl.so",
                          "/nowhere"})
                  .err,
              "edit_loop: cannot read /nowhere/morl/vertex_shader.morl: No such file or "
              "directory\n");
}
#endif

#ifdef MORL_SHARED
// Any number of plug-ins contain the library, export nothing of it and keep a log of their own.
// Those that have compiled on another thread than the main one can be unloaded, and leave nothing.
TEST_F(Package, LivesInPlugIns)
{
    const TemporaryDirectory build;
    const std::string base = build.path.string();
    Succeed({"cmake", "-S", MORL_SOURCE_DIR "/tests/package/plugin", "-B", base, "-G", "Ninja",
             "-DCMAKE_CXX_COMPILER=" MORL_CXX_COMPILER, "-DCMAKE_BUILD_TYPE=Release",
             "-DCMAKE_PREFIX_PATH=" + prefix});
    Succeed({"cmake", "--build", base});
    const ProcessResult exported = RunShell("nm -DC --defined-only '" + base + "/libplugin.so'");
    EXPECT_EQ(exported.out.find("ns_ruke"), std::string::npos) << exported.out;
    EXPECT_EQ(exported.out.find("morl_"), std::string::npos) << exported.out;
    EXPECT_NE(exported.out.find("run_plugin"), std::string::npos);
    std::vector<std::string> copies = {base + "/engine", "1", "other"};
    for (int i = 0; i < 100; ++i) {
        copies.push_back(base + "/copy" + std::to_string(i) + ".so");
        std::filesystem::copy_file(base + "/libplugin.so", copies.back());
    }
    const auto run = [](const std::vector<std::string>& command) {
        const ProcessResult result = RunProcess(command);
        return result.err + result.out;
    };
    EXPECT_EQ(run(copies), "100 faults heard, 0 still loaded, no memory lost\n");
    EXPECT_EQ(run({base + "/engine", "50", "other", base + "/libplugin.so"}),
              "50 faults heard, 0 still loaded, no memory lost\n");
    EXPECT_EQ(run({base + "/engine", "50", "main", base + "/libplugin.so"}),
              "50 faults heard, 1 still loaded, no memory lost\n");
    // The shared library stays loaded.
    EXPECT_EQ(run({base + "/engine", "50", "main", base + "/libshared_plugin.so"}),
              "50 faults heard, 0 still loaded, no memory lost\n");
}
#endif

// Hosts that were written for version 1.0 compile and link, and those in C and without exceptions.
TEST_F(Package, HasAllThatHostsAreWrittenFor)
{
    const TemporaryDirectory work;
    const std::string host = (work.path / "host").string();
    const std::string source = "'" MORL_SOURCE_DIR "/tests/package/described_interface.cpp'";
    const std::string include = " -I'" + prefix + "/include' ";
    const std::string warnings =
        " -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -fsyntax-only";
    const std::string lines[] = {
        MORL_CXX_COMPILER " -std=c++17 " MORL_SANITIZE_FLAGS + include + source + " '" +
            MORL_LIBRARY "' -ljsoncpp -Wl,-rpath,'" MORL_BINARY_DIR "' -o " + host + " && " + host,
        MORL_C_COMPILER " -std=c99 -Wstrict-prototypes" + warnings + include + "'" + kExamples +
            "/embed_c/main.c'",
        MORL_CXX_COMPILER " -std=c++17 -fno-exceptions -x c++" + warnings + include + "'" + prefix +
            "/include/morl/c/morl.h'",
        "echo '#include <morl/c/morl.hpp>' | " MORL_CXX_COMPILER
        " -std=c++17 -fno-exceptions -fno-rtti -Wold-style-cast -x c++" +
            warnings + include + "-",
        "echo '#include <morl/morl.h>' | " MORL_CXX_COMPILER
        " -std=c++17 -Wold-style-cast -Wuseless-cast -Wnon-virtual-dtor -x c++" +
            warnings + include + "-"};
    for (const std::string& line : lines) {
        const ProcessResult result = RunShell(line);
        EXPECT_EQ(result.status, 0) << line << result.err;
    }
}

// In one project, in any order and any number of times.
TEST_F(Package, LivesBesideJsonCpp)
{
    const std::string morl = "find_package(morl 2.0 REQUIRED)\n";
    const std::string json = "find_package(jsoncpp REQUIRED)\n";
    const std::string inside = "set(MORL_TESTS OFF)\nset(MORL_TOOLS OFF)\nadd_subdirectory(\"" +
                               std::string(MORL_SOURCE_DIR) + "\" morl)\n";
    const std::string rows[] = {morl + json, json + morl, morl + morl, inside + json,
                                json + inside};
    for (const std::string& packages : rows) {
        const TemporaryDirectory work;
        WriteText(work.path / "CMakeLists.txt",
                  "cmake_minimum_required(VERSION 3.25)\nproject(host CXX)\n" + packages +
                      "add_executable(host host.cpp)\n"
                      "target_link_libraries(host PRIVATE morl::morl)\n"
                      "add_executable(static_host host.cpp)\n"
                      "target_link_libraries(static_host PRIVATE morl::morl_static)\n");
        WriteText(work.path / "host.cpp", "int main() {}\n");
        const ProcessResult configured = RunProcess(
            {"cmake", "-S", work.path.string(), "-B", (work.path / "build").string(), "-G", "Ninja",
             "-DCMAKE_CXX_COMPILER=" MORL_CXX_COMPILER, "-DCMAKE_PREFIX_PATH=" + prefix});
        EXPECT_EQ(configured.status, 0) << packages << configured.err;
        // As a part of the project, morl changes and installs nothing.
        const std::string cache = ReadText(work.path / "build/CMakeCache.txt");
        EXPECT_EQ(cache.find("BUILD_SHARED_LIBS"), std::string::npos) << packages;
        EXPECT_FALSE(std::filesystem::exists(work.path / "build/CPackConfig.cmake")) << packages;
        const std::string install =
            RunShell("cat '" + work.path.string() + "'/build/cmake_install.cmake '" +
                     work.path.string() + "'/build/*/cmake_install.cmake")
                .out;
        EXPECT_NE(install, "");
        EXPECT_EQ(install.find("file(INSTALL DESTINATION"), std::string::npos) << packages;
    }
    // The shared library needs nothing else; only the static one depends on JsonCpp.
    const std::string targets = ReadText(prefix + "/lib/cmake/morl/morl-static-targets.cmake");
    EXPECT_NE(targets.find("morl::jsoncpp"), std::string::npos);
#ifdef MORL_SHARED
    EXPECT_EQ(ReadText(prefix + "/lib/cmake/morl/morl-targets.cmake").find("json"),
              std::string::npos);
#endif
}

// Every page that the installed README links to is installed.
TEST_F(Package, HasTheDocumentsThatItsReadmeLinksTo)
{
    const std::filesystem::path folder = prefix + "/share/doc/morl";
    const std::string readme = ReadText(folder / "README.md");
    int links = 0;
    for (const char* page : {"docs/", "CONTRIBUTING.md", "CHANGELOG.md"}) {
        const std::string start = std::string("](") + page;
        for (std::size_t found = readme.find(start); found != std::string::npos;
             found = readme.find(start, found + 1)) {
            const std::string name = readme.substr(found + 2, readme.find(')', found) - found - 2);
            EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
            ++links;
        }
    }
    EXPECT_GE(links, 8);
}

TEST_F(Package, TellsOneVersion)
{
    const std::string version = MORL_PROJECT_VERSION;
    EXPECT_EQ(RunProcess({prefix + "/bin/morlc", "--version"}).out, "morlc " + version + "\n");
    EXPECT_EQ(
        RunShell("PKG_CONFIG_PATH='" + prefix + "/lib/pkgconfig' pkg-config --modversion morl").out,
        version + "\n");
    for (const char* file : {"packaging/vcpkg/vcpkg.json", "packaging/conan/conanfile.py",
                             "bindings/js/package.json"}) {
        const std::string text = ReadText(std::string(MORL_SOURCE_DIR) + "/" + file);
        EXPECT_NE(text.find("\"" + version + "\""), std::string::npos) << file;
    }
    EXPECT_NE(ReadText(prefix + "/share/man/man1/morlc.1").find("\"morl " + version + "\""),
              std::string::npos);
#ifdef MORL_SHARED
    const std::string major = version.substr(0, version.find('.'));
    EXPECT_NE(RunProcess({"objdump", "-p", MORL_LIBRARY}).out.find("libmorl.so." + major + "\n"),
              std::string::npos);
#endif
}

// Every installed header compiles by itself, without the headers of the JSON reader.
TEST_F(Package, HasHeadersThatCompileAlone)
{
    const TemporaryDirectory work;
    const std::filesystem::path include = prefix + "/include";
    std::string sources;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(include)) {
        if (entry.is_regular_file()) {
            const std::string source = work.path.string() + "/" + entry.path().stem().string();
            WriteText(source + ".cpp", "#include \"" + entry.path().string() + "\"\n");
            sources += " " + source + ".cpp";
        }
    }
    EXPECT_GT(sources.size(), 20U);
    const ProcessResult result = RunShell(
        std::string(MORL_CXX_COMPILER) +
        " -std=c++17 -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -fsyntax-only -I'" +
        include.string() + "'" + sources);
    EXPECT_EQ(result.status, 0) << result.err;
}

#ifdef MORL_SHARED
TEST_F(Package, ExportsThePublicInterfaceOnly)
{
    const ProcessResult result =
        RunShell("nm -DC --defined-only '" MORL_LIBRARY "' | cut -d' ' -f3- | sort -u");
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string version = MORL_PROJECT_VERSION;
    const std::string major = version.substr(0, version.find('.'));
    const std::string minor = version.substr(0, version.rfind('.'));
    std::set<std::string> exported;
    std::string functions;
    std::istringstream lines(result.out);
    for (std::string whole; std::getline(lines, whole);) {
        // The loader compares the versions of symbols.
        const std::size_t at = whole.find("@@");
        const std::string line = whole.substr(0, at);
        const std::string node = at != std::string::npos ? whole.substr(at) : "";
        const std::string start = "ns_ruke::";
        if (line.compare(0, 5, "morl_") == 0) {
            EXPECT_EQ(node, "@@MORL_" + major);
            functions += line + "\n";
            continue;
        }
        if (line.compare(0, 5, "MORL_") == 0) {
            continue;  // the versions themselves
        }
        EXPECT_EQ(node, "@@MORL_CXX_" + minor) << line;
        const std::size_t found = line.find(start);
        ASSERT_NE(found, std::string::npos) << line;
        const std::size_t name = found + start.size();
        exported.insert(line.substr(name, line.find_first_of(":(<[", name) - name));
        EXPECT_EQ(line.find("(anonymous namespace)"), std::string::npos) << line;
    }
    std::string names;
    for (const std::string& name : exported) {
        names += name + "\n";
    }
    EXPECT_EQ(names, ReadText(MORL_SOURCE_DIR "/tests/package/cpp_interface.txt"));
    EXPECT_EQ(functions, ReadText(MORL_SOURCE_DIR "/tests/package/c_interface.txt"));
}
#endif

}  // namespace
