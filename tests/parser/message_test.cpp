// SPDX-License-Identifier: MIT
// Malformed sources: every message with its location, and what is kept all the same.
#include "support/log_capture.h"
#include "support/tree_text.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using namespace ns_ruke;
using Strings = std::vector<std::string>;

struct Fault {
    const char* source;
    Strings messages;  ///< "LINE:COLUMN TEXT"
    const char* tree;
};

/// "Morl Compiler(line:L,ch:C): TEXT" as "L:C TEXT".
std::string Shorten(const std::string& message)
{
    const ns_ruke::LogLine line(LogLevel::Error, message);
    EXPECT_GT(line.line, 0) << message;
    return std::to_string(line.line) + ":" + std::to_string(line.column) + " " + line.text;
}

const std::vector<Fault>& Faults()
{
    static const std::vector<Fault> faults = {
        // Program level.
        {"in float a;\n", {"2:1 invalid var declare:"}, "in{26 1 a}"},
        {";", {"1:2 invalid var declare:"}, ""},
        {"#endif\nin float a;", {"1:7 invalid var declare:#endif"}, "in{26 1 a}"},
        {"foo bar\nin float a;", {"1:4 invalid var declare:foo"}, "in{26 1 a}"},
        {"\t\xc3\xa9 x\nin float a;", {"1:2 invalid var declare:"}, "in{26 1 a}"},
        // Declarations.
        {"uniform void x;", {"1:13 invalid var type:void"}, ""},
        {"uniform float 3;", {"1:16 not valid var:3"}, ""},
        {"uniform float );\nin float a;", {"1:16 not valid var:float"}, "in{26 1 a}"},
        {"uniform float4 c = 1;", {"1:19 invalid end of line :"}, ""},
        {"uniform float4 c d;", {"1:19 invalid end of line :d"}, ""},
        {"uniform float4 c[2;\nin float a;", {"1:19 miss ']':"}, "in{26 1 a}"},
        {"in float2 uv : (myReg);\nin float a;", {"1:22 miss ';':"}, "in{26 1 a}"},
        {"in float2 uv : (3);\nin float a;\nin float b;",
         {"1:18 not valid var:3", "2:1 miss ';':"},
         "in{26 1 b}"},
        {"in float2 uv : (a b);\nin float a;\nin float b;",
         {"1:19 miss')':", "2:1 miss ';':"},
         "in{26 1 b}"},
        {"out float4 c : WRONG;\nin float a;\nin float b;",
         {"1:21 need a register symbol:WRONG", "2:1 miss ';':"},
         "in{26 1 b}"},
        {"in float a\nin float b;", {"2:3 invalid end of line :in"}, ""},
        // Functions.
        {"float f(float a) { x = a; }\nin float b;",
         {},
         "in{26 1 b} functions{1 f{- 1 a}{assign(- x = a);}}"},
        {"float4 max() { }", {"1:11 not valid var:max"}, "functions{4 max{}{}}"},
        {"void main( ) {\n}", {"1:13 invalid var type:", "2:1 miss '{':"}, "main0 main{}{}"},
        {"float f(float a, float)\n{ x = 1;\n}",
         {"1:24 not valid var:float", "2:1 miss ',':", "3:1 miss '{':"},
         "functions{1 f{- 1 a - 1 a}{}}"},
        {"void main() { x = 1;", {"1:21 miss '}':"}, "main0 main{}{assign(- x = 1);}"},
        {"void main() {\n @ y = 2;\n x = 1; }",
         {"2:2 unexpected character:@"},
         "main0 main{}{- assign(- x = 1);}"},
        {"void main() {\n \xc3\xa9\xc3\xa9z;\n x = 1; }",
         {"2:2 unexpected character:\xc3\xa9\xc3\xa9"},
         "main0 main{}{- assign(- x = 1);}"},
        {"void main() { if (a) {\n {\n } x = 1; }",
         {"2:2 unexpected character:{"},
         "main0 main{}{if(a){-}{} assign(- x = 1);}"},
        // Expressions.
        {"void main() { x = !a;\n}", {"1:20 expression error:"}, "main0 main{}{-}"},
        {"void main() { x = +a;\n}", {"1:20 expression error:"}, "main0 main{}{-}"},
        {"void main() { x = a * ;\n}",
         {"1:24 expression error:", "2:1 miss ';':", "2:2 miss '}':"},
         "main0 main{}{-}"},
        {"void main() { x = max(a, ;\n\n}",
         {"1:27 expression error:", "2:1 parameter parse failed:"},
         "main0 main{}{-}"},
        {"void main() { x = max a;\n}", {"1:23 miss '(':"}, "main0 main{}{-}"},
        {"void main() { x = max(a b);\n}", {"1:25 miss ',':"}, "main0 main{}{-}"},
        {"void main() { x = f(a);\n}", {"1:20 miss ';':"}, "main0 main{}{-}"},
        {"void main() { x = a[1;\n; y = 2; }",
         {"1:22 miss ']':"},
         "main0 main{}{assign(- x = (a [] 1)); assign(- y = 2);}"},
        {"void main() { x = i++ + 1;\n}", {"1:23 miss ';':"}, "main0 main{}{-}"},
        {"void main() { x = (;\n) - 1; }",
         {"1:21 expression error:"},
         "main0 main{}{assign(- x = (<-> - 1));}"},
        {"void main() { x = -(;\n;\n+ b; }",
         {"1:22 expression error:", "2:1 miss ')':"},
         "main0 main{}{assign(- x = ((- - -) + b));}"},
        // Statements.
        {"void main() { float4 c += 1;\n}", {"1:24 wrong var definition:c"}, "main0 main{}{-}"},
        {"void main() { float4 4;\n}", {"1:23 not valid var:4"}, "main0 main{}{-}"},
        {"void main() { x y;\n}", {"1:18 need assign operator :y"}, "main0 main{}{-}"},
        {"void main() { return x;\n}", {"1:23 need assign operator :x"}, "main0 main{}{-}"},
        {"void main() { else { x = 1;\n} }",
         {"1:20 need if:", "2:3 invalid var declare:"},
         "main0 main{}{-}"},
        {"void main() { if (;\n) x = 1; }",
         {"1:20 expression error:", "2:1 parse expression error:", "2:11 miss '}':"},
         "main0 main{}{-}"},
        {"void main() { for (i = 0; i; i++) x = 1;\n}",
         {"1:28 need control expression:"},
         "main0 main{}{-}"},
        {"void main() { for (i = 0 i < 1; i++) x = 1;\n\n}",
         {"1:26 miss ';':", "2:1 need assign expression:"},
         "main0 main{}{-}"},
        {"void main() { for ($i = 0; $i < 1; $i++) x = 1;\n}",
         {"1:27 need assign expression:"},
         "main0 main{}{-}"},
        {"void main() { discard }", {"1:23 miss ';':", "1:24 miss '}':"}, "main0 main{}{-}"},
        // Macro blocks.
        {"#for 3 : 0\nin float a;", {"1:7 not valid marco name:3"}, "in{26 1 a}"},
        {"#for i : n\nin float a;", {"1:11 not valid number:n"}, "in{26 1 a}"},
        {"#for i 0\nin float a;", {"1:8 miss ':':"}, "in{26 1 a}"},
        {"#if A\nin float a;", {"2:12 miss '#endif':"}, "in{#if26(A){26 1 a}{}}"},
        {"#for N : 1\nin float a;\n", {"3:1 miss '#endfor':"}, "in{#for(N:1){26 1 a}}"},
        {"#if A in float a; #endfor\n#endif",
         {"1:26 invalid var declare:#endfor"},
         "in{#if26(A){26 1 a}{}}"},
        {"#if !A\nin float a;\n#endif", {"1:6 expression error:"}, "in{#if26(-){26 1 a}{}}"},
        {"void main() { #if A\nx = 1;\n;\n#else\n#endif\ny = 1; }",
         {},
         "main0 main{}{- - - assign(- y = 1);}"},
        {"void main() { #if A x = 1;",
         {"1:27 miss '#endif':", "1:27 miss '}':"},
         "main0 main{}{-}"},
        {"void main() { #for N : 0 x = 1; }", {}, "main0 main{}{-}"},
        {"void main() { #for N : 0 x = 1;",
         {"1:32 miss '#endfor':", "1:32 miss '}':"},
         "main0 main{}{-}"},
    };
    return faults;
}

TEST(Message, ReportsFaultsWhereTheyAre)
{
    for (const Fault& fault : Faults()) {
        const morl_test::LogCapture log;
        MorlParser parser;
        MorlProgram program;
        parser.Parse(fault.source, program);
        Strings messages;
        for (const std::string& message : log.errors) {
            messages.push_back(Shorten(message));
        }
        EXPECT_EQ(messages, fault.messages) << fault.source;
        EXPECT_EQ(morl_test::TreeText(program), fault.tree) << fault.source;
        EXPECT_EQ(log.infos,
                  (Strings{"Morl Compiler: Compiler Start", "Morl Compiler: Compiler End"}));
    }
}

TEST(Message, WritesLocationsInFull)
{
    const morl_test::LogCapture log;
    MorlParser parser;
    MorlProgram program;
    parser.Parse("in float a;\r\nuniform float4 c\t%s;", program);
    EXPECT_EQ(log.errors, Strings{"Morl Compiler(line:2,ch:19): invalid end of line :"});
    EXPECT_EQ(log.categories, Strings(3, "Graphics"));
}

}  // namespace
