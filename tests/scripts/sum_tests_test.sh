#!/usr/bin/env bash
# tools/sum-tests on reports as CTest and GoogleTest write them.
# shellcheck source=harness.sh
. "$(dirname "$0")/harness.sh"

# junit TEST...: a CTest report of these test elements.
junit() {
    put junit.xml <<XML
<?xml version="1.0" encoding="UTF-8"?>
<testsuite name="all">$*</testsuite>
XML
}
passed_test() { echo "<testcase name=\"$1\" status=\"run\"><system-out>${2:-}</system-out></testcase>"; }
failed_test() {
    echo "<testcase name=\"$1\" status=\"fail\"><failure message=\"\"/>" \
        "<system-out>${2:-}</system-out></testcase>"
}
not_run_test() { echo "<testcase name=\"$1\" status=\"notrun\"><skipped message=\"\"/></testcase>"; }

# google NAME CASE...: the report that the program NAME_test left.
google() {
    local name=$1
    shift
    echo "<testsuites><testsuite>$*</testsuite></testsuites>" | put "cases/${name}_test.xml"
}
good_case() { echo "<testcase name=\"$1\" classname=\"S\" status=\"run\" result=\"completed\"/>"; }
bad_case() {
    echo "<testcase name=\"$1\" classname=\"S\" status=\"run\" result=\"completed\">" \
        "<failure message=\"no\"/></testcase>"
}
skipped_case() { echo "<testcase name=\"$1\" classname=\"S\" status=\"run\" result=\"skipped\"/>"; }

sum() { run tools/sum-tests release junit.xml cases; }

new_tree tools/sum-tests
junit "$(passed_test xml)"
google xml "$(good_case A)" "$(good_case B)" "$(skipped_case C)"
sum
ok "CountsTheCasesOfAProgram" last_line_is "TOTAL 2 0"

new_tree tools/sum-tests
junit "$(failed_test xml)"
google xml "$(good_case A)" "$(bad_case B)"
sum
ok "CountsFailedCases" last_line_is "TOTAL 1 1"
ok "NamesFailedCases" printed "FAILED release: xml: S.B"

new_tree tools/sum-tests
junit "$(failed_test xml)"
google xml "$(good_case A)"
sum
ok "FaultAfterTheLastCaseIsOneFailure" last_line_is "TOTAL 1 1"

new_tree tools/sum-tests
junit "$(failed_test xml)"
sum
ok "CrashWithoutReportIsOneFailure" last_line_is "TOTAL 0 1"

new_tree tools/sum-tests
junit "$(failed_test xml)"
echo '<testsuites><testsu' | put cases/xml_test.xml
sum
ok "CrashWithinTheReportIsOneFailure" last_line_is "TOTAL 0 1"

new_tree tools/sum-tests
junit "$(not_run_test xml)"
sum
ok "TestThatDidNotRunIsOneFailure" last_line_is "TOTAL 0 1"

new_tree tools/sum-tests
junit "$(passed_test page)"
sum
ok "PlainTestCountsAsOne" last_line_is "TOTAL 1 0"

new_tree tools/sum-tests
junit "$(failed_test scripts $'ok 1 - a\nnot ok 2 - b\nok 3 - c # SKIP no network\n')"
sum
ok "CountsTapLines" last_line_is "TOTAL 1 1"
ok "NamesFailedTapLines" printed "FAILED release: scripts: b"

new_tree tools/sum-tests
sum
ok "MissingReportIsOneFailure" last_line_is "TOTAL 0 1"

new_tree tools/sum-tests
junit "$(passed_test page)" "$(passed_test xml)"
run tools/sum-tests release junit.xml cases sanitize junit.xml cases
ok "SumsOverAllRuns" last_line_is "TOTAL 4 0"

new_tree tools/sum-tests
run tools/sum-tests release
ok "MissingArgumentsFail" exit_status_is 1

done_testing
