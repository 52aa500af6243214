#!/usr/bin/env bash
# The checks of a Debian package that need more than ./test installs: debian_test.sh BUILD PACKAGES
# shellcheck source-path=SCRIPTDIR/../scripts source=harness.sh
source "$(dirname "$0")/../scripts/harness.sh"

build=$(cd "$1" && pwd)
package=$(echo "$(cd "$2" && pwd)"/tandril_*.deb)
reference=$build/packaging/reference/files

offers() { printed "$1"; }
# fish_completes LINE: what the shell offers.
fish_completes() {
    PATH="$build/bin:$PATH" run fish -c "source $reference/tandril.fish; complete -C'$1'"
}
# zsh completes at its prompt only, so it gets a terminal of its own.
zsh_completes() {
    mkdir -p "$scratch/zsh"
    cp "$reference/_tandril" "$scratch/zsh/_tandril"
    echo "fpath=($scratch/zsh \$fpath); autoload -Uz compinit; compinit -D; PS1='READY> '" \
        >"$scratch/zsh/.zshrc"
    ZDOTDIR=$scratch/zsh TERM=dumb run timeout 60 zsh -fc "
        zmodload zsh/zpty
        zpty shell zsh -d -i
        zpty -r shell line '*READY> *'
        zpty -w -n shell '$1'\$'\\t'
        zpty -r shell line '*$2*'
        print -r -- \$line"
}

new_tree page/index.html
run lintian --allow-root --fail-on error,warning "$package"
ok "lintian has nothing to say" exit_status_is 0
fish_completes 'tandril masterdata import --re'
ok "fish: options" offers "--replace"
fish_completes 'tandril call ListH'
ok "fish: methods" offers "ListHRALines"
fish_completes 'tandril s'
ok "fish: commands" offers "serve"
run zsh -n "$reference/_tandril"
ok "zsh: sound" exit_status_is 0
zsh_completes 'tandril call ListH' ListHRALines
ok "zsh: methods" offers "ListHRALines"
zsh_completes 'tandril masterdata import --rep' --replace
ok "zsh: options" offers "--replace"
done_testing
