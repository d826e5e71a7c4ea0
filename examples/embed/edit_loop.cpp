// SPDX-License-Identifier: MIT
// An editor's loop: a node is changed, a pass that uses it is compiled in all targets, and the
// faults are shown, or the texts with the place that each line is from, and what is to be bound.
#include <morl/morl.h>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

namespace {

using ns_ruke::MorlCompiler;
using ns_ruke::PassReport;
using ns_ruke::ReportDeclare;
using ns_ruke::ReportFault;
using ns_ruke::ReportLine;

/// What somebody types into the node "unlit": first without a semicolon, then with it.
const char* const kEdits[] = {
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}",
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}",
};

/// "NODE:LINE", or nothing for a line that is from no node.
std::string PlaceOf(const PassReport& report, const ReportLine& line)
{
    if (line.node < 0) {
        return {};
    }
    return report.nodes[static_cast<std::size_t>(line.node)] + ":" + std::to_string(line.line);
}

void Show(const std::string& code, const PassReport& report)
{
    for (const ReportFault& fault : report.faults) {
        std::cout << fault.node << ':' << fault.line << ':' << fault.column << ": " << fault.text
                  << '\n';
    }
    std::istringstream texts(code);
    for (const ReportLine& line : report.lines) {
        std::string text;
        std::getline(texts, text);
        std::cout << std::left << std::setw(18) << PlaceOf(report, line) << "| " << text << '\n';
    }
    for (const ReportDeclare& uniform : report.uniforms) {
        std::cout << "bind " << uniform.name << " (" << uniform.type << ")";
        if (uniform.number >= 0) {
            std::cout << " to register " << uniform.number;
        }
        std::cout << '\n';
    }
}

/// One keystroke: the node has changed, and everything is compiled again.
void ShowAll(MorlCompiler& compiler)
{
    for (const std::string& target : ns_ruke::MorlTargets()) {
        ns_ruke::PassProperty pass;
        pass.nodeNames = {"surface_texture", "unlit", "surface_out"};
        pass.semantics = {{"oUV", "TEXCOORD0"}};
        pass.samplerRegisters = {{"albedoMap", 3}};
        pass.target = target;
        pass.stage = ns_ruke::kFragmentStage;
        ns_ruke::ShaderOutput output;
        PassReport report;
        compiler.CompileReported(pass, output, report);
        std::cout << "== " << target << '\n';
        Show(output.code, report);
    }
}

void Run(const std::string& directory)
{
    MorlCompiler compiler(directory);
    int number = 0;
    for (const char* const content : kEdits) {
        std::cout << "=== edit " << ++number << '\n';
        compiler.SetNode("unlit", content, {"surface_texture", "surface_color"});
        ShowAll(compiler);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: edit_loop DIRECTORY (the one with the folder morl/)\n";
        return EXIT_FAILURE;
    }
    try {
        // The report has all that this host shows.
        ns_ruke::TamberLogSystem::SetSink(
            [](ns_ruke::LogLevel, const std::string&, const std::string&) {});
        Run(argv[1]);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "edit_loop: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
