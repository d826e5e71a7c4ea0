/* SPDX-License-Identifier: MIT */
/*
 * An editor's loop in C: a node is changed, a pass that uses it is compiled in all targets, and the
 * faults are shown, or the texts with the place that each line is from, and what is to be bound.
 */
#include <morl/c/morl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* A string literal. */
#define TEXT(literal)                   \
    {                                   \
        (literal), sizeof(literal) - 1U \
    }
/* A text for "%.*s". */
#define SHOW(text) (int)(text).size, (text).data

static const char* const kNodeFiles[] = {"vertex_shader", "fragment_shader", "post_effect",
                                         "special_output"};

/* What somebody types into the node "unlit": first without a semicolon, then with it. */
static const morl_text kEdits[] = {
    TEXT("uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint\n}"),
    TEXT("uniform float3 tint;\nvoid main() {\n    float3 lit = albedo.xyz * tint;\n}"),
};

static morl_text to_text(const char* string)
{
    morl_text text;
    text.data = string;
    text.size = strlen(string);
    return text;
}

/* Shows why the last call has failed. */
static int failed(const morl_compiler* compiler)
{
    const morl_text message = morl_message(compiler);
    fprintf(stderr, "embed_c: %.*s\n", SHOW(message));
    return EXIT_FAILURE;
}

/* The log of the process: the report has all that this host shows. */
static void ignore(void* host, const morl_log_line* line)
{
    (void)host;
    (void)line;
}

static morl_status load_nodes(morl_compiler* compiler, const char* directory)
{
    size_t i;
    for (i = 0; i < sizeof kNodeFiles / sizeof *kNodeFiles; ++i) {
        char path[4096];
        morl_status status;
        snprintf(path, sizeof path, "%s/morl/%s.morl", directory, kNodeFiles[i]);
        status = morl_load_node_file(compiler, to_text(path));
        if (status != MORL_OK) {
            return status;
        }
    }
    return MORL_OK;
}

static morl_status edit(morl_compiler* compiler, morl_text content)
{
    static const morl_text references[] = {TEXT("surface_texture"), TEXT("surface_color")};
    static const morl_text name = TEXT("unlit");
    morl_node node;
    memset(&node, 0, sizeof node);
    node.size = sizeof node;
    node.name = name;
    node.content = content;
    node.references = references;
    node.reference_count = sizeof references / sizeof *references;
    return morl_set_node(compiler, &node);
}

static morl_status compile(morl_compiler* compiler, morl_text target, morl_result** result)
{
    static const morl_text nodes[] = {TEXT("surface_texture"), TEXT("unlit"), TEXT("surface_out")};
    static const morl_semantic semantics[] = {{TEXT("oUV"), TEXT("TEXCOORD0")}};
    static const morl_value samplers[] = {{TEXT("albedoMap"), 3, 0}};
    morl_request request;
    memset(&request, 0, sizeof request);
    request.size = sizeof request;
    request.nodes = nodes;
    request.node_count = sizeof nodes / sizeof *nodes;
    request.semantics = semantics;
    request.semantic_count = sizeof semantics / sizeof *semantics;
    request.samplers = samplers;
    request.sampler_count = sizeof samplers / sizeof *samplers;
    request.target = target;
    request.stage = MORL_FRAGMENT;
    request.wants_report = 1;
    return morl_compile(compiler, &request, result);
}

static void show_faults(const morl_result* result)
{
    morl_fault fault;
    size_t i;
    memset(&fault, 0, sizeof fault);
    fault.size = sizeof fault;
    for (i = 0; morl_get_fault(result, i, &fault) == MORL_OK; ++i) {
        printf("%.*s:%d:%d: %.*s\n", SHOW(fault.node), (int)fault.line, (int)fault.column,
               SHOW(fault.text));
    }
}

static void show_code(const morl_output* output)
{
    const char* rest = output->code.data;
    const char* const end_of_code = rest + output->code.size;
    size_t i;
    for (i = 0; i < output->line_count; ++i) {
        const morl_line line = output->lines[i];
        const char* const found = memchr(rest, '\n', (size_t)(end_of_code - rest));
        const char* const end = found != NULL ? found : end_of_code;
        char place[64] = "";
        if (line.node >= 0) {
            snprintf(place, sizeof place, "%.*s:%d", SHOW(output->nodes[line.node]),
                     (int)line.line);
        }
        printf("%-18s| %.*s\n", place, (int)(end - rest), rest);
        rest = end + 1;
    }
}

static void show_uniforms(const morl_result* result)
{
    morl_declare uniform;
    size_t i;
    memset(&uniform, 0, sizeof uniform);
    uniform.size = sizeof uniform;
    for (i = 0; morl_get_declare(result, MORL_UNIFORMS, i, &uniform) == MORL_OK; ++i) {
        printf("bind %.*s (%.*s)", SHOW(uniform.name), SHOW(uniform.type));
        if (uniform.number >= 0) {
            printf(" to register %d", (int)uniform.number);
        }
        printf("\n");
    }
}

/* One keystroke: the node has changed, and everything is compiled again. */
static morl_status show_all(morl_compiler* compiler)
{
    size_t count = 0;
    const morl_text* const targets = morl_targets(&count);
    size_t i;
    for (i = 0; i < count; ++i) {
        morl_result* result = NULL;
        morl_output output;
        const morl_status status = compile(compiler, targets[i], &result);
        if (status != MORL_OK) {
            return status;
        }
        memset(&output, 0, sizeof output);
        output.size = sizeof output;
        if (morl_get_output(result, &output) == MORL_OK) {
            printf("== %.*s\n", SHOW(targets[i]));
            show_faults(result);
            show_code(&output);
            show_uniforms(result);
        }
        morl_result_destroy(result);
    }
    return MORL_OK;
}

static int run(morl_compiler* compiler, const char* directory)
{
    size_t i;
    if (load_nodes(compiler, directory) != MORL_OK) {
        return failed(compiler);
    }
    for (i = 0; i < sizeof kEdits / sizeof *kEdits; ++i) {
        printf("=== edit %d\n", (int)i + 1);
        if (edit(compiler, kEdits[i]) != MORL_OK || show_all(compiler) != MORL_OK) {
            return failed(compiler);
        }
    }
    return EXIT_SUCCESS;
}

int main(int argc, char** argv)
{
    morl_compiler* compiler;
    int status;
    if (argc != 2) {
        fprintf(stderr, "usage: embed_c DIRECTORY (the one with the folder morl/)\n");
        return EXIT_FAILURE;
    }
    morl_set_log(ignore, NULL, NULL, NULL);
    compiler = morl_compiler_create();
    status = run(compiler, argv[1]);
    morl_compiler_destroy(compiler);
    return status;
}
