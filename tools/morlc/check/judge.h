// SPDX-License-Identifier: MIT
// The compilers that "morlc check" asks about what is written. Each has its own source file, and a
// stand-in where it cannot be had.
#pragma once

#include "options.h"

#include <morl/translator/targets.h>
#include <memory>
#include <string>
#include <vector>

namespace morlc {

/// What a compiler says about a text.
struct VerdictMessage {
    int stage = -1;    ///< as PassProperty has it; -1: both
    int line = 0;      ///< 1-based, in the text; 0: no line
    std::string word;  ///< what the message is about; may be empty
    std::string text;
    bool isWarning = false;  ///< the compiler takes the text all the same
    bool isMissing = false;  ///< there is no verdict, and the text says why
};

using Verdict = std::vector<VerdictMessage>;

/// Nobody reads more messages about a text.
constexpr std::size_t kMaxVerdictMessages = 100;

/// A compiler that judges texts. It is asked with a stack of 64 MiB, outside of Windows in another
/// process.
class Judge {
public:
    Judge() = default;
    Judge(const Judge&) = delete;
    Judge& operator=(const Judge&) = delete;
    virtual ~Judge() = default;

    /// Its name, for messages.
    virtual std::string Name() const = 0;

    /// Whether it knows the language of a target.
    virtual bool Takes(const ns_ruke::TargetInfo& target) const = 0;

    /// What it says about a text by itself, in the order of its lines.
    virtual Verdict JudgeText(const ns_ruke::TargetInfo& target, Stage stage,
                              const std::string& code) const = 0;

    /// Whether it looks at what does not fit between the stages of a target.
    virtual bool Links(const ns_ruke::TargetInfo& /*target*/) const { return false; }

    /// What does not fit between two texts that are valid by themselves.
    virtual Verdict JudgePair(const ns_ruke::TargetInfo& /*target*/, const std::string& /*vertex*/,
                              const std::string& /*fragment*/) const
    {
        return {};
    }
};

/// glslang, as it is linked into the tool; null if it is not.
std::unique_ptr<Judge> MakeGlslangJudge();

/// Microsoft's compiler, d3dcompiler_47.dll, which is loaded here.
/// @param file the one to load; empty: the system's
/// @param reason why there is none
/// @return null if there is none
/// @throws std::runtime_error if `file` cannot be loaded
std::unique_ptr<Judge> MakeDirect3dJudge(const std::string& file, std::string& reason);

}  // namespace morlc
