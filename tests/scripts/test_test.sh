#!/usr/bin/env bash
# ./test with build tools that only pretend: what it counts, prints and returns.
# shellcheck source=harness.sh
. "$(dirname "$0")/harness.sh"

# good_tree: everything that ./test calls succeeds; each of five runs has one test, two checks pass.
good_tree() {
    new_tree test tools/sum-tests
    put tools/setup </dev/null
    fake cmake
    # shellcheck disable=SC2016  # for the fake to expand
    fake ctest 'while [ "$1" != --output-junit ]; do shift; done
        echo "<testsuite><testcase name=\"a\" status=\"run\"/></testsuite>" >"$2"'
    printf '#!/bin/sh\necho "OK   format"; echo "OK   shell"\n' | put tools/check
    chmod +x "$tree/tools/setup" "$tree/tools/check"
}

good_tree
run ./test
ok "AllWellSucceeds" exit_status_is 0
ok "LastLineIsTheSum" last_line_is "7 passed, 0 failed"
ok "BuildsTheSanitizedTestsToo" called "cmake --preset sanitize -DTANDRIL_TESTS=ON"
ok "BuildsTheFuzzTargetsToo" called "cmake --preset fuzz -DTANDRIL_TESTS=ON"
ok "BuildsTheComponentForWindowsToo" called "cmake --preset windows-quick-x64 -DTANDRIL_TESTS=ON"
ok "ShowsWhatRanBesideABuild" printed "== tests release"
ok "ShowsWhatRanBesideTheChecks" printed "== tests windows-quick-x64"

good_tree
printf '#!/bin/sh\necho "FAIL format"; echo "OK   shell"\nexit 1\n' | put tools/check
run ./test
ok "FailedCheckFails" exit_status_is 1
ok "FailedCheckCounts" last_line_is "6 passed, 1 failed"

good_tree
# shellcheck disable=SC2016  # for the fake to expand
fake ctest 'while [ "$1" != --output-junit ]; do shift; done
    echo "<testsuite><testcase name=\"a\" status=\"fail\"/></testsuite>" >"$2"'
run ./test
ok "FailedTestsFail" exit_status_is 1
ok "FailedTestsCount" last_line_is "2 passed, 5 failed"

good_tree
fake ctest 'exit 8'
run ./test
ok "TestsThatDoNotRunFail" last_line_is "2 passed, 5 failed"

good_tree
fake cmake 'case "$*" in *--build*sanitize*) exit 1 ;; esac'
run ./test
ok "FailedBuildFails" exit_status_is 1
ok "FailedBuildCountsAndTheRestGoesOn" last_line_is "6 passed, 1 failed"

good_tree
fake cmake 'case "$*" in "--preset release"*) echo "no compiler" >&2; exit 1 ;; esac'
run ./test
ok "FailedConfigurationFails" last_line_is "6 passed, 1 failed"
ok "FailedConfigurationIsShown" printed "no compiler"

good_tree
printf '#!/bin/sh\nexit 1\n' | put tools/setup
run ./test
ok "FailedSetupFails" exit_status_is 1
ok "FailedSetupCounts" last_line_is "0 passed, 1 failed"

good_tree
printf '#!/bin/sh\nexit 2\n' | put tools/check
run ./test
ok "ChecksThatSayNothingFail" exit_status_is 1

good_tree
run ./test --help
ok "HelpExplains" printed "Runs every test and check"
ok "HelpBuildsNothing" called_not cmake

good_tree
run ./test --quick
ok "UnknownArgumentIsRefused" exit_status_is 2

done_testing
