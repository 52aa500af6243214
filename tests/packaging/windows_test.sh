#!/usr/bin/env bash
# The packages for Windows: what the installer's tables say, and what it does to a machine under Wine.
#
#   windows_test.sh [--tables] PACKAGES
#
# With --tables only what the files say, without a machine.
#
# Wine does not know the table of rights, and has no 32-bit half here, so that the rights are only
# read from the table and x86/Client20.dll is only looked at.
# shellcheck source-path=SCRIPTDIR/../scripts source=harness.sh
source "$(dirname "$0")/../scripts/harness.sh"

only_tables=
if [ "$1" = --tables ]; then
    only_tables=yes
    shift
fi
packages=$(cd "$1" && pwd)
machine=$scratch/machine
installed="$machine/drive_c/Program Files/Tandril"
data="$machine/drive_c/Vorn Tandril"
wine() { "$project/tests/windows/wine-run" "$machine" "$@"; }

the_msi() { echo "$packages"/tandril-*-x64.msi; }
the_zip() { echo "$packages"/tandril-*-windows.zip; }
windows_path() { echo "Z:${1//\//\\}"; }
rows() { msiinfo export "$(the_msi)" "$1" | tr -d '\r' | tail -n +4; }

# component_is NAME FOLDER ATTRIBUTES
component_is() {
    rows Component >"$output"
    [ "$(awk -F '\t' -v name="$1" '$1 == name { print $3 " " $4 }' "$output")" = "$2 $3" ]
}

same_files() { diff -r "$1" "$2" >"$output" 2>&1; }

# key_of COMPONENT NAME PART: the registry row of that component with that value name, in a key that
# holds PART.
key_of() {
    rows Registry | awk -F '\t' -v component="$1" -v name="$2" -v part="$3" \
        '$6 == component && $4 == name && index($3, part) { print $1; exit }'
}

# users_may_write LOCKED TABLE ACCESS: no more than that for users, all for administrators and the
# system.
users_may_write() {
    [ -n "$1" ] || return
    local inherit=CI all=KA
    [ "$2" = Registry ] || { inherit=OICI && all=FA; }
    rows MsiLockPermissionsEx >"$output"
    [ "$(awk -F '\t' -v locked="$1" '$2 == locked { print $3 " " $4 }' "$output")" = \
        "$2 D:(A;$inherit;$all;;;BA)(A;$inherit;$all;;;SY)(A;$inherit;$3;;;BU)" ]
}

# An upgrade must not reset the engineer's counters: the key is made, and nothing in it.
settings_are_left_alone() {
    rows Registry | awk -F '\t' '$3 ~ /Vorn.Vorn Tandril/ { print $4 "|" $5 }' >"$output"
    [ "$(sort -u "$output")" = "+|" ]
}

# registry: the keys that have to do with the product, without the installer's own notes. The file
# appears when the machine ends, which it does not by itself; the next program starts it again.
registry() {
    WINEPREFIX=$machine wineserver -k
    WINEPREFIX=$machine wineserver -w
    awk 'BEGIN { RS = ""; FS = "\n" } {
            text = ""
            for (i = 1; i <= NF; i++) if ($i !~ /^#time/) text = text $i "\n"
            sub(/\] [0-9]+\n/, "]\n", text)
            if (text !~ /CurrentVersion\\\\(Installer|Uninstall)|Classes\\\\Installer/ &&
                text ~ /Tandril|Vorn|8FF55D9B-7301|607D3E22-789F|09B08D0D-8D4A/) print text
        }' "$machine/system.reg"
}
registry_is() { diff "$1" <(registry) >"$output"; }

# view_32: of such keys, those that only 32-bit programs see.
view_32() { awk 'BEGIN { RS = ""; ORS = "\n\n" } /^\[[^]]*Wow6432Node/' "$1"; }

# The keys of both views, without what belongs to the bitness.
same_in_both_views() {
    diff <(view_32 "$1" | sed 's/Wow6432Node\\\\//; s/x86/x64/') \
        <(awk 'BEGIN { RS = ""; ORS = "\n\n" }
            !/^\[[^]]*Wow6432Node/ && /^\[[^]]*(Classes\\\\(CLSID|Interface)|ODBC|Vorn)/' "$1") >"$output"
}

# shortcut_starts NAME COMMAND
shortcut_starts() {
    rows Shortcut >"$output"
    [ "$(awk -F '\t' -v name="$1" '$3 == name { print $5 " " $6 }' "$output")" = "$2" ]
}

# shortcuts: those of the product. Wine puts them into the menu of the user who installs.
shortcuts() { find "$machine/drive_c" -path '*/Start Menu/Programs/Tandril*' -printf '%f\n' | sort | xargs; }

# property_is NAME VALUE
property_is() {
    rows Property >"$output"
    [ "$(awk -F '\t' -v name="$1" '$1 == name { print $2 }' "$output")" = "$2" ]
}

new_tree page/index.html
unzip() { python3 -m zipfile -e "$@"; }
run unzip "$(the_zip)" "$scratch/unpacked"
ok "the zip can be unpacked" exit_status_is 0
unpacked=$(echo "$scratch"/unpacked/*)
for place in tandril.exe x64/Client20.dll x86/Client20.dll page/tandril.hta README.txt; do
    ok "the zip has $place" [ -s "$unpacked/$place" ]
done
imports() { "$1-objdump" -p "$unpacked/$2/Client20.dll" | sed -n 's/.*DLL Name: //p'; }
for bits in x86_64-w64-mingw32:x64 i686-w64-mingw32:x86; do
    imports "${bits%:*}" "${bits#*:}" >"$output"
    ok "the DLL of ${bits#*:} imports something" grep -qi '^kernel32\.dll$' "$output"
    ok "the DLL of ${bits#*:} imports only the system's" printed_not "lib"
done
run grep -c 'var(--' "$unpacked/page/style-hta.css"
ok "the HTA's style has no variables" last_line_is 0
run grep -c 'style-hta.css\|<hta:application' "$unpacked/page/tandril.hta"
ok "the HTA is an application with that style" last_line_is 2

ok "it is for all users" property_is ALLUSERS 1
ok "a 64-bit component for 64-bit hosts" component_is x64 X64FOLDER 256
ok "a 32-bit component for 32-bit hosts" component_is x86 X86FOLDER 0
ok "rights on the data folder" users_may_write DataFolder CreateFolder 0x1301bf
for component in x64 x86; do
    ok "rights on the settings, $component" \
        users_may_write "$(key_of $component + 'Vorn\Vorn Tandril')" Registry 0x2001f
    ok "rights on the data source, $component" \
        users_may_write "$(key_of $component DBQ 'Tandril Master Data')" Registry 0x2001f
done
ok "no setting is ever written over" settings_are_left_alone
ok "the start menu has the page as an application" shortcut_starts Tandril '[PAGEFOLDER]tandril.hta '
ok "the start menu has the page in the browser" \
    shortcut_starts 'TANDRILB|Tandril in the browser' \
    '[System64Folder]cmd.exe /c ""[INSTALLDIR]tandril.exe" serve --open || pause"'

[ -z "$only_tables" ] || done_testing

run "$project/tests/windows/wine-prefix" "$machine"
ok "there is a machine" exit_status_is 0
registry >"$scratch/before"
run wine msiexec /i "$(windows_path "$(the_msi)")" /qn
ok "it can be installed" exit_status_is 0
registry >"$scratch/installed"
ok "all files are there" same_files "$unpacked" "$installed"
ok "the data folder is there" [ -d "$data" ]
shortcuts >"$output"
ok "the start menu has both" printed "Tandril in the browser.lnk Tandril.lnk"
ok "both views say the same" same_in_both_views "$scratch/installed"

run wine regsvr32 /s /u 'C:\Program Files\Tandril\x64\Client20.dll'
run wine regsvr32 /s 'C:\Program Files\Tandril\x64\Client20.dll'
ok "the DLL registers itself" exit_status_is 0
ok "it registers the same" registry_is "$scratch/installed"

run wine 'C:\Program Files\Tandril\tandril.exe' call Initialize
ok "the program lays out the data" exit_status_is 0
ok "the store is there" [ -s "$data/Harbrook.xml" ]
cat >"$machine/drive_c/error.js" <<'JS'
var client = new ActiveXObject('Tandril.Client20');
client.Initialize();
WScript.Echo('mode ' + client.GetVariable('Mode'));
JS
run wine cscript //nologo 'C:\error.js'
ok "a script can use the component" printed "mode Online"

run wine msiexec /x "$(windows_path "$(the_msi)")" /qn
ok "it can be removed" exit_status_is 0
ok "its files are gone" [ ! -e "$installed" ]
shortcuts >"$output"
ok "the start menu has them no more" last_line_is ""
ok "the engineer's data stay" [ -s "$data/Harbrook.xml" ]
registry >"$scratch/after"
run cat "$scratch/after"
ok "the engineer's settings stay" printed '"OrderId"=dword:00000001'
run grep '^\[' "$scratch/after"
ok "nothing else stays" [ "$(grep -vc Vorn "$output")" = 0 ]
run cat "$scratch/before"
ok "there was nothing before" [ ! -s "$scratch/before" ]
"$project/tests/windows/wine-prefix" --end "$machine"
done_testing
