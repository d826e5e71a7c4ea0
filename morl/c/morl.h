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
 *
 * Compatibility: a structure that begins with `size` may grow at its end; set `size` to its sizeof,
 * and all that you do not use to 0. The library reads no more than that, and sets to 0 what it does
 * not know, so hosts and libraries of different versions work together. Other structures, and the
 * numbers of constants, never change.
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
    MORL_NODES_REFUSED = 4, /**< a text of nodes has faults; morl_faults has them */
    MORL_REFUSED = 5,       /**< an unknown node or target in a request; morl_faults has them */
    MORL_NOT_FOUND = 6,     /**< there is no such node */
    MORL_FAILED = 7         /**< anything else */
};

/** The level of a fault or a log message. */
enum { MORL_INFO = 0, MORL_ERROR = 1 };

/** The stage of a request. */
enum { MORL_VERTEX = 0, MORL_FRAGMENT = 1 };

/** A compiler with its nodes. */
typedef struct morl_compiler morl_compiler;

/** The result of a request. */
typedef struct morl_result morl_result;

/** Bytes of a text. */
typedef struct morl_text {
    const char* data;
    size_t size; /**< in bytes */
} morl_text;

/** A name with a number: a macro with its value, or a sampler with its register. */
typedef struct morl_value {
    morl_text name;
    int32_t value;
} morl_value;

/** A declaration with the texture coordinate that it was given, such as "TEXCOORD0". */
typedef struct morl_semantic {
    morl_text name;
    morl_text semantic;
} morl_semantic;

/** What is wrong, and where. */
typedef struct morl_fault {
    int32_t level;  /**< MORL_INFO or MORL_ERROR */
    int32_t line;   /**< 1-based, in the node's content or in the text of nodes; 0: no place */
    int32_t column; /**< 1-based, in bytes; 0: no place */
    morl_text file; /**< the name of the text of nodes; empty: none */
    morl_text node; /**< empty: none, or not known */
    morl_text text; /**< what is wrong */
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
    int32_t wants_report;   /**< not 0: also fills the report of morl_output */
    int32_t wants_warnings; /**< not 0: also fills its warnings; needs a report */
} morl_request;

/** What a line of the code was made from. */
typedef struct morl_line {
    int32_t node; /**< an index into morl_output::nodes; -1: from no node, such as the header */
    int32_t line; /**< 1-based, in the node's content; 0 without a node */
} morl_line;

/** A uniform, an input or an output. */
typedef struct morl_declare {
    morl_text name;
    morl_text type;         /**< as declared, such as "float4" or "auto" */
    morl_text written_type; /**< as the target spells it */
    morl_text array_size;   /**< as written; empty: no array */
    morl_text semantic;     /**< as declared, such as "TEXAUTO"; empty: not bound */
    int32_t elements;       /**< the array size if it is a number, otherwise 0 */
    int32_t number; /**< the sampler's register or the texture coordinate, as written; -1: none */
    int32_t node;   /**< the node that declares it: an index into morl_output::nodes */
    int32_t line;   /**< 1-based, in the node's content */
} morl_declare;

/** A macro that conditions and loops of the nodes have asked for. */
typedef struct morl_macro {
    morl_text name;
    int32_t value;  /**< the value used */
    int32_t is_set; /**< 0: not by the request; it counted as 0, or its loop did not run */
} morl_macro;

/** Something that is probably a mistake, although the source has no fault. */
typedef struct morl_warning {
    morl_text check; /**< the name of the check, such as "undeclared-name" */
    morl_text node;  /**< empty: the request as a whole */
    morl_text text;  /**< what happens, and what to do */
    int32_t line;    /**< 1-based, in the node's content; 0: no place */
    int32_t column;  /**< 1-based, in bytes; 0: no place */
} morl_warning;

/** The output of a request. */
typedef struct morl_output {
    size_t size; /**< sizeof(morl_output) */
    morl_text code;
    const morl_semantic* semantics; /**< that the vertex pass assigned, in ascending order */
    size_t semantic_count;
    const morl_text* uniforms; /**< the names of the uniforms, in the order of declaration */
    size_t uniform_count;

    /* The report. */
    const morl_fault* faults; /**< of all nodes that took part, and of the request */
    size_t fault_count;
    const morl_text* nodes; /**< the names of those that were merged, in this order */
    size_t node_count;
    const morl_line* lines; /**< one for each line of the code */
    size_t line_count;
    const morl_declare* uniform_declares; /**< in the order in which they are written */
    size_t uniform_declare_count;
    const morl_declare* inputs; /**< likewise */
    size_t input_count;
    const morl_declare* outputs; /**< likewise */
    size_t output_count;
    const morl_macro* macros; /**< in ascending order of the names */
    size_t macro_count;
    const morl_text* unused_macros; /**< set by the request, but never asked for */
    size_t unused_macro_count;

    const morl_warning* warnings;
    size_t warning_count;
} morl_output;

/** The version of the library: "1.1.0", with a NUL at its end. */
MORL_API const char* morl_version(void);

/** A status in words, with a NUL at its end. */
MORL_API const char* morl_status_text(morl_status status);

/** The targets, and how many there are; null and 0 if memory is short. They never change. */
MORL_API const morl_text* morl_targets(size_t* count);

/** Makes a compiler without nodes. Null: out of memory. */
MORL_API morl_compiler* morl_compiler_create(void);

/**
 * Destroys a compiler; null is allowed. Does nothing while the compiler is at work, which only the
 * log's function can try: destroy it after that call.
 */
MORL_API void morl_compiler_destroy(morl_compiler* compiler);

/**
 * What was wrong with the last call for this compiler that failed, as one line; empty if none has
 * failed. Valid until the next call for the compiler.
 */
MORL_API morl_text morl_message(const morl_compiler* compiler);

/**
 * The faults that made the last call for this compiler fail with MORL_NODES_REFUSED or
 * MORL_REFUSED; after any other call there are none. Valid until the next call for the compiler.
 */
MORL_API const morl_fault* morl_faults(const morl_compiler* compiler, size_t* count);

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

/** The output of a request. Valid until the result is destroyed. */
MORL_API morl_status morl_get_output(const morl_result* result, morl_output* output);

/**
 * What to write instead of the cause of a fault, or what may have gone wrong, as one line; empty if
 * nothing is known. Valid until the result is destroyed.
 * @param fault an index into morl_output::faults
 */
MORL_API morl_text morl_get_hint(const morl_result* result, size_t fault);

/** Destroys a result; null is allowed. */
MORL_API void morl_result_destroy(morl_result* result);

/** A message of the log, and its parts. */
typedef struct morl_log_line {
    size_t size;    /**< sizeof(morl_log_line) of the library */
    int32_t level;  /**< MORL_INFO or MORL_ERROR */
    int32_t line;   /**< 1-based, in the node's content; 0: no place */
    int32_t column; /**< 1-based, in bytes; 0: no place */
    morl_text category;
    morl_text message; /**< the whole message: one line, without a line break */
    morl_text node;    /**< empty: none */
    morl_text text;    /**< the message without its place */
} morl_log_line;

/** Receives the messages of the process's log. The line and its texts are valid during the call. */
typedef void (*morl_log)(void* host, const morl_log_line* line);

/**
 * Sends the log of the whole process to a function, or with null back to standard error. It is
 * called on the thread that logs, for one thread at a time; it must not throw, nor wait for another
 * thread that logs. Calls for the compiler that logs are refused. Once this function has returned,
 * the function set before is not called again.
 * @param host is passed on
 */
MORL_API morl_status morl_set_log(morl_log log, void* host);

/** Frees the memory that this thread keeps for its next request. */
MORL_API void morl_release_memory(void);

#ifdef __cplusplus
}
#endif
/* NOLINTEND(modernize-*) */

#endif
