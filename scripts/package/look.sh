# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
# For the scripts beside it: look WHAT COMMAND... runs a command or a function and says in one line whether it was content;
# what it said otherwise follows. The script ends with `exit $failed`.
# shellcheck shell=bash
failed=0

look() {
    local what=$1 answer
    shift
    if ! type "$1" >/dev/null 2>&1; then
        answer="$1 is not installed; scripts/setup package papers installs it"
    elif answer=$("$@" 2>&1); then
        echo "clean: $what"
        return
    fi
    failed=1
    printf 'NOT clean: %s\n%s\n' "$what" "$answer"
}
