/* SPDX-License-Identifier: MIT */
/**
 * @file
 * The compiler for hosts that cannot use C++ classes of the library: C, C#, Rust, Python, hosts of
 * another C++ compiler, and hosts without exceptions. C99 and later, C++11 and later.
 *
 * Texts are a pointer and a number of bytes. They may hold any bytes, need no NUL at their end, and
 * do not have one either when the library returns them. The pointer of an empty text may be null,
 * and so may that of an empty list.
 *
 * Ownership: what a host passes belongs to the host, and the library keeps no pointer to it. What
 * the library returns belongs to the handle that it came from, and is valid for as long as the
 * function says. The host frees nothing but handles, with the functions whose names end in
 * _destroy.
 *
 * Threads: a handle may be used by one thread at a time; different handles may be used at the same
 * time, and functions without a handle at any time. A result is independent of the compiler that
 * made it.
 *
 * Errors: nothing is thrown. If a function returns another status than MORL_OK, nothing has been
 * changed; morl_message says what is wrong if it took a compiler, morl_status_text says less.
 * Handles that are null, of another kind, or destroyed and not yet overwritten are invalid
 * arguments. Sizes and counts are at most MORL_MOST.
 *
 * Compatibility: a structure that begins with `size` may grow at its end; set `size` to its sizeof,
 * and all that you do not use to 0. The library reads no more than that, and sets to 0 what it does
 * not know, so hosts and libraries of different 2.x versions work together. Lists of such
 * structures are read one by one, for the same reason. Other structures, and the numbers of
 * constants, never change; lists of constants may grow.
 */
#ifndef MORL_C_MORL_H
#define MORL_C_MORL_H

/* This header is C as well. NOLINTBEGIN(modernize-*) */
#include <stddef.h>
#include <stdint.h>

#include "morl/core/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** How a call has ended. */
typedef int32_t morl_status;
enum {
    MORL_OK = 0,
    MORL_INVALID_ARGUMENT = 1, /**< a mistake of the host, such as a null pointer */
    MORL_OUT_OF_MEMORY = 2,
    MORL_FILE_NOT_READ = 3, /**< a file is missing or cannot be read */
    MORL_NODES_REFUSED = 4, /**< a text of nodes has faults: morl_get_call_fault */
    MORL_REFUSED = 5,       /**< an unknown node or target in a request: likewise */
    MORL_NOT_FOUND = 6,     /**< there is no such node, or no such element of a list */
    MORL_FAILED = 7,        /**< anything else */
    MORL_BUSY = 8,          /**< another call for this compiler is under way */
    MORL_LIMIT_REACHED = 9, /**< a limit of the request: likewise */
    MORL_CANCELLED = 10     /**< by morl_request::cancel */
};

/** The largest size of a text, in bytes, and the longest list. */
#define MORL_MOST 0x7fffffff

/** The level of a fault or a log message. */
enum { MORL_INFO = 0, MORL_ERROR = 1 };

/** The stage of a request. */
enum { MORL_VERTEX = 0, MORL_FRAGMENT = 1 };

/** What a declaration consists of. */
enum {
    MORL_UNKNOWN = 0, /**< "auto" that no target can write */
    MORL_FLOAT = 1,
    MORL_INT = 2,
    MORL_BONE_INDEX = 3, /**< "auto" bound to BLENDINDICES: integers in hlsl10, otherwise floats */
    MORL_SAMPLER_1D = 4, /**< this and all that follow are samplers */
    MORL_SAMPLER_1D_ARRAY = 5,
    MORL_SAMPLER_2D = 6,
    MORL_SAMPLER_2D_ARRAY = 7,
    MORL_SAMPLER_3D = 8,
    MORL_SAMPLER_3D_ARRAY = 9,
    MORL_SAMPLER_CUBE = 10
};

/** What a declaration is bound to. */
enum {
    MORL_UNBOUND = 0,
    MORL_POSITION = 1,
    MORL_NORMAL = 2,
    MORL_TANGENT = 3,
    MORL_BINORMAL = 4,
    MORL_BLEND_INDICES = 5,
    MORL_BLEND_WEIGHT = 6,
    MORL_TEXCOORD = 7, /**< its index is the number of the texture coordinate */
    MORL_SCREEN_POSITION = 8,
    MORL_COLOR = 9,    /**< its index is the render target */
    MORL_SAMPLER = 10, /**< its index is the register */
    MORL_OTHER_SEMANTIC = 11
};

/** The lists of declarations of a result. */
enum { MORL_UNIFORMS = 0, MORL_INPUTS = 1, MORL_OUTPUTS = 2 };

/** A compiler with its nodes. */
typedef struct morl_compiler morl_compiler;

/** The result of a request. */
typedef struct morl_result morl_result;

/** Both passes of a shader as one program. */
typedef struct morl_program morl_program;

/** Bytes of a text. */
typedef struct morl_text {
    const char* data;
    size_t size; /**< in bytes */
} morl_text;

/** A name with a number: a macro with its value, or a sampler with its register. */
typedef struct morl_value {
    morl_text name;
    int32_t value;
    int32_t reserved; /**< 0 */
} morl_value;

/** A declaration with the texture coordinate that it was given, such as "TEXCOORD0". */
typedef struct morl_semantic {
    morl_text name;
    morl_text semantic;
} morl_semantic;

/** What is wrong, and where. */
typedef struct morl_fault {
    size_t size;    /**< sizeof(morl_fault) */
    int32_t level;  /**< MORL_INFO or MORL_ERROR */
    int32_t line;   /**< 1-based, in the node's content or in the text of nodes; 0: no place */
    int32_t column; /**< 1-based, in bytes; 0: no place */
    int32_t reserved;
    morl_text file; /**< the name of the text of nodes; empty: none */
    morl_text node; /**< empty: none, or not known */
    morl_text text; /**< what is wrong */
    morl_text hint; /**< what to write instead, or what may have gone wrong; empty: not known */
} morl_fault;

/** A node. */
typedef struct morl_node {
    size_t size; /**< sizeof(morl_node) */
    morl_text name;
    morl_text content;           /**< the source */
    const morl_text* references; /**< the names of the nodes that this one builds on */
    size_t reference_count;
    float x; /**< the place on an editor's canvas; the compiler does not use it */
    float y;
} morl_node;

/** A request: one stage of a shader in one target language. */
typedef struct morl_request {
    size_t size;            /**< sizeof(morl_request) */
    const morl_text* nodes; /**< the names of the nodes that take part */
    size_t node_count;
    const morl_value* macros; /**< for "#if" and "#for" */
    size_t macro_count;
    const morl_semantic* semantics; /**< for the fragment stage: those of the vertex pass */
    size_t semantic_count;
    const morl_value* samplers; /**< registers of the samplers that are bound to SAUTO */
    size_t sampler_count;
    morl_text target;       /**< "hlsl", "hlsl10", "glsl" or "glsles" */
    int32_t stage;          /**< MORL_VERTEX or MORL_FRAGMENT */
    int32_t wants_report;   /**< not 0: the result has a report */
    int32_t wants_warnings; /**< not 0: the report has warnings; needs a report */
    int32_t reserved;       /**< 0 */
    /**
     * The most work in "#for" loops, in visits to what is repeated; 0: only the library's own
     * bound, which takes at most about 1.5 seconds. 200,000 suit an editor.
     */
    size_t most_loop_work;
    size_t most_text_bytes; /**< the longest text, in bytes; 0: no limit */
    /**
     * Any thread may set this to another value than 0, as a whole and atomically, which ends the
     * request; null: nobody can. Must live as long as the call.
     */
    const int32_t* cancel;
} morl_request;

/** What a line of the code was made from. */
typedef struct morl_line {
    int32_t node; /**< an index into morl_output::nodes; -1: from no node, such as the header */
    int32_t line; /**< 1-based, in the node's content; 0 without a node */
} morl_line;

/** The place in a node that a line of the code was made from. */
typedef struct morl_place {
    size_t size; /**< sizeof(morl_place) */
    morl_text node;
    int32_t line; /**< 1-based, in the node's content */
    int32_t reserved;
} morl_place;

/** A uniform, an input or an output. */
typedef struct morl_declare {
    size_t size; /**< sizeof(morl_declare) */
    morl_text name;
    morl_text type;         /**< as declared, such as "float4" or "auto" */
    morl_text written_type; /**< as the target spells it */
    morl_text array_size;   /**< as written; empty: no array */
    morl_text semantic;     /**< as declared, such as "TEXAUTO"; empty: not bound */
    int32_t base_type;      /**< MORL_FLOAT and so on */
    int32_t rows;           /**< of a vector or matrix; 1: a number; 0: a sampler, or unknown */
    int32_t columns;        /**< of a matrix; 1: a vector or a number; 0: a sampler, or unknown */
    int32_t elements; /**< the array size, with the values of macros; 0: no array, or not known */
    int32_t bytes;    /**< of all elements, closely packed; 0: a sampler, or not known */
    /** In hlsl10, where a uniform is in the constant buffer of the pass, in bytes; -1: not there */
    int32_t offset;
    int32_t semantic_kind;  /**< MORL_POSITION and so on */
    int32_t semantic_index; /**< such as 1 of "COLOR1"; -1: the target writes none */
    /** The sampler's register or the texture coordinate, as written, or the render target; -1 */
    int32_t number;
    int32_t is_used; /**< not 0: the entry function reads or assigns it */
    int32_t node;    /**< the node that declares it: an index into morl_output::nodes */
    int32_t line;    /**< 1-based, in the node's content */
    int32_t column;  /**< 1-based, in bytes */
    int32_t reserved;
    const int32_t* repeated_by; /**< further nodes that declare it; likewise indexes, ascending */
    size_t repeated_by_count;
} morl_declare;

/** A macro that conditions and loops of the nodes have asked for. */
typedef struct morl_macro {
    size_t size; /**< sizeof(morl_macro) */
    morl_text name;
    int32_t value;  /**< the value used */
    int32_t is_set; /**< 0: not by the request; it counted as 0, or its loop did not run */
} morl_macro;

/** Something that is probably a mistake, although the source has no fault. */
typedef struct morl_warning {
    size_t size;        /**< sizeof(morl_warning) */
    morl_text check;    /**< the name of the check, such as "undeclared-name" */
    morl_text node;     /**< empty: the request as a whole */
    morl_text text;     /**< what happens, and what to do */
    int32_t line;       /**< 1-based, in the node's content; 0: no place */
    int32_t column;     /**< 1-based, in bytes; 0: no place */
    int32_t is_refused; /**< whether compilers refuse the text because of it; 0 or 1 */
} morl_warning;

/** The output of a request, and the sizes of the lists of its report. */
typedef struct morl_output {
    size_t size; /**< sizeof(morl_output) */
    morl_text code;
    const morl_semantic* semantics; /**< that the vertex pass assigned, in ascending order */
    size_t semantic_count;
    const morl_text* uniforms; /**< the names of the uniforms, in the order of declaration */
    size_t uniform_count;

    /* The report. */
    const morl_text* nodes; /**< the names of those that were merged, in this order */
    size_t node_count;
    const morl_line* lines; /**< one for each line of the code */
    size_t line_count;
    const morl_text* unused_macros; /**< set by the request, but never asked for; ascending */
    size_t unused_macro_count;
    size_t fault_count; /**< of all nodes that took part, and of the request: morl_get_fault */
    size_t uniform_declare_count; /**< in the order in which they are written: morl_get_declare */
    size_t input_count;           /**< likewise */
    size_t output_count;          /**< likewise */
    size_t macro_count;           /**< in ascending order of the names: morl_get_macro */
    size_t warning_count;         /**< morl_get_warning */
    /** The size of the constant buffer in hlsl10, a multiple of 16; 0: none, or not known */
    size_t constant_bytes;
} morl_output;

/** A uniform of the vertex pass, the fragment pass, or both. */
typedef struct morl_program_uniform {
    size_t size; /**< sizeof(morl_program_uniform) */
    morl_text name;
    int32_t vertex;   /**< an index into the uniforms of the vertex pass; -1: it has none */
    int32_t fragment; /**< likewise of the fragment pass */
} morl_program_uniform;

/** What the vertex pass hands to the fragment pass. */
typedef struct morl_varying {
    size_t size; /**< sizeof(morl_varying) */
    morl_text name;
    int32_t output; /**< an index into the outputs of the vertex pass; -1: nothing feeds it */
    int32_t input;  /**< an index into the inputs of the fragment pass; -1: it is not read */
} morl_varying;

/** The sizes of the lists of a program. */
typedef struct morl_program_info {
    size_t size; /**< sizeof(morl_program_info) */
    size_t uniform_count;
    size_t varying_count;
    size_t warning_count; /**< of what does not fit together in the two passes */
} morl_program_info;

/** The version of the library: "2.0.0", with a NUL at its end. */
MORL_API const char* morl_version(void);

/** A status in words, with a NUL at its end. */
MORL_API const char* morl_status_text(morl_status status);

/** The targets, and how many there are; null and 0 if memory is short. They never change. */
MORL_API const morl_text* morl_targets(size_t* count);

/** Makes a compiler without nodes. Null: out of memory. */
MORL_API morl_compiler* morl_compiler_create(void);

/**
 * Destroys a compiler; null is allowed. MORL_BUSY while another call for it is under way, such as
 * the one that its log hears of: destroy it after that call.
 */
MORL_API morl_status morl_compiler_destroy(morl_compiler* compiler);

/**
 * What was wrong with the last call for this compiler that failed, as one line; empty if none has
 * failed. Valid until the next call for the compiler.
 */
MORL_API morl_text morl_message(const morl_compiler* compiler);

/**
 * A fault that made the last call for this compiler fail with MORL_NODES_REFUSED, MORL_REFUSED or
 * MORL_LIMIT_REACHED. Its texts are valid until the next call of another function for the compiler.
 * @param index from 0; MORL_NOT_FOUND after the last one
 */
MORL_API morl_status morl_get_call_fault(const morl_compiler* compiler, size_t index,
                                         morl_fault* fault);

/**
 * Loads all nodes of a text in the format of the node files, or none if it has faults. Nodes of the
 * same names are replaced. After this and the following functions, the next request parses those
 * nodes whose content has changed.
 * @param name what faults call the text, such as a path
 */
MORL_API morl_status morl_load_nodes(morl_compiler* compiler, morl_text name, morl_text text);

/** The same with a file. @param path in UTF-8 */
MORL_API morl_status morl_load_node_file(morl_compiler* compiler, morl_text path);

/**
 * Loads a node from its source, a text file of its own; docs/language.md describes the form. Words
 * of the header that it does not know, and further members, have no effect. MORL_NODES_REFUSED if
 * the header has faults: morl_get_call_fault.
 * @param file what faults call the text, such as a path
 * @param name the name of the node, unless the header says one
 */
MORL_API morl_status morl_load_source(morl_compiler* compiler, morl_text file, morl_text name,
                                      morl_text source);

/**
 * Writes the node of a source as a text in the format of the node files that has this one node,
 * with the further members of its header, so that tools lose nothing. The compiler's nodes stay as
 * they are. MORL_NODES_REFUSED as above. The text is valid until the next call of this function for
 * the compiler.
 * @param file what faults call the text, such as a path
 * @param name the name of the node, unless the header says one
 */
MORL_API morl_status morl_source_to_nodes(morl_compiler* compiler, morl_text file, morl_text name,
                                          morl_text source, morl_text* nodes);

/**
 * The way back: writes the node of a text in the format of the node files as a source.
 * MORL_NODES_REFUSED if the text has faults, or not one node. The text is valid until the next call
 * of this function for the compiler.
 * @param file what faults call the text, such as a path
 * @param with_name whether the header says the name; otherwise the name of the file has to
 */
MORL_API morl_status morl_nodes_to_source(morl_compiler* compiler, morl_text file, morl_text nodes,
                                          int with_name, morl_text* source);

/**
 * The names of the nodes that the last load for this compiler has brought, in their order. Valid
 * until the next load.
 */
MORL_API morl_status morl_get_loaded_nodes(morl_compiler* compiler, const morl_text** names,
                                           size_t* count);

/** Adds a node, or replaces the one of the same name. */
MORL_API morl_status morl_set_node(morl_compiler* compiler, const morl_node* node);

/** Removes a node; MORL_NOT_FOUND if there is none of this name. */
MORL_API morl_status morl_remove_node(morl_compiler* compiler, morl_text name);

/** Gets a node; MORL_NOT_FOUND if there is none. The texts are valid until the next call of this
 * function for the compiler. */
MORL_API morl_status morl_get_node(morl_compiler* compiler, morl_text name, morl_node* node);

/**
 * Writes a node as a source; MORL_NOT_FOUND if there is no such node. The text is valid until the
 * next call of this function for the compiler.
 * @param with_name whether the header says the name; otherwise the name of the file has to
 */
MORL_API morl_status morl_get_source(morl_compiler* compiler, morl_text name, int with_name,
                                     morl_text* source);

/** The names of all nodes, in ascending byte order. Valid until the next call of this function for
 * the compiler. */
MORL_API morl_status morl_get_node_names(morl_compiler* compiler, const morl_text** names,
                                         size_t* count);

/**
 * Runs a request. Faults in the nodes do not stop it: they are logged and reported, and the text is
 * written from what remains.
 * @param result gets a new result, which the host destroys; null unless MORL_OK is returned.
 */
MORL_API morl_status morl_compile(morl_compiler* compiler, const morl_request* request,
                                  morl_result** result);

/** The output of a request. Valid until the result is destroyed, as is all that follows. */
MORL_API morl_status morl_get_output(const morl_result* result, morl_output* output);

/** An element of a list of the report; MORL_NOT_FOUND after the last one. @param index from 0 */
MORL_API morl_status morl_get_fault(const morl_result* result, size_t index, morl_fault* fault);

/** Likewise. @param list MORL_UNIFORMS, MORL_INPUTS or MORL_OUTPUTS */
MORL_API morl_status morl_get_declare(const morl_result* result, int32_t list, size_t index,
                                      morl_declare* declare);

/** Likewise. */
MORL_API morl_status morl_get_macro(const morl_result* result, size_t index, morl_macro* macro);

/** Likewise. */
MORL_API morl_status morl_get_warning(const morl_result* result, size_t index,
                                      morl_warning* warning);

/**
 * Where a line of the code is from, for the messages of a driver; MORL_NOT_FOUND: from no node, or
 * there is no such line. @param line 1-based
 */
MORL_API morl_status morl_get_place(const morl_result* result, size_t line, morl_place* place);

/**
 * What a host binds by, as a JSON object: docs/reflection.schema.json. The result needs a report;
 * without one the text is empty, as it is if memory is short. Made when it is first asked for, so
 * by one thread at a time.
 */
MORL_API morl_text morl_get_json(morl_result* result);

/** Destroys a result; null is allowed. */
MORL_API void morl_result_destroy(morl_result* result);

/**
 * Puts the reports of both passes of a shader together.
 * @param vertex, fragment results for the same target; they may be destroyed afterwards
 * @param program gets a new program, which the host destroys; null unless MORL_OK is returned.
 */
MORL_API morl_status morl_link(const morl_result* vertex, const morl_result* fragment,
                               morl_program** program);

/** Valid until the program is destroyed, as is all that follows. */
MORL_API morl_status morl_get_program_info(const morl_program* program, morl_program_info* info);

/** MORL_NOT_FOUND after the last one. @param index from 0 */
MORL_API morl_status morl_get_program_uniform(const morl_program* program, size_t index,
                                              morl_program_uniform* uniform);

/** Likewise. */
MORL_API morl_status morl_get_varying(const morl_program* program, size_t index,
                                      morl_varying* varying);

/** Likewise; its place is in the fragment pass. */
MORL_API morl_status morl_get_program_warning(const morl_program* program, size_t index,
                                              morl_warning* warning);

/** Destroys a program; null is allowed. */
MORL_API void morl_program_destroy(morl_program* program);

/** A message of the log, and its parts. */
typedef struct morl_log_line {
    size_t size;    /**< sizeof(morl_log_line) of the library */
    int32_t level;  /**< MORL_INFO or MORL_ERROR */
    int32_t line;   /**< 1-based, in the node's content; 0: no place */
    int32_t column; /**< 1-based, in bytes; 0: no place */
    int32_t reserved;
    morl_text category;
    morl_text message;             /**< the whole message: one line, without a line break */
    morl_text node;                /**< empty: none */
    morl_text text;                /**< the message without its place */
    const morl_compiler* compiler; /**< whose request logs; null: none of this interface */
} morl_log_line;

/** Receives the messages of the process's log. The line and its texts are valid during the call. */
typedef void (*morl_log)(void* host, const morl_log_line* line);

/**
 * Sends the log of the whole process to a function, or with null back to standard error. It is
 * called on the thread that logs, for one thread at a time; it must not throw, nor wait for another
 * thread that logs. Calls for the compiler that logs are refused with MORL_BUSY. Once this function
 * has returned, the function set before is not called again.
 * @param host is passed on
 * @param previous_log, previous_host get what was set before, to set it again; null if that was not
 *        set by this function. Either may be null.
 */
MORL_API morl_status morl_set_log(morl_log log, void* host, morl_log* previous_log,
                                  void** previous_host);

/** Frees the memory that this thread keeps for its next request. */
MORL_API void morl_release_memory(void);

#ifdef __cplusplus
}
#endif
/* NOLINTEND(modernize-*) */

#endif
