// SPDX-License-Identifier: MIT
// The verdict of Microsoft's compiler on HLSL. It is never linked or shipped: every Windows has it.
#include "check/judge.h"
#include "path.h"

#include <windows.h>

#include <d3dcompiler.h>
#include <morl/morl.h>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace morlc {
namespace {

constexpr const char* kLibrary = "d3dcompiler_47.dll";

/// Whether a loaded library is Wine's own, which is another program.
bool IsOfWine(HMODULE library)
{
    constexpr std::string_view kMark = "Wine builtin DLL";
    constexpr std::size_t kPlace = 0x40;  // behind the header
    return std::string_view(reinterpret_cast<const char*>(library) + kPlace, kMark.size()) == kMark;
}

/// @param file empty: the system's
HMODULE Load(const std::string& file)
{
    if (file.empty()) {
        return LoadLibraryExA(kLibrary, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    }
    const std::filesystem::path path = std::filesystem::absolute(ToPath(file));
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

/// The name that stands at a place of a text; empty if none does.
/// @param place "LINE,COLUMN", both 1-based
std::string NameAt(const std::string& code, const std::string& place)
{
    const ns_ruke::TextLines lines(code);
    const auto line = static_cast<std::size_t>(std::atoi(place.c_str()));
    const std::size_t comma = std::min(place.find(','), place.size() - 1);
    const auto column = static_cast<std::size_t>(std::atoi(place.c_str() + comma + 1));
    if (line < 1 || column < 1 || line > lines.Starts().size()) {
        return {};
    }
    const std::size_t start = std::min(lines.Starts()[line - 1] + column - 1, code.size());
    std::size_t end = start;
    while (end < code.size() &&
           (std::isalnum(static_cast<unsigned char>(code[end])) != 0 || code[end] == '_')) {
        ++end;
    }
    return code.substr(start, end - start);
}

/// Reads "FILE(LINE,COLUMN): error CODE: TEXT"; the place may be missing.
bool ReadMessage(const std::string& line, const std::string& code, Stage stage,
                 VerdictMessage& message)
{
    for (const std::string_view kind : {"error X", "warning X"}) {
        const std::size_t start = line.find(kind);
        if (start == std::string::npos) {
            continue;
        }
        const std::size_t place = line.substr(0, start).rfind('(');
        message.line = place != std::string::npos ? std::atoi(line.c_str() + place + 1) : 0;
        message.stage = static_cast<int>(stage);
        message.isWarning = kind[0] == 'w';
        message.text = line.substr(start + kind.size() - 1);
        const std::size_t word = message.text.find('\'');
        const std::size_t wordEnd = message.text.find('\'', word + 1);
        if (wordEnd != std::string::npos) {
            message.word = message.text.substr(word + 1, wordEnd - word - 1);
        } else if (place != std::string::npos) {
            message.word = NameAt(code, line.substr(place + 1));
        }
        return true;
    }
    return false;  // "compilation failed", which everybody sees
}

struct Releasing {
    void operator()(ID3DBlob* blob) const { blob->Release(); }
};
using Blob = std::unique_ptr<ID3DBlob, Releasing>;

class Direct3dJudge : public Judge {
public:
    explicit Direct3dJudge(pD3DCompile newCompile) : compile(newCompile) {}

    std::string Name() const override { return "Microsoft's compiler"; }

    bool Takes(const ns_ruke::TargetInfo& target) const override
    {
        return target.Has(ns_ruke::kHlsl);
    }

    Verdict JudgeText(const ns_ruke::TargetInfo& target, Stage stage,
                      const std::string& code) const override
    {
        constexpr int kVersionUnit = 10;
        const std::string profile = std::string(stage == Stage::Vertex ? "vs_" : "ps_") +
                                    std::to_string(target.version / kVersionUnit) + "_" +
                                    std::to_string(target.version % kVersionUnit);
        ID3DBlob* bytes = nullptr;
        ID3DBlob* said = nullptr;
        const HRESULT result = compile(code.data(), code.size(), "morl", nullptr, nullptr, "main",
                                       profile.c_str(), 0, 0, &bytes, &said);
        const Blob ownedBytes(bytes);
        const Blob ownedSaid(said);
        Verdict messages;
        std::istringstream lines(
            said != nullptr ? std::string(static_cast<const char*>(said->GetBufferPointer()),
                                          said->GetBufferSize())
                            : std::string());
        for (std::string line;
             messages.size() < kMaxVerdictMessages && std::getline(lines, line);) {
            VerdictMessage message;
            if (ReadMessage(line.substr(0, line.find('\r')), code, stage, message)) {
                messages.push_back(message);
            }
        }
        const bool isRefused = std::any_of(messages.begin(), messages.end(),
                                           [](const auto& message) { return !message.isWarning; });
        if (FAILED(result) && !isRefused) {
            messages.emplace_back().stage = static_cast<int>(stage);
            messages.back().text = "Microsoft's compiler refuses this without saying why";
        }
        return messages;
    }

private:
    pD3DCompile compile;
};

}  // namespace

std::unique_ptr<Judge> MakeDirect3dJudge(const std::string& file, std::string& reason)
{
    HMODULE library = Load(file);
    const auto compile = library != nullptr ? reinterpret_cast<pD3DCompile>(reinterpret_cast<void*>(
                                                  GetProcAddress(library, "D3DCompile")))
                                            : nullptr;
    if (compile != nullptr && !IsOfWine(library)) {
        return std::make_unique<Direct3dJudge>(compile);
    }
    const std::string name = kLibrary;
    if (file.empty()) {
        reason = (compile != nullptr ? "Wine's " + name + " is not Microsoft's"
                                     : "there is no " + name) +
                 "; name one with --d3dcompiler";
        return nullptr;
    }
    throw std::runtime_error("--d3dcompiler: cannot use " + file + ": " +
                             (compile != nullptr ? "Wine loads its own in place of it; set "
                                                   "WINEDLLOVERRIDES=d3dcompiler_47=n"
                                                 : "it is not a " + name));
}

}  // namespace morlc
