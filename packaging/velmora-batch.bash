# SPDX-FileCopyrightText: Velmora contributors
# SPDX-License-Identifier: GPL-3.0-or-later
# Completes options, the choices of options, files and folders of velmora-batch.
# shellcheck shell=bash

# The options that take a value.
_velmora_batch_valued='--models --folder --doses --endpoint --weight --omega --log-scale --lower
    --upper --levels --method --ofv --summary --individuals --ofv-column --theta1-column --cache
    --true-meds --true-models --true-model-numbers --processors --random-position --truth-position
    --report --settings --data-sets --plan --output --save-project'
_velmora_batch_plain='--endpoints --resume --strict --dry-run --quiet --help --version'

# Offers the words that begin with the text: _velmora_batch_words TEXT WORD...
_velmora_batch_words() {
    mapfile -t COMPREPLY < <(compgen -W "${*:2}" -- "$1")
}

# Offers files or folders that begin with the text: _velmora_batch_paths file|directory TEXT
_velmora_batch_paths() {
    compopt -o filenames 2>/dev/null # fails if a script calls this
    mapfile -t COMPREPLY < <(compgen -A "$1" -- "$2")
}

# Offers values of an option that begin with the text: _velmora_batch_value OPTION TEXT
_velmora_batch_value() {
    case "$1" in
        --log-scale | --cache) _velmora_batch_words "$2" yes no ;;
        --method) _velmora_batch_words "$2" average selection ;;
        --ofv) _velmora_batch_words "$2" one individual ;;
        --summary) _velmora_batch_words "$2" mean median 75 25 ;;
        --report) _velmora_batch_words "$2" html pdf odt html,pdf html,odt pdf,odt html,pdf,odt ;;
        --folder | --output | -o) _velmora_batch_paths directory "$2" ;;
        --models | --true-models | --true-meds | --true-model-numbers | --settings | --plan \
            | --save-project) _velmora_batch_paths file "$2" ;;
        *) COMPREPLY=() ;; # texts and numbers
    esac
}

# The option whose value is at the cursor, if any. All words after --models and --true-models, up
# to the next option, are their values.
_velmora_batch_option() {
    local place=$((COMP_CWORD - 1))
    [ "${COMP_WORDS[place]}" != '=' ] || place=$((place - 1)) # --option=value is three words
    case " -o $_velmora_batch_valued " in
        *[[:space:]]"${COMP_WORDS[place]}"[[:space:]]*) echo "${COMP_WORDS[place]}" ;;
        *)
            while [ "$place" -gt 0 ] && [[ ${COMP_WORDS[place]} != -* ]]; do
                place=$((place - 1))
            done
            case "${COMP_WORDS[place]}" in
                --models | --true-models) echo "${COMP_WORDS[place]}" ;;
            esac
            ;;
    esac
}

_velmora_batch() {
    local word=${COMP_WORDS[COMP_CWORD]} option
    option=$(_velmora_batch_option)
    if [[ $word == -* ]]; then
        _velmora_batch_words "$word" "-o $_velmora_batch_valued $_velmora_batch_plain"
    elif [ -n "$option" ]; then
        _velmora_batch_value "$option" "${word#=}"
    elif [ "$COMP_CWORD" -gt 1 ] && [ "${COMP_WORDS[1]}" = merge ]; then
        _velmora_batch_paths directory "$word"
    else
        _velmora_batch_paths file "$word"
        [ "$COMP_CWORD" -ne 1 ] || [[ merge != "$word"* ]] || COMPREPLY+=(merge)
    fi
}

complete -F _velmora_batch velmora-batch
