#!/bin/sh
# A working day of the page in a browser, with tandril.exe under Wine as its web host:
#
#   page_day_test.sh MACHINE TANDRIL.EXE PROGRAMS NODE SCRATCH
#
# PROGRAMS is the folder of the programs of this system, for the enterprise server.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
machine=$1 program=$2 programs=$3 node=$4 scratch=$5

rm -rf "$scratch"
mkdir -p "$scratch"
ln -s "$programs/tandril-enterprise" "$scratch/tandril-enterprise"
cat >"$scratch/tandril" <<END
#!/bin/sh
exec '$here/wine-run' '$machine' '$program' "\$@"
END
chmod +x "$scratch/tandril"
TANDRIL_PROGRAMS=$scratch
export TANDRIL_PROGRAMS
exec "$here/../browser/run-tests.sh" "$node" day.test.js
