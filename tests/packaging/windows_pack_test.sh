#!/usr/bin/env bash
# Makes the packages for Windows out of two builds and tests them:
#
#   windows_pack_test.sh VERSION X64 X86 FOLDER [--tables]
set -euo pipefail

root=$(cd "$(dirname "$0")/../.." && pwd)
"$root/packaging/windows/pack" "$1" "$2" "$3" "$4"
exec "$root/tests/packaging/windows_test.sh" ${5:+"$5"} "$4"
