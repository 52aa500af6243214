#!/bin/sh
# run-tests.sh NODE [FILE...]: runs all browser tests, or those of these files, with this node.
set -eu

cd "$(dirname "$0")"
if [ ! -x "${1:-}" ]; then
    echo "node is not installed; tools/setup test installs it" >&2
    exit 1
fi
if [ ! -d node_modules/playwright-core ]; then
    echo "tests/browser/node_modules is missing; tools/setup test installs it (npm ci)" >&2
    exit 1
fi
node=$1
shift
exec "$node" --test "$@"
