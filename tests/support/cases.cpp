// SPDX-License-Identifier: MIT
#include "support/cases.h"

#include "support/graph.h"
#include "support/log_capture.h"
#include "support/process.h"
#include "support/tree_text.h"

#include <json/json.h>
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace morl_test {
namespace {

namespace fs = std::filesystem;

std::string Decode(const std::string& text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "\\x") == 0 && i + 3 < text.size()) {
            bytes += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::string Encode(const std::string& bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte >= ' ' && byte < 0x7f) || c == '\n' || c == '\t') {
            text += c;
        } else {
            const char* const digits = "0123456789abcdef";
            text += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
        }
    }
    return text;
}

std::string ReplaceAll(std::string text, const std::string& from, const std::string& to)
{
    return ns_ruke::StringHelper::ReplaceAll(text, from, to);
}

std::vector<std::string> Words(const std::string& line)
{
    std::istringstream words(line);
    return {std::istream_iterator<std::string>(words), {}};
}

/// A case that is being run: a directory with its files, and a compiler for its nodes.
class CaseRun {
public:
    /// @param head  the line after "-- "
    /// @param text  the lines below it, without the last line break
    void Do(const std::string& head, const std::string& text);

    std::string rendered;

private:
    void Node(const std::vector<std::string>& words, const std::string& text);
    void Source(const std::string& text);
    void Load();
    void Request(const std::vector<std::string>& words);
    void RequestOf(ns_ruke::PassProperty pass);
    void Run(const std::string& command);

    void Outcome(const std::string& name, std::string text);
    void OutcomeOfLog();
    void WriteNodes();

    TemporaryDirectory directory;
    bool isPrepared = false;
    Json::Value nodes = Json::Value(Json::arrayValue);
    std::map<std::string, std::string> files;
    std::unique_ptr<ns_ruke::MorlCompiler> compiler;
    LogCapture log;
};

void CaseRun::Do(const std::string& head, const std::string& text)
{
    rendered += "-- " + head + "\n" + (text.empty() ? "" : text + "\n");
    const std::vector<std::string> words = Words(head);
    if (words[0] == "node") {
        Node(words, Decode(text));
    } else if (words[0] == "file") {
        files[words.at(1)] = Decode(text);
    } else if (words[0] == "source") {
        Source(Decode(text));
    } else if (words[0] == "load") {
        Load();
    } else if (words[0] == "request") {
        Request(words);
    } else if (words[0] == "run") {
        Run(Decode(head.substr(4)));
    } else {
        throw std::runtime_error("unknown section of a case: " + head);
    }
}

void CaseRun::Node(const std::vector<std::string>& words, const std::string& text)
{
    Json::Value node;
    node["name"] = words.at(1);
    node["content"] = text;
    for (std::size_t i = 2; i < words.size(); ++i) {
        node["ref"].append(words[i]);
    }
    nodes.append(node);
}

/// Writes the nodes and files that were given since the last call.
void CaseRun::WriteNodes()
{
    if (!isPrepared || !nodes.empty()) {
        isPrepared = true;
        WriteNodeFiles(directory.path, Json::writeString(Json::StreamWriterBuilder(), nodes));
    }
    nodes.clear();
    for (const auto& [name, text] : files) {
        WriteText(directory.path / name, text);
    }
    files.clear();
}

void CaseRun::Source(const std::string& text)
{
    ns_ruke::MorlProgram program;
    ns_ruke::MorlParser().Parse(text, program);
    OutcomeOfLog();
    Outcome("tree", TreeText(program));
}

void CaseRun::Load()
{
    WriteNodes();
    const InDirectory inDirectory(directory.path);
    std::ostringstream text;
    try {
        compiler = std::make_unique<ns_ruke::MorlCompiler>();
        for (const std::string& name : compiler->GetNodeNames()) {
            const ns_ruke::MorlNode* node = compiler->FindNode(name);
            text << "'" << node->GetName() << "' at " << node->GetX() << ", " << node->GetY();
            for (const std::string& reference : node->GetReference()) {
                text << " '" << reference << "'";
            }
            text << ": " << node->GetContent() << "\n";
        }
    } catch (const Json::LogicError& error) {
        text << "Json::LogicError: " << error.what() << "\n";
    }
    OutcomeOfLog();
    Outcome("nodes", text.str());
}

void CaseRun::Request(const std::vector<std::string>& words)
{
    if (compiler != nullptr && (!nodes.empty() || !files.empty())) {
        throw std::runtime_error("nodes and files come before the first request");
    }
    if (compiler == nullptr) {
        WriteNodes();
        const InDirectory inDirectory(directory.path);
        compiler = std::make_unique<ns_ruke::MorlCompiler>();
    }
    ns_ruke::PassProperty pass;
    pass.stage = words.at(2) == "vertex"     ? ns_ruke::kVertexStage
                 : words.at(2) == "fragment" ? ns_ruke::kFragmentStage
                                             : std::stoi(words.at(2));
    for (std::size_t i = 3; i < words.size(); ++i) {
        const std::size_t equals = words[i].find('=');
        const std::string name = words[i].substr(0, equals);
        const std::string value = equals == std::string::npos ? "" : words[i].substr(equals + 1);
        if (equals == std::string::npos) {
            pass.nodeNames.push_back(Decode(name));
        } else if (name.compare(0, 3, "in:") == 0) {
            pass.semantics[name.substr(3)] = value;
        } else if (name.compare(0, 8, "sampler:") == 0) {
            pass.samplerRegisters[name.substr(8)] = std::stoi(value);
        } else {
            pass.macros[name] = std::stoi(value);
        }
    }
    std::istringstream targets(words.at(1));
    std::vector<std::string> list = ns_ruke::MorlTargets();
    if (words[1] != "all") {
        list.clear();
        for (std::string target; std::getline(targets, target, ',');) {
            list.push_back(Decode(target));
        }
    }
    for (const std::string& target : list) {
        pass.target = target;
        RequestOf(pass);
    }
}

void CaseRun::RequestOf(ns_ruke::PassProperty pass)
{
    const auto semantics = pass.semantics;
    ns_ruke::ShaderOutput output;
    output.code = "untouched\n";
    compiler->Compile(pass, output);
    if (pass.semantics != semantics) {
        throw std::runtime_error("a request changed its own table");
    }
    Outcome(pass.target, output.code);
    std::string uniforms;
    for (const std::string& name : output.uniformNames) {
        uniforms += name + "\n";
    }
    Outcome("uniforms", uniforms);
    std::string table;
    const std::map<std::string, std::string> sorted(output.semantics.begin(),
                                                    output.semantics.end());
    for (const auto& [name, semantic] : sorted) {
        table += name + " " + semantic + "\n";
    }
    Outcome("semantics", table);
    OutcomeOfLog();
}

// In an environment that shows in no outcome. A pipe fails if one of its commands does.
void CaseRun::Run(const std::string& command)
{
    WriteNodes();
    const std::string examples = std::string(MORL_SOURCE_DIR) + "/examples";
    const std::string tools = fs::canonical(ToolPath()).parent_path().string();
    const std::string here = fs::canonical(directory.path).string();
    const ProcessResult result =
        RunProcess({"env", "-C", here, "-u", "NINJA_STATUS", "-u", "MAKEFLAGS", "-u", "MAKELEVEL",
                    "-u", "NO_COLOR", "LC_ALL=C", "PATH=" + tools + ":" + std::getenv("PATH"),
                    "EXAMPLES=" + examples, "bash", "-o", "pipefail", "-c", command});
    const auto portable = [&](std::string text) {
        const std::pair<std::string, std::string> names[] = {{"Z:" + here, "$DIRECTORY"},
                                                             {here, "$DIRECTORY"},
                                                             {examples, "$EXAMPLES"},
                                                             {tools, "$TOOLS"}};
        for (const auto& [path, name] : names) {
            text = ReplaceAll(text, path, name);
            text = ReplaceAll(text, ReplaceAll(path, " ", "$ "), name);  // as Ninja writes it
        }
        return text;
    };
    Outcome("status", result.status == 0 ? "" : std::to_string(result.status) + "\n");
    Outcome("output", portable(result.out));
    Outcome("errors", portable(result.err));
}

void CaseRun::Outcome(const std::string& name, std::string text)
{
    if (text.empty()) {
        return;
    }
    if (text.back() != '\n') {
        text += "\\\n";
    }
    rendered += "-> " + name + "\n" + Encode(text);
}

/// The messages since the last call. Of the two marks around a parse, only the second is shown, as
/// "parsed".
void CaseRun::OutcomeOfLog()
{
    std::string text;
    for (const LogCapture::Message& message : log.messages) {
        text += message.level == ns_ruke::LogLevel::Error ? "error " : "info ";
        text += (message.category == "Graphics" ? "" : message.category + ": ") + message.text;
        text += "\n";
    }
    log.messages.clear();
    text = ReplaceAll(text, "info Morl Compiler: Compiler Start\n", "");
    Outcome("log", ReplaceAll(text, "info Morl Compiler: Compiler End\n", "parsed\n"));
}

Case Carry(const std::string& written)
{
    CaseRun run;
    std::istringstream lines(written);
    std::string title;
    std::string head;
    std::string text;
    const auto finish = [&] {
        if (!head.empty()) {
            run.Do(head, text.substr(0, text.size() - (text.empty() ? 0 : 1)));
        }
    };
    bool isGiven = false;
    std::getline(lines, title);
    for (std::string line; std::getline(lines, line);) {
        const std::string mark = line.substr(0, 3);
        if (mark == "-- ") {
            finish();
            head = line.substr(3);
            text.clear();
        }
        isGiven = mark == "-- " || (isGiven && mark != "-> ");
        if (isGiven && mark != "-- ") {
            text += line + "\n";
        }
    }
    finish();
    return {title.substr(3), written, title + "\n" + run.rendered + "\n"};
}

bool NeedsPosix(const std::string& title)
{
    const std::string mark = " (POSIX)";
    return title.size() > mark.size() && title.substr(title.size() - mark.size()) == mark;
}

Case CarryOrExplain(const std::string& written)
{
    try {
        return Carry(written);
    } catch (const std::exception& error) {
        throw std::runtime_error(written.substr(0, written.find('\n')) + ": " + error.what());
    }
}

}  // namespace

std::vector<Case> RunCases(const fs::path& file, System system)
{
    const std::string text = ReadText(file);
    const std::string mark = "\n== ";
    if (text.empty() || text[0] != '#') {
        throw std::runtime_error(file.string() + " does not begin with a remark");
    }
    std::size_t start = std::min(text.find(mark), text.size() - 1) + 1;
    std::vector<Case> cases = {{"", text.substr(0, start), text.substr(0, start)}};
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(mark, start), text.size() - 1) + 1;
        const std::string written = text.substr(start, end - start);
        const std::string title = written.substr(3, written.find('\n') - 3);
        const bool isSkipped = system == System::Windows && NeedsPosix(title);
        cases.push_back(isSkipped ? Case{title, written, written, true} : CarryOrExplain(written));
        start = end;
    }
    return cases;
}

std::vector<fs::path> CaseFiles()
{
    std::vector<fs::path> files;
    for (const auto& entry :
         fs::recursive_directory_iterator(fs::path(MORL_SOURCE_DIR) / "tests/cases")) {
        if (entry.path().extension() == ".txt") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace morl_test
