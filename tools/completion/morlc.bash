# SPDX-License-Identifier: MIT
# Completion of morlc for bash. Written by "morlc completion bash"; changes are lost.

# The names of the nodes in the directory that the command line selects.
_morlc_nodes() {
    local directory=. i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        -C | --directory) directory=${COMP_WORDS[i + 1]} ;;
        esac
    done
    "${COMP_WORDS[0]}" -C "$directory" list 2>/dev/null | sed -n 's/^\([^ ][^ ]*\)  .*/\1/p'
}

# Offers values of a kind. Only the last name of a list is completed.
_morlc_values() {
    local before=""
    case $1 in
    directory) mapfile -t COMPREPLY < <(compgen -d -- "$word") ;;
    file) mapfile -t COMPREPLY < <(compgen -f -- "$word") ;;
    nodes)
        [[ $word == *,* ]] && before=${word%,*},
        mapfile -t COMPREPLY < <(compgen -P "$before" -W "$(_morlc_nodes)" -- "${word##*,}")
        ;;
    words) mapfile -t COMPREPLY < <(compgen -W "$2" -- "$word") ;;
    file-or-nodes)
        case " ${COMP_WORDS[*]} " in
        *" -s "* | *" --stage "*) _morlc_values nodes ;;
        *) _morlc_values file ;;
        esac
        ;;
    esac
}

_morlc() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        compile | check | build | list | graph | pack | unpack | text | merge | completion)
            command=${COMP_WORDS[i]}
            break
            ;;
        -C | --directory | --diagnostics | --color) ((++i)) ;;
        -*) ;;
        *) break ;;
        esac
    done
    case "${command:-compile} $previous" in
    "compile -C" | "compile --directory") _morlc_values directory; return ;;
    "compile --diagnostics") _morlc_values words "text json"; return ;;
    "compile --color") _morlc_values words "auto always never"; return ;;
    "compile -o" | "compile --output") _morlc_values file; return ;;
    "compile -t" | "compile --target") _morlc_values words "hlsl hlsl10 glsl glsles all"; return ;;
    "compile -s" | "compile --stage") _morlc_values words "vertex fragment"; return ;;
    "compile --vertex") _morlc_values nodes; return ;;
    "compile --fragment") _morlc_values nodes; return ;;
    "compile -D" | "compile --define") :; return ;;
    "compile --sampler") :; return ;;
    "compile --semantics-in") _morlc_values file; return ;;
    "compile --semantics-out") _morlc_values file; return ;;
    "check -C" | "check --directory") _morlc_values directory; return ;;
    "check --diagnostics") _morlc_values words "text json"; return ;;
    "check --color") _morlc_values words "auto always never"; return ;;
    "check -t" | "check --target") _morlc_values words "hlsl hlsl10 glsl glsles all"; return ;;
    "check -s" | "check --stage") _morlc_values words "vertex fragment"; return ;;
    "check --vertex") _morlc_values nodes; return ;;
    "check --fragment") _morlc_values nodes; return ;;
    "check -D" | "check --define") :; return ;;
    "check --sampler") :; return ;;
    "check --shader") :; return ;;
    "check -W") _morlc_values words "verdict no-verdict undeclared-name no-undeclared-name names no-names unknown-reference no-unknown-reference redeclared no-redeclared repeated-name no-repeated-name argument-count no-argument-count unset-macro no-unset-macro macros no-macros unused-macro no-unused-macro unused-sampler no-unused-sampler macro-as-value no-macro-as-value broken-block no-broken-block lost-code no-lost-code open-block no-open-block stray-directive no-stray-directive no-effect no-no-effect while no-while block-in-loop no-block-in-loop block-in-declare-loop no-block-in-declare-loop second-main no-second-main main-in-block no-main-in-block unused-function no-unused-function macro-step no-macro-step lost-array-size no-lost-array-size unmatched-input no-unmatched-input stages no-stages varying-type no-varying-type varying-place no-varying-place varying-semantic no-varying-semantic missing-semantic no-missing-semantic unassigned-texcoord no-unassigned-texcoord shared-register no-shared-register no-position no-no-position no-color no-no-color unwritten-output no-unwritten-output mul-operand no-mul-operand targets no-targets mul-member no-mul-member matrix-product no-matrix-product matrix-index no-matrix-index matrix-constructor no-matrix-constructor matrix-cast no-matrix-cast matrix-helper no-matrix-helper matrix-helper-operand no-matrix-helper-operand matrix-helper-use no-matrix-helper-use matrix-shape no-matrix-shape int-for-float no-int-for-float width-mismatch no-width-mismatch scalar-constructor no-scalar-constructor constructor-arguments no-constructor-arguments vector-compare no-vector-compare int-vector no-int-vector double-minus no-double-minus modulo no-modulo cotangent no-cotangent projected-sampling no-projected-sampling sampler-type no-sampler-type unbound-sampler no-unbound-sampler shadow-map-color no-shadow-map-color shadow-map-compare no-shadow-map-compare second-color no-second-color loop-bound no-loop-bound computed-index no-computed-index reserved-name no-reserved-name copied-name no-copied-name bone-index no-bone-index vertex-texture no-vertex-texture color-input no-color-input color-output no-color-output mixed-texcoords no-mixed-texcoords"; return ;;
    "check -j" | "check --jobs") :; return ;;
    "build -C" | "build --directory") _morlc_values directory; return ;;
    "build --diagnostics") _morlc_values words "text json"; return ;;
    "build --color") _morlc_values words "auto always never"; return ;;
    "build -o" | "build --output") _morlc_values directory; return ;;
    "build -j" | "build --jobs") :; return ;;
    "build --shader") :; return ;;
    "build --ninja") _morlc_values file; return ;;
    "build --launcher") :; return ;;
    "build --depfile") _morlc_values file; return ;;
    "list -C" | "list --directory") _morlc_values directory; return ;;
    "list --diagnostics") _morlc_values words "text json"; return ;;
    "list --color") _morlc_values words "auto always never"; return ;;
    "list -o" | "list --output") _morlc_values file; return ;;
    "graph -C" | "graph --directory") _morlc_values directory; return ;;
    "graph --diagnostics") _morlc_values words "text json"; return ;;
    "graph --color") _morlc_values words "auto always never"; return ;;
    "graph -o" | "graph --output") _morlc_values file; return ;;
    "pack -C" | "pack --directory") _morlc_values directory; return ;;
    "pack --diagnostics") _morlc_values words "text json"; return ;;
    "pack --color") _morlc_values words "auto always never"; return ;;
    "pack -o" | "pack --output") _morlc_values directory; return ;;
    "pack --depfile") _morlc_values file; return ;;
    "unpack -C" | "unpack --directory") _morlc_values directory; return ;;
    "unpack --diagnostics") _morlc_values words "text json"; return ;;
    "unpack --color") _morlc_values words "auto always never"; return ;;
    "text -C" | "text --directory") _morlc_values directory; return ;;
    "text --diagnostics") _morlc_values words "text json"; return ;;
    "text --color") _morlc_values words "auto always never"; return ;;
    "merge -C" | "merge --directory") _morlc_values directory; return ;;
    "merge --diagnostics") _morlc_values words "text json"; return ;;
    "merge --color") _morlc_values words "auto always never"; return ;;
    "completion -C" | "completion --directory") _morlc_values directory; return ;;
    "completion --diagnostics") _morlc_values words "text json"; return ;;
    "completion --color") _morlc_values words "auto always never"; return ;;
    esac
    if [[ $word == -* ]]; then
        case ${command:-compile} in
        compile) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --output --target --stage --vertex --fragment --define --sampler --semantics-in --semantics-out" ;;
        check) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --target --stage --vertex --fragment --define --sampler --shader -W --werror --show-generated --jobs --watch --quiet" ;;
        build) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --output --jobs --shader --no-index --index --ninja --launcher --depfile --watch --quiet" ;;
        list) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --output" ;;
        graph) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --output" ;;
        pack) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --output --depfile --force" ;;
        unpack) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version --force" ;;
        text) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version" ;;
        merge) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version" ;;
        completion) _morlc_values words "--help --directory --diagnostics --color --all --verbose --version" ;;
        esac
        return
    fi
    case ${command:-compile} in
    compile) _morlc_values nodes ;;
    check) _morlc_values file-or-nodes ;;
    build) _morlc_values file ;;
    unpack) _morlc_values nodes ;;
    text) _morlc_values file ;;
    merge) : ;;
    merge) : ;;
    merge) : ;;
    completion) : ;;
    esac
    if [[ -z $command && $word != "" ]]; then
        local commands
        mapfile -t commands < <(compgen -W "compile check build list graph pack unpack text merge completion" -- "$word")
        COMPREPLY+=("${commands[@]}")
    fi
}

complete -F _morlc morlc
