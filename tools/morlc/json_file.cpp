// SPDX-License-Identifier: MIT
#include "json_file.h"

#include "path.h"

#include <morl/core/json_text.h>
#include <morl/core/messages.h>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <memory>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <system_error>
#include <utility>

namespace morlc {
namespace {

/// Collects what is written to a stream, in parts of bounded size: in one string, a long text would
/// at times be held twice or three times.
struct PartsBuffer : std::streambuf {
    std::vector<std::string> parts;

protected:
    int_type overflow(int_type c) override
    {
        const char character = traits_type::to_char_type(c);
        xsputn(&character, 1);
        return c;
    }
    std::streamsize xsputn(const char* text, std::streamsize count) override
    {
        constexpr std::size_t kPart = std::size_t{1} << 20U;
        const auto size = static_cast<std::size_t>(count);
        if (parts.empty() || parts.back().size() + size > kPart) {
            parts.emplace_back();
        }
        parts.back().append(text, size);
        return count;
    }
};

Json::StreamWriterBuilder WriterBuilder()
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    builder["enableYAMLCompatibility"] = true;  // "name": value, without a blank before the colon
    return builder;
}

DiagnosticError Unreadable(const std::string& file, int error)
{
    return DiagnosticError(
        ErrorAt({}, "cannot read " + file + ": " + std::generic_category().message(error)));
}

/// Turns what the reader says about an invalid document into an error with its first message.
Diagnostic JsonError(const SourceText& source, const std::string& errors)
{
    const ns_ruke::JsonFault fault = ns_ruke::FirstJsonFault(errors);
    Diagnostic diagnostic = ErrorAt(source.At(fault.place.line, fault.place.column),
                                    ns_ruke::messages::kNotJson + fault.text);
    for (const char* const quote : {"\u201C", "\u201D", "\u201E", "\u2018", "\u2019"}) {
        if (diagnostic.place.excerpt.line.find(quote) != std::string::npos) {
            diagnostic.hint = std::string("write '\"' in place of '") + quote + "'";
            break;
        }
    }
    return diagnostic;
}

}  // namespace

std::string AsGiven(const std::string& prefix, const std::filesystem::path& path)
{
    return path.has_root_directory() ? PathText(path) : prefix + PathText(path);
}

SourceText ReadSource(const std::string& path, const std::string& prefix)
{
    const std::filesystem::path location = ToPath(path);
    const std::string shown = AsGiven(prefix, location);
    if (std::error_code ignored; std::filesystem::is_directory(location, ignored)) {
        throw Unreadable(shown, EISDIR);
    }
    errno = 0;
    std::ifstream file(location, std::ios::binary);
    std::string text;
    if (file && file.peek() != std::ifstream::traits_type::eof()) {
        text.assign(std::istreambuf_iterator<char>(file), {});
    }
    if (errno != 0 && text.empty()) {
        throw Unreadable(shown, errno);
    }
    const std::string mark = "\xEF\xBB\xBF";
    if (text.compare(0, mark.size(), mark) == 0) {
        text.erase(0, mark.size());
    }
    return SourceText(shown, std::move(text));
}

void ParseJson(const Json::CharReaderBuilder& builder, const std::string& text,
               const SourceText& source, Json::Value& root)
{
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    std::string errors;
    bool isValid = false;
    try {
        isValid = reader->parse(text.data(), text.data() + text.size(), &root, &errors);
    } catch (const Json::RuntimeError&) {
        errors = ns_ruke::messages::kNestedTooDeeply;
    }
    if (!isValid) {
        throw DiagnosticError(JsonError(source, errors));
    }
}

JsonFile::JsonFile(const std::string& path, const std::string& prefix)
    : source(ReadSource(path, prefix))
{
    if (source.Text().empty()) {
        throw DiagnosticError(ErrorAt({source.File()}, "the file is empty"));
    }
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    ParseJson(builder, source.Text(), source, root);
}

Place JsonFile::At(const Json::Value& value) const
{
    return source.AtByte(static_cast<std::size_t>(value.getOffsetStart()));
}

Place JsonFile::AtName(const Json::Value& member, const std::string& name) const
{
    const auto value = static_cast<std::size_t>(member.getOffsetStart());
    const std::size_t start = source.Text().rfind("\"" + name + "\"", value);
    return source.AtByte(start == std::string::npos ? value : start);
}

void JsonFile::Fail(const Json::Value& value, const std::string& text) const
{
    throw DiagnosticError(ErrorAt(At(value), text));
}

Json::Value ParseJson(const std::string& text)
{
    Json::Value root;
    std::istringstream(text) >> root;
    return root;
}

std::string FormatJsonLine(const Json::Value& value)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    return Json::writeString(builder, value);
}

std::string FormatJsonFile(const Json::Value& root)
{
    return Json::writeString(WriterBuilder(), root) + "\n";
}

std::vector<std::string> FormatLongJsonFile(const Json::Value& root)
{
    PartsBuffer buffer;
    std::ostream stream(&buffer);
    const std::unique_ptr<Json::StreamWriter> writer(WriterBuilder().newStreamWriter());
    writer->write(root, &stream);
    stream << '\n';
    return std::move(buffer.parts);
}

}  // namespace morlc
