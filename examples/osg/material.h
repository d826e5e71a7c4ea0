// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <morl/c/morl.hpp>
#include <osg/Program>
#include <osg/StateSet>
#include <string>
#include <vector>

/// A shader of the sample library as a material of OpenSceneGraph.
class Material {
public:
    /// @param newDirectory the one with the folder morl/
    explicit Material(std::string newDirectory);

    /// Loads the node files that have changed since the last call, and compiles both passes if
    /// there are any. With faults in the nodes the old shaders stay.
    /// @return whether there are new shaders
    bool Reload();

    /// Sets a uniform that the shaders have; others are ignored.
    template <class Value>
    void Set(const std::string& name, const Value& value)
    {
        if (osg::Uniform* uniform = state->getUniform(name)) {
            uniform->set(value);
        }
    }

    osg::ref_ptr<osg::StateSet> state = new osg::StateSet;

private:
    bool LoadChangedFiles();
    bool Compile(morl::Result& vertex, morl::Result& fragment);
    void Bind(const morl::Result& vertex, const morl::Result& fragment);

    std::string directory;
    morl::Compiler compiler;
    std::vector<std::filesystem::file_time_type> times;  ///< of the node files
};
