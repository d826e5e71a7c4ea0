// SPDX-License-Identifier: MIT
#pragma once

#include "morl/core/export.h"
#include "morl/core/report_fault.h"
#include "morl/core/text_lines.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ns_ruke {

class MorlParser;
struct MorlProgram;

/// One node of the shader graph: a piece of Morl source with the names of the nodes that it refers
/// to.
///
/// A node owns the program that was parsed from its content and keeps it until it is compiled
/// again. Copies are shallow: a copied node shares the program, and both destructors would delete
/// it.
class MORL_API MorlNode {
public:
    MorlNode();
    MorlNode(const MorlNode&) = default;
    MorlNode& operator=(const MorlNode&) = default;
    virtual ~MorlNode();

    void SetName(std::string newName);
    std::string GetName() const;
    const std::string& Name() const { return name; }

    /// The node's place on the canvas of an editor; the compiler does not read it.
    void SetPosition(float newX, float newY);
    float GetX() const;
    float GetY() const;

    /// Replaces the source. A program that was parsed before stays in use until the target changes.
    void SetContent(std::string newContent);
    std::string GetContent() const;
    const std::string& Content() const { return content; }

    /// Appends a name to the references; duplicates are kept.
    void AddReference(std::string reference);
    std::vector<std::string> GetReference() const;
    const std::vector<std::string>& References() const { return references; }

    /// Whether the node has no program, or one that was parsed for another target. Target names are
    /// compared exactly.
    bool NeedCompile(std::string target) const;

    /// Parses the content, even if NeedCompile is false. If an exception passes through, the node
    /// is left without a program.
    void Compile(MorlParser* parser, std::string target);

    /// Where in the content a byte is, such as the beginning of a node of the program's tree. It
    /// remembers the lines, so like everything of a compiler this is for one thread at a time.
    /// @param offset counted from 0
    TextPlace PlaceOf(std::uint32_t offset) const;

    /// The faults that were logged when the program was parsed.
    const std::vector<ReportFault>& GetFaults() const { return faults; }

    /// The parsed program, or null. The node owns it.
    MorlProgram* GetProgram();
    const MorlProgram* Program() const { return program; }

    /// Takes over the parsed program of a node that has the same content. Otherwise does nothing.
    void TakeProgram(MorlNode& other) noexcept;

private:
    void AddHints();
    const TextLines& Lines() const;

    friend class MorlCompiler;

    std::string name;
    float x = 0.0F;
    float y = 0.0F;
    std::string content;
    std::vector<std::string> references;
    std::string compiledTarget;
    MorlProgram* program = nullptr;
    std::uint64_t lastRequest = 0;    ///< the number of the last one that has selected the node
    std::vector<ReportFault> faults;  ///< of the program
    mutable std::optional<TextLines> lines;  ///< of the content, once they are needed
};

}  // namespace ns_ruke
