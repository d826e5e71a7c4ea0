// SPDX-License-Identifier: MIT
// An editor's loop in C++ through the C interface: a node is changed, a pass that uses it is
// compiled in all targets, and the faults are shown, or the texts with the place that each line is
// from, and what is to be bound.
#include <cstdio>
#include <morl/c/morl.hpp>
#include <string>

namespace {

/// What somebody types into the node "unlit": first without a semicolon, then with it.
constexpr std::string_view kEdits[] = {
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}",
    "uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}",
};

std::string Copy(const morl_text& text)
{
    return std::string(morl::ToView(text));
}

void ShowCode(const morl::Result& result)
{
    std::string_view rest = result.Code();
    for (std::size_t line = 1; !rest.empty(); ++line) {
        const std::size_t end = rest.find('\n');
        const auto place = result.PlaceOf(line);
        const std::string from =
            place ? Copy(place->node) + ":" + std::to_string(place->line) : std::string();
        std::printf("%-18s| %s\n", from.c_str(), std::string(rest.substr(0, end)).c_str());
        rest.remove_prefix(end != std::string_view::npos ? end + 1 : rest.size());
    }
}

void Show(const morl::Result& result)
{
    for (const morl_fault& fault : result.Faults()) {
        std::printf("%s:%d:%d: %s\n", Copy(fault.node).c_str(), static_cast<int>(fault.line),
                    static_cast<int>(fault.column), Copy(fault.text).c_str());
    }
    ShowCode(result);
    for (const morl_declare& uniform : result.Uniforms()) {
        std::printf("bind %s (%s)", Copy(uniform.name).c_str(), Copy(uniform.type).c_str());
        if (uniform.number >= 0) {
            std::printf(" to register %d", static_cast<int>(uniform.number));
        }
        std::printf("\n");
    }
}

/// One keystroke: the node has changed, and everything is compiled again.
morl::Error ShowAll(morl::Compiler& compiler)
{
    std::size_t count = 0;
    const morl_text* const targets = morl_targets(&count);
    for (const morl_text* target = targets; target != targets + count; ++target) {
        morl::Request request;
        request.target = morl::ToView(*target);
        request.stage = MORL_FRAGMENT;
        request.nodes = {"surface_texture", "unlit", "surface_out"};
        request.semantics = {{"oUV", "TEXCOORD0"}};
        request.samplers = {{"albedoMap", 3}};
        morl::Result result;
        if (morl::Error error = compiler.Compile(request, result)) {
            return error;
        }
        std::printf("== %s\n", Copy(*target).c_str());
        Show(result);
    }
    return {};
}

morl::Error Run(const std::string& directory)
{
    morl::Compiler compiler;
    for (const char* name : {"vertex_shader", "fragment_shader", "post_effect", "special_output"}) {
        if (morl::Error error = compiler.LoadFile(directory + "/morl/" + name + ".morl")) {
            return error;
        }
    }
    int number = 0;
    for (const std::string_view content : kEdits) {
        std::printf("=== edit %d\n", ++number);
        morl::Error error = compiler.Set("unlit", content, {"surface_texture", "surface_color"});
        if (!error) {
            error = ShowAll(compiler);
        }
        if (error) {
            return error;
        }
    }
    return {};
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: embed_hpp DIRECTORY (the one with the folder morl/)\n");
        return 1;
    }
    // The report has all that this host shows.
    morl_set_log([](void*, const morl_log_line*) {}, nullptr, nullptr, nullptr);
    const morl::Error error = Run(argv[1]);
    if (error) {
        std::fprintf(stderr, "embed_hpp: %s\n", error.message.c_str());
        return 1;
    }
    return 0;
}
