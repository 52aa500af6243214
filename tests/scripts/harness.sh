# What the script tests share: a scratch project tree, commands that only record how they were
# called, and cases that print TAP lines. Sourced by the tests, which end with `done_testing`.
# shellcheck shell=bash

set -uo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
tree=$scratch/tree
bin=$scratch/bin
calls=$scratch/calls
output=$scratch/output
number=0
failures=0

# new_tree FILE...: an empty project tree with copies of these files of the project.
new_tree() {
    rm -rf "$tree" "$bin" "$calls"
    mkdir -p "$tree" "$bin"
    : >"$calls"
    local file
    for file in "$@"; do
        mkdir -p "$tree/$(dirname "$file")"
        cp -p "$project/$file" "$tree/$file"
    done
}

# put FILE: standard input becomes that file of the tree.
put() {
    mkdir -p "$tree/$(dirname "$1")"
    cat >"$tree/$1"
}

# fake NAME [SCRIPT]: a command that notes its call, then does what SCRIPT says.
fake() {
    printf '#!/bin/sh\necho "%s $*" >>"%s"\n%s\n' "$1" "$calls" "${2:-}" >"$bin/$1"
    chmod +x "$bin/$1"
}

# run COMMAND...: in the tree, with the fakes first in the search path; keeps output and status.
run() {
    (cd "$tree" && PATH="$bin:$PATH" "$@") >"$output" 2>&1
    status=$?
}

# ok NAME COMMAND...: a case that passes when the command succeeds.
ok() {
    local name=$1
    shift
    number=$((number + 1))
    if "$@"; then
        echo "ok $number - $name"
    else
        echo "not ok $number - $name"
        echo "# status ${status:-none}; output:"
        sed 's/^/#   /' "$output"
        failures=$((failures + 1))
    fi
}

exit_status_is() { [ "$status" = "$1" ]; }
printed() { grep -qF -- "$1" "$output"; }
printed_not() { ! printed "$1"; }
last_line_is() { [ "$(tail -n 1 "$output")" = "$1" ]; }
called() { grep -qxF -- "$1" "$calls"; }
called_not() { ! grep -q -- "^$1\b" "$calls"; }
calls_are() { [ "$(cat "$calls")" = "$1" ]; }

done_testing() {
    echo "1..$number"
    [ "$failures" = 0 ]
    exit
}
