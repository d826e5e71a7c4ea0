// SPDX-License-Identifier: MIT
// Stands in for direct3d_judge_windows.cpp: the compiler exists for Windows only.
#include "check/judge.h"

#include <stdexcept>

namespace morlc {

std::unique_ptr<Judge> MakeDirect3dJudge(const std::string& file, std::string& reason)
{
    if (!file.empty()) {
        throw std::runtime_error("--d3dcompiler: " + file + " can be loaded on Windows only");
    }
    reason = "Microsoft's compiler runs on Windows only";
    return nullptr;
}

}  // namespace morlc
