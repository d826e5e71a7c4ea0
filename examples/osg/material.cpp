// SPDX-License-Identifier: MIT
#include "material.h"

#include <iostream>

namespace fs = std::filesystem;

namespace {

constexpr const char* kNodeFiles[] = {"vertex_shader", "fragment_shader", "post_effect",
                                      "special_output"};

std::string Copy(const morl_text& text)
{
    return std::string(morl::ToView(text));
}

/// The place of each vertex attribute.
int LocationOf(std::int32_t semantic)
{
    return semantic == MORL_POSITION ? 0 : semantic == MORL_NORMAL ? 1 : 2;
}

osg::Uniform::Type TypeOf(const morl_declare& uniform)
{
    constexpr osg::Uniform::Type kVectors[] = {osg::Uniform::FLOAT, osg::Uniform::FLOAT_VEC2,
                                               osg::Uniform::FLOAT_VEC3, osg::Uniform::FLOAT_VEC4};
    return uniform.base_type >= MORL_SAMPLER_1D ? osg::Uniform::SAMPLER_2D
           : uniform.columns == 4               ? osg::Uniform::FLOAT_MAT4
                                                : kVectors[uniform.rows - 1];
}

}  // namespace

Material::Material(std::string newDirectory)
    : directory(std::move(newDirectory)), times(std::size(kNodeFiles))
{
}

bool Material::Reload()
{
    morl::Result vertex;
    morl::Result fragment;
    if (!LoadChangedFiles() || !Compile(vertex, fragment)) {
        return false;
    }
    Bind(vertex, fragment);
    return true;
}

bool Material::LoadChangedFiles()
{
    bool hasChanged = false;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const std::string path = directory + "/morl/" + kNodeFiles[i] + ".morl";
        std::error_code ignored;
        const fs::file_time_type time = fs::last_write_time(path, ignored);
        if (time == times[i]) {
            continue;
        }
        times[i] = time;
        const morl::Error error = compiler.LoadFile(path);
        hasChanged = hasChanged || !error;
        if (error) {
            std::cerr << error.message << "\n";
        }
    }
    return hasChanged;
}

bool Material::Compile(morl::Result& vertex, morl::Result& fragment)
{
    morl::Request request;
    request.target = "glsl";
    request.nodes = {"vertex_static", "transform", "texcoord"};
    request.macros = {{"LIGHTS", 1}, {"SUNS", 1}, {"SPECULAR", 1}, {"FOG", 0}, {"UV_TRANSFORM", 0}};
    morl::Error error = compiler.Compile(request, vertex);
    request.stage = MORL_FRAGMENT;
    request.nodes = {"surface_texture", "normal_vertex", "view_vector",
                     "lighting",        "fog",           "surface_out"};
    if (!error) {
        request.TakeSemantics(vertex);
        error = compiler.Compile(request, fragment);
    }
    if (error) {
        std::cerr << error.message << "\n";
        return false;
    }
    bool isSound = true;
    for (const morl::Result* result : {&vertex, &fragment}) {
        for (const morl_fault& fault : result->Faults()) {
            isSound = false;
            std::cerr << Copy(fault.node) << ":" << fault.line << ":" << fault.column << ": "
                      << Copy(fault.text) << "\n";
        }
    }
    return isSound;
}

// All that binds a shader to this engine.
void Material::Bind(const morl::Result& vertex, const morl::Result& fragment)
{
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX, std::string(vertex.Code())));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, std::string(fragment.Code())));
    for (const morl_declare& input : vertex.Inputs()) {
        program->addBindAttribLocation(Copy(input.name), LocationOf(input.semantic_kind));
    }
    for (const morl::Result* result : {&vertex, &fragment}) {
        for (const morl_declare& uniform : result->Uniforms()) {
            state->getOrCreateUniform(Copy(uniform.name), TypeOf(uniform));
        }
    }
    state->setAttributeAndModes(program);
}
