#!/bin/sh
# Runs a program that was compiled with -gh and expects that it has left no memory behind.
set -u
heap=$(mktemp)
trap 'rm -f "$heap"' EXIT
HEAPTRC="log=$heap" "$@"
status=$?
if ! grep -q '^0 unfreed memory blocks' "$heap"; then
    cat "$heap" >&2
    exit 1
fi
exit $status
