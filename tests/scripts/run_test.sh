#!/usr/bin/env bash
# run_test.sh PROGRAMS: ./run with the programs of that folder, whose build only pretends.
# shellcheck source=harness.sh
. "$(dirname "$0")/harness.sh"

programs=$1
home=$scratch/home
run_pid=

# ready_tree: a tree in which everything is installed and built.
ready_tree() {
    new_tree run
    printf '#!/bin/sh\necho "setup $*" >>"%s"\n' "$calls" | put tools/setup
    chmod +x "$tree/tools/setup"
    put build/release/build.ninja </dev/null
    fake cmake 'echo "ninja: no work to do."'
    ln -s "$programs" "$tree/build/release/bin"
    ln -s "$project/samples" "$project/page" "$tree/"
    rm -rf "$home"
}

# wait_for COMMAND...: at most a minute.
wait_for() {
    local tries
    for ((tries = 0; tries < 1200; tries++)); do
        "$@" && return
        sleep 0.05
    done
    return 1
}

start() {
    : >"$output"
    (cd "$tree" && PATH="$bin:$PATH" LANG=C exec ./run "$@") >"$output" 2>&1 &
    run_pid=$!
    wait_for settled
}
settled() { printed "http://127.0.0.1:" || ! kill -0 "$run_pid" 2>/dev/null; }
sample_server() { pgrep -f -- "--samples $tree/samples"; }
no_sample_server() { ! sample_server >/dev/null; }
stop() {
    kill -TERM "$run_pid"
    wait "$run_pid"
    status=$?
}

url() { grep -o 'http://.*' "$output"; }
# get PATH: what the page gets; the launch URL buys the cookie that later requests show.
get() {
    local base jar=$scratch/jar
    base=$(url)
    [ -s "$jar" ] || curl -s -o /dev/null -c "$jar" "$base"
    curl -s -b "$jar" -H 'Sec-Fetch-Site: same-origin' -H 'Sec-Fetch-Mode: cors' \
        -H 'Sec-Fetch-Dest: empty' "${base%%\?*}$1"
}
forget_cookie() { rm -f "$scratch/jar"; }
gets() { [ "$(get "$1")" = "$2" ]; }
call() { "$programs/tandril" call --home "$home" "$@"; }
nothing_listens() { ! curl -s -o /dev/null "$1"; }
same_file() { cmp -s "$1" "$2"; }
setting_is() { [ "$(call GetVariable "$1")" = "$2" ]; }
lists_activities() { call MyActivities "" | grep -q 'class=orderrow'; }
shows_page() { get "" | grep -q '<title>'; }

ready_tree
start --home "$home" --port 0
address=$(url)
ok "PrintsTheUrl" printed "http://127.0.0.1:"
ok "InstallsOnlyWhatRunningNeeds" calls_are "setup run
cmake --build --preset release --target tandril tandril-enterprise -- -n"
ok "ServesThePage" shows_page
ok "RelaysToTheSampleServer" gets enterprise/health ok
ok "LaysOutTheOrders" same_file "$home/Vorn Tandril/Harbrook.xml" "$project/samples/orders.xml"
ok "LaysOutTheFieldMapper" same_file "$home/Vorn Tandril/FieldMapper.xml" \
    "$project/samples/fieldmapper-en.xml"
start_again=$run_pid
run ./run --home "$home" --port 0
ok "SecondRunOnTheSameHomeFails" exit_status_is 1
run_pid=$start_again
stop
ok "InterruptEndsWell" exit_status_is 0
ok "InterruptStopsTheHost" nothing_listens "${address%%\?*}"
ok "NoServerStaysBehind" wait_for no_sample_server
ok "SampleMasterDataIsTheCurrentOne" setting_is Currentmdb tandril
ok "SampleOrdersAreListed" lists_activities

forget_cookie
call Set_Mode Offline >/dev/null
echo '<!-- The last order was done today. -->' >>"$home/Vorn Tandril/Harbrook.xml"
cp "$home/Vorn Tandril/Harbrook.xml" "$scratch/kept.xml"
start --home "$home" --port 0
stop
ok "UsedHomeKeepsItsOrders" same_file "$home/Vorn Tandril/Harbrook.xml" "$scratch/kept.xml"
ok "UsedHomeKeepsItsSettings" setting_is Mode Offline

ready_tree
forget_cookie
start --home "$home" --port 0 --no-demo
ok "NoDemoLaysOutNothing" [ ! -e "$home/Vorn Tandril" ]
ok "NoDemoStillServesThePage" shows_page
stop

ready_tree
forget_cookie
start --home "$home" --port 0
kill "$(sample_server)"
wait "$run_pid"
status=$?
ok "DeadServerEndsTheRun" exit_status_is 1
ok "DeadServerIsReported" printed "run: a server has ended by itself"

ready_tree
rm "$tree/build/release/build.ninja"
fake cmake 'case "$*" in *-n) ;; *--build*) exit 1 ;; esac'
run ./run --home "$home"
ok "NewTreeIsConfiguredWithoutTests" called "cmake --preset release -DTANDRIL_TESTS=OFF"
ok "FailedBuildFails" exit_status_is 1
ok "FailedBuildLaysOutNothing" [ ! -e "$home" ]

ready_tree
run ./run --help
ok "HelpNamesTheOptions" printed "--no-demo"
ok "HelpDoesNothingElse" calls_are ""

ready_tree
run ./run --colour
ok "UnknownOptionIsRefused" exit_status_is 2
run ./run --home
ok "OptionWithoutValueIsRefused" exit_status_is 2
ok "RefusedOptionDoesNothing" calls_are ""

done_testing
