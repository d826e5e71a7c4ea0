#compdef morlc
# SPDX-License-Identifier: MIT
# Completion of morlc for zsh. Written by "morlc completion zsh"; changes are lost.

_morlc_nodes() {
    local directory=${opt_args[-C]:-${opt_args[--directory]:-.}}
    local -a nodes=(${(f)"$(morlc -C $directory list 2>/dev/null | sed -n 's/^\([^ ][^ ]*\)  .*/\1/p')"})
    _sequence compadd -a nodes
}

local command=compile i
for ((i = 2; i < CURRENT; ++i)); do
    case ${words[i]} in
    compile | check | build | list | graph | pack | unpack | text | merge | completion)
        command=${words[i]}
        words[i]=()
        ((--CURRENT))
        break
        ;;
    -C | --directory | --diagnostics | --color) ((++i)) ;;
    -*) ;;
    *) break ;;
    esac
done
if ((CURRENT == 2)) && [[ ${words[2]} != -* && $command == compile ]]; then
    local -a commands=(
        'compile:Compile one pass, or both passes of a shader'
        'check:Look for mistakes in shaders'
        'build:Build the shaders of a manifest'
        'list:List the nodes'
        'graph:Draw the nodes and their references'
        'pack:Turn node sources into node files'
        'unpack:Turn nodes into sources, text files that people edit'
        'text:Show a node file as sources'
        'merge:Merge two edits of a node file'
        'completion:Write the completion for a shell'
    )
    _describe command commands
fi
case $command in
compile)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*-o[The file to write ("-"\: standard output); with both passes, a directory]:FILE:_files' \
        '*--output=[The file to write ("-"\: standard output); with both passes, a directory]:FILE:_files' \
        '*-t[The target language, or all of them]:TARGET:(hlsl hlsl10 glsl glsles all)' \
        '*--target=[The target language, or all of them]:TARGET:(hlsl hlsl10 glsl glsles all)' \
        '*-s[The stage of the pass]:STAGE:(vertex fragment)' \
        '*--stage=[The stage of the pass]:STAGE:(vertex fragment)' \
        '*:NODE:_morlc_nodes' \
        '*--vertex=[Both passes\: the nodes of the vertex pass]:NODE,...:_morlc_nodes' \
        '*--fragment=[Both passes\: the nodes of the fragment pass]:NODE,...:_morlc_nodes' \
        '*-D[Give a macro a value]:NAME=INT:' \
        '*--define=[Give a macro a value]:NAME=INT:' \
        '*--sampler=[Give a sampler bound to SAUTO a register]:NAME=INT:' \
        '*--semantics-in=[Read the table of automatic texture coordinates that a vertex pass wrote]:FILE:_files' \
        '*--semantics-out=[Write the table of automatic texture coordinates, a JSON object]:FILE:_files' \
        && return
    ;;
check)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:FILE:_files' \
        '*-t[Check only these targets]:TARGET,...:(hlsl hlsl10 glsl glsles all)' \
        '*--target=[Check only these targets]:TARGET,...:(hlsl hlsl10 glsl glsles all)' \
        '*-s[One pass\: its stage]:STAGE:(vertex fragment)' \
        '*--stage=[One pass\: its stage]:STAGE:(vertex fragment)' \
        '*--vertex=[Both passes\: the nodes of the vertex pass]:NODE,...:_morlc_nodes' \
        '*--fragment=[Both passes\: the nodes of the fragment pass]:NODE,...:_morlc_nodes' \
        '*-D[Give a macro a value]:NAME=INT:' \
        '*--define=[Give a macro a value]:NAME=INT:' \
        '*--sampler=[Give a sampler bound to SAUTO a register]:NAME=INT:' \
        '*--shader=[Check only these shaders]:NAME,...:' \
        '*-W[Look for NAME, a check or a group of checks; or no longer, with no-NAME]:NAME:(verdict no-verdict undeclared-name no-undeclared-name names no-names unknown-reference no-unknown-reference redeclared no-redeclared repeated-name no-repeated-name argument-count no-argument-count unset-macro no-unset-macro macros no-macros unused-macro no-unused-macro unused-sampler no-unused-sampler macro-as-value no-macro-as-value broken-block no-broken-block lost-code no-lost-code open-block no-open-block stray-directive no-stray-directive no-effect no-no-effect while no-while block-in-loop no-block-in-loop block-in-declare-loop no-block-in-declare-loop second-main no-second-main main-in-block no-main-in-block unused-function no-unused-function macro-step no-macro-step lost-array-size no-lost-array-size unmatched-input no-unmatched-input stages no-stages varying-type no-varying-type varying-place no-varying-place varying-semantic no-varying-semantic missing-semantic no-missing-semantic unassigned-texcoord no-unassigned-texcoord shared-register no-shared-register no-position no-no-position no-color no-no-color unwritten-output no-unwritten-output mul-operand no-mul-operand targets no-targets mul-member no-mul-member matrix-product no-matrix-product matrix-index no-matrix-index matrix-constructor no-matrix-constructor matrix-cast no-matrix-cast matrix-helper no-matrix-helper matrix-helper-operand no-matrix-helper-operand matrix-helper-use no-matrix-helper-use matrix-shape no-matrix-shape int-for-float no-int-for-float width-mismatch no-width-mismatch scalar-constructor no-scalar-constructor constructor-arguments no-constructor-arguments vector-compare no-vector-compare int-vector no-int-vector double-minus no-double-minus modulo no-modulo cotangent no-cotangent projected-sampling no-projected-sampling sampler-type no-sampler-type unbound-sampler no-unbound-sampler shadow-map-color no-shadow-map-color shadow-map-compare no-shadow-map-compare second-color no-second-color loop-bound no-loop-bound computed-index no-computed-index reserved-name no-reserved-name copied-name no-copied-name bone-index no-bone-index vertex-texture no-vertex-texture color-input no-color-input color-output no-color-output mixed-texcoords no-mixed-texcoords)' \
        '*--werror[Warnings are errors]' \
        '*--show-generated[Also show the generated line that a compiler complains about]' \
        '*-j[Use N threads (0, the default\: one per processor)]:N:' \
        '*--jobs=[Use N threads (0, the default\: one per processor)]:N:' \
        '*--watch[Go on, and do it again whenever a file changes]' \
        '*-q[No progress]' \
        '*--quiet[No progress]' \
        && return
    ;;
build)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:FILE:_files' \
        '*-o[The directory to write to]:DIR:_files -/' \
        '*--output=[The directory to write to]:DIR:_files -/' \
        '*-j[Use N threads (0, the default\: one per processor)]:N:' \
        '*--jobs=[Use N threads (0, the default\: one per processor)]:N:' \
        '*--shader=[Build only these shaders]:NAME,...:' \
        '*--no-index[Do not touch the index]' \
        '*--index[Only write the index of the shaders built before]' \
        '*--ninja=[Only write a Ninja file, with one edge per shader]:FILE:_files' \
        '*--launcher=[In the Ninja file, put COMMAND in front of every compilation]:COMMAND:' \
        '*--depfile=[Write which files the outputs depend on, in a format for Ninja and Make]:FILE:_files' \
        '*--watch[Go on, and do it again whenever a file changes]' \
        '*-q[No progress, and no summary]' \
        '*--quiet[No progress, and no summary]' \
        && return
    ;;
list)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*-o[The file to write ("-"\: standard output)]:FILE:_files' \
        '*--output=[The file to write ("-"\: standard output)]:FILE:_files' \
        && return
    ;;
graph)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*-o[The file to write ("-"\: standard output)]:FILE:_files' \
        '*--output=[The file to write ("-"\: standard output)]:FILE:_files' \
        && return
    ;;
pack)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*-o[Write DIR/morl/, and leave the sources alone]:DIR:_files -/' \
        '*--output=[Write DIR/morl/, and leave the sources alone]:DIR:_files -/' \
        '*--depfile=[Write which files the outputs depend on, in a format for Ninja and Make]:FILE:_files' \
        '*--force[Also where comments of a node file will be lost]' \
        && return
    ;;
unpack)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:NODE:_morlc_nodes' \
        '*--force[Also where comments of a node file will be lost]' \
        && return
    ;;
text)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:FILE:_files' \
        && return
    ;;
merge)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:BASE:' \
        '*:OURS:' \
        '*:THEIRS:' \
        && return
    ;;
completion)
    _arguments -s \
        '*-h[Print this help message and exit]' \
        '*--help[Print this help message and exit]' \
        '*-C[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--directory=[Enter DIR first; its folder morl/ holds the nodes]:DIR:_files -/' \
        '*--diagnostics=[How problems are written\: text, or json (one object a line)]:FORMAT:(text json)' \
        '*--color=[When messages are coloured\: auto, on a terminal]:WHEN:(auto always never)' \
        '*--all[Show every message of a line, not only the first]' \
        '*--verbose[Also report which nodes are parsed]' \
        '*--version[Print the version and exit]' \
        '*:SHELL:' \
        && return
    ;;
esac
