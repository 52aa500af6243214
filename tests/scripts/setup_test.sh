#!/usr/bin/env bash
# tools/setup against a package manager that only records what it is asked.
# shellcheck source=harness.sh
. "$(dirname "$0")/harness.sh"

# machine INSTALLED...: a Debian machine on which only these packages are installed.
machine() {
    new_tree tools/setup
    put tools/packages.txt <<'LIST'
# purpose package stand-in
run   compiler
run   builder   builder-command

test  checker

package  wrapper
LIST
    local lines=""
    for package in "$@"; do
        lines="$lines echo 'installed $package';"
    done
    fake dpkg-query "$lines"
    : >"$calls"
    fake apt-get
    fake id 'echo 0'
    fake sudo "\"\$@\""
    fake su
}

apt_calls() { grep '^apt-get' "$calls"; }
apt_calls_are() { [ "$(apt_calls)" = "$1" ]; }

machine compiler builder
run tools/setup run
ok "NothingMissingSucceeds" exit_status_is 0
ok "NothingMissingAsksNoPackageManager" called_not apt-get
ok "NothingMissingAsksForNoRoot" called_not sudo

machine builder
run tools/setup run
ok "MissingPackageIsInstalled" called "apt-get -q install -y --no-install-recommends compiler"
ok "KnownPackageNeedsNoNewLists" called_not "apt-get -q update"
ok "SaysWhatItInstalls" printed "setup: installing: compiler"
ok "RootNeedsNoSudo" called_not sudo

machine compiler builder
run tools/setup test
ok "TestNeedsMoreThanRun" called "apt-get -q install -y --no-install-recommends checker"

machine
run tools/setup list test
ok "ListsTheMissing" [ "$(cat "$output")" = $'compiler\nbuilder\nchecker' ]
ok "ListInstallsNothing" called_not apt-get

machine compiler builder
run tools/setup list package
ok "PackagingNeedsItsOwn" [ "$(cat "$output")" = wrapper ]

machine compiler
fake builder-command
run tools/setup run
ok "StandInCommandDoesInsteadOfThePackage" called_not apt-get

machine builder
fake id 'echo 1000'
run tools/setup run
ok "NotRootUsesSudo" called \
    "sudo env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends compiler"
ok "SaysWhatNeedsRoot" printed "setup: root is needed for:"

machine builder
fake apt-get 'case $* in *--simulate*) [ -e known ] ;; *update) touch known ;; esac'
run tools/setup run
ok "UnknownPackageFetchesTheListsFirst" apt_calls_are "\
apt-get -q --simulate install --no-install-recommends compiler
apt-get -q update
apt-get -q install -y --no-install-recommends compiler"

machine builder
fake apt-get 'case $* in *install\ -y*) [ -e fresh ] ;; *update) touch fresh ;; esac'
run tools/setup run
ok "OutdatedListsAreFetchedOnceMore" apt_calls_are "\
apt-get -q --simulate install --no-install-recommends compiler
apt-get -q install -y --no-install-recommends compiler
apt-get -q update
apt-get -q install -y --no-install-recommends compiler"
ok "OutdatedListsEndWell" exit_status_is 0

machine builder
fake apt-get 'case $* in *install\ -y*) exit 100 ;; esac'
run tools/setup run
ok "FailedInstallFails" exit_status_is 1
ok "FailedInstallSaysSo" printed "setup: the packages cannot be installed"

machine builder
fake apt-get 'exit 100'
run tools/setup run
ok "NoNetworkFails" exit_status_is 1
ok "NoNetworkSaysSo" printed "setup: the package lists cannot be fetched; is there a network?"

machine compiler builder checker
fake npm 'mkdir node_modules && touch node_modules/.package-lock.json'
put tests/browser/package-lock.json </dev/null
run tools/setup test
ok "BrowserDriverIsInstalled" called "npm ci --no-audit --no-fund --loglevel=error"
: >"$calls"
run tools/setup test
ok "InstalledBrowserDriverIsKept" called_not npm
touch -d '+1 minute' "$tree/tests/browser/package-lock.json"
fake npm
run tools/setup test
ok "ChangedLockFileInstallsAgain" called "npm ci --no-audit --no-fund --loglevel=error"

machine compiler builder checker
fake npm 'mkdir node_modules && touch node_modules/.package-lock.json'
put tests/browser/package-lock.json </dev/null
put bench/peers/package-lock.json </dev/null
run tools/setup test
ok "EveryFolderGetsItsNodePackages" printed "setup: installing node packages into bench/peers/node_modules"

machine compiler builder
put tests/browser/package-lock.json </dev/null
fake npm
run tools/setup run
ok "RunNeedsNoBrowserDriver" called_not npm

machine
run tools/setup everything
ok "UnknownPurposeFails" exit_status_is 1
ok "UnknownPurposeShowsUsage" printed "usage: tools/setup run|test|package"

machine
echo "later something" >>"$tree/tools/packages.txt"
run tools/setup run
ok "UnknownPurposeInTheListFails" exit_status_is 1
ok "UnknownPurposeInTheListIsNamed" printed "unknown purpose 'later'"

done_testing
