# SPDX-License-Identifier: MIT
"""A recipe for Conan 2, for the sources that it lies in: conan create packaging/conan"""
import os

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy


class Morl(ConanFile):
    name = "morl"
    version = "2.0.0"
    license = "MIT"
    description = "Shader compiler for node graphs"
    settings = "os", "compiler", "build_type", "arch"
    options = {"shared": [True, False]}
    default_options = {"shared": True}

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "LICENSE", "*.md", "morl/*", "cmake/*", "docs/*", "examples/*",
                        "bindings/js/README.md"):
            copy(self, pattern, root, self.export_sources_folder)

    def requirements(self):
        self.requires("jsoncpp/[>=1.9.5 <2]")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["MORL_TESTS"] = "OFF"
        toolchain.cache_variables["MORL_TOOLS"] = "OFF"
        toolchain.generate()
        CMakeDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The package's own CMake files know both libraries.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs.append(os.path.join("lib", "cmake", "morl"))
        self.cpp_info.libs = ["morl"]
        if not self.options.shared:
            self.cpp_info.defines.append("MORL_STATIC")
