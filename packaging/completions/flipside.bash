# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
# shellcheck shell=bash

_flipside() {
    local word=${COMP_WORDS[COMP_CWORD]} options="--record --pause --stop --toggle --play --show --status --quit --version --help"
    # One command at a time; only --status takes another word.
    case ${COMP_WORDS[*]:1:COMP_CWORD-1} in
    "") ;;
    --status) options=--json ;;
    --json) options=--status ;;
    *) options= ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
}
complete -F _flipside flipside
