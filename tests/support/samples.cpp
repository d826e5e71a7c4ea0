// SPDX-License-Identifier: MIT
#include "support/samples.h"

#include "support/graph.h"

#include <json/json.h>
#include <map>
#include <sstream>
#include <stdexcept>

namespace morl_test {
namespace {

using Macros = std::map<std::string, int>;

Json::Value ReadShaders()
{
    std::istringstream text(
        ReadText(std::filesystem::path(MORL_SOURCE_DIR) / "examples/shaders.json"));
    Json::Value root;
    text >> root;
    return root["shaders"];
}

std::vector<std::string> Strings(const Json::Value& array)
{
    std::vector<std::string> strings;
    for (const Json::Value& string : array) {
        strings.push_back(string.asString());
    }
    return strings;
}

/// All combinations of the values of the macros. The last one has the last value of each macro.
std::vector<Macros> Assignments(const Json::Value& macros)
{
    std::vector<Macros> assignments(1);
    for (auto macro = macros.begin(); macro != macros.end(); ++macro) {
        Json::Value values = *macro;
        if (!values.isArray()) {
            values = Json::Value(Json::arrayValue);
            values.append(*macro);
        }
        std::vector<Macros> extended;
        for (const Macros& assignment : assignments) {
            for (const Json::Value& value : values) {
                extended.push_back(assignment);
                extended.back()[macro.name()] = value.asInt();
            }
        }
        assignments = extended;
    }
    return assignments;
}

SampleRequest MakeRequest(const Json::Value& shader, const std::string& target, Macros macros)
{
    const Json::Value& own = shader["targetMacros"][target];
    for (auto macro = own.begin(); macro != own.end(); ++macro) {
        macros[macro.name()] = macro->asInt();
    }
    SampleRequest request;
    request.shader = shader["name"].asString();
    request.target = target;
    for (const auto& [name, value] : macros) {
        request.variant +=
            (request.variant.empty() ? "" : ",") + name + "=" + std::to_string(value);
    }
    request.vertex = MakePass(target, 0, Strings(shader["vertex"]));
    request.fragment = MakePass(target, 1, Strings(shader["fragment"]));
    for (ns_ruke::PassProperty* pass : {&request.vertex, &request.fragment}) {
        pass->macros.insert(macros.begin(), macros.end());
        const Json::Value& samplers = shader["samplers"];
        for (auto sampler = samplers.begin(); sampler != samplers.end(); ++sampler) {
            pass->samplerRegisters[sampler.name()] = sampler->asInt();
        }
    }
    return request;
}

std::vector<SampleRequest> Requests(bool onlyRichest)
{
    std::vector<SampleRequest> requests;
    for (const Json::Value& shader : ReadShaders()) {
        std::vector<Macros> assignments = Assignments(shader["macros"]);
        if (onlyRichest) {
            assignments.erase(assignments.begin(), assignments.end() - 1);
        }
        for (const Macros& macros : assignments) {
            for (const std::string& target : ns_ruke::MorlTargets()) {
                requests.push_back(MakeRequest(shader, target, macros));
            }
        }
    }
    return requests;
}

}  // namespace

std::vector<SampleRequest> SampleGrid()
{
    return Requests(false);
}

std::vector<SampleRequest> RichestSamples()
{
    return Requests(true);
}

SampleTexts CompileSample(ns_ruke::MorlCompiler& compiler, SampleRequest request)
{
    ns_ruke::ShaderOutput vertex;
    compiler.Compile(request.vertex, vertex);
    request.fragment.semantics = vertex.semantics;
    ns_ruke::ShaderOutput fragment;
    compiler.Compile(request.fragment, fragment);
    return {vertex.code, fragment.code};
}

}  // namespace morl_test
