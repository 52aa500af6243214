#!/usr/bin/env bash
# The Debian package, from making it to running what it installs: linux_test.sh BUILD
# shellcheck source-path=SCRIPTDIR/../scripts source=harness.sh
source "$(dirname "$0")/../scripts/harness.sh"

build=$(cd "$1" && pwd)
new_tree page/index.html
root=$scratch/root
shared=$root/usr/share
tandril=$root/usr/bin/tandril
export TANDRIL_HOME=$scratch/home
mkdir "$TANDRIL_HOME"

the_package() { echo "$scratch"/packages/tandril_*.deb; }
field() { dpkg-deb --field "$(the_package)" "$1"; }

# commands [COMMAND]: the commands that its help lists.
commands() { "$tandril" "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'; }

# long_options COMMAND...: those that its help lists.
long_options() { "$tandril" "$@" --help | grep -oE '^  [^ ]+' | grep -oE -- '--[a-z-]+'; }

# words_of_manual COMMAND: the page as it is read, a word a line.
words_of_manual() {
    zcat "$shared/man/man1/tandril${1:+-$1}.1.gz" | groff -man -Tascii -P-cbou | tr -s ' []' '\n'
}

manual_lists_options() {
    words_of_manual "$1" >"$scratch/words"
    shift
    local option
    while read -r option; do
        if ! grep -qxE -- "$option,?" "$scratch/words"; then
            echo "tandril $* has $option" >>"$output"
            return 1
        fi
    done < <(long_options "$@")
}

manuals_say_what_help_says() {
    local command action
    manual_lists_options '' || return
    for command in $(commands); do
        manual_lists_options "$command" "$command" || return
        for action in $(commands "$command"); do
            manual_lists_options "$command" "$command" "$action" || return
        done
    done
}

manuals_are_sound() {
    local page
    for page in "$shared"/man/man1/*.gz; do
        zcat "$page" | groff -man -Tascii -ww -z >>"$output" 2>&1 || return
    done
    [ ! -s "$output" ]
}

every_command_has_a_manual() {
    local pages
    pages=$(cd "$shared/man/man1" && ls)
    [ "$pages" = "$({ echo tandril.1.gz; commands | sed 's/.*/tandril-&.1.gz/'; } | LC_ALL=C sort)" ]
}

# completes WORDS EXPECTED: what the shell would offer for the last word.
completes() {
    bash -c '
        source "$1"
        read -ra COMP_WORDS <<<"$2"
        [[ $2 != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _tandril
        echo "${COMPREPLY[*]}"' - "$shared/bash-completion/completions/tandril" "$1" >"$output" 2>&1
    last_line_is "$2"
}

# The installed program, and nothing of the source tree, shows the page.
serves_the_page() {
    local host url answer
    "$tandril" serve --port 0 >"$scratch/url" 2>"$output" &
    host=$!
    for _ in $(seq 600); do
        [ ! -s "$scratch/url" ] || break
        kill -0 "$host" 2>/dev/null || return 1
        sleep 0.1
    done
    url=$(cat "$scratch/url")
    answer=$(curl --silent --location --cookie-jar "$scratch/cookies" "$url")
    kill "$host"
    wait "$host" && [ "$answer" = "$(cat "$project/page/index.html")" ]
}

lays_out_a_home() {
    run "$tandril" call Initialize
    exit_status_is 0 && [ -f "$TANDRIL_HOME/Vorn Tandril/Harbrook.xml" ] &&
        run "$tandril" call getFMapper "$(cat "$shared/doc/tandril/examples/fieldmapper-en.xml")" Yes &&
        run "$tandril" call GetI18NString SLBEU0232 && printed 'My activities'
}

run cpack --config "$build/CPackConfig.cmake" -B "$scratch/packages"
ok "the package can be made" exit_status_is 0
run dpkg-deb --extract "$(the_package)" "$root"
ok "it can be unpacked" exit_status_is 0
field Depends >"$output" 2>&1
for library in libc6 libstdc++6 libodbc2 libpugixml1v5 libcpp-httplib libsqliteodbc; do
    ok "it depends on $library" printed "$library"
done
run "$tandril" --version
ok "its version is the program's" printed "tandril $(field Version)"
ok "every command has a manual" every_command_has_a_manual
: >"$output"
ok "the manuals are sound" manuals_are_sound
: >"$output"
ok "the manuals say what --help says" manuals_say_what_help_says
ok "completion: the commands" completes "tandril s" "serve"
ok "completion: options" completes "tandril serve --en" "--enterprise --enterprise-timeout"
ok "completion: methods" completes "tandril call --home x ListH" "ListHRALines"
ok "completion: arguments of a method are free" completes "tandril call Set_Mode " ""
ok "completion: actions" completes "tandril masterdata --home x i" "import"
ok "completion: folders" completes "tandril serve --page $shared/tandril/pa" "$shared/tandril/page"
ok "the program lays out a home" lays_out_a_home
ok "the program finds its page" serves_the_page
done_testing
