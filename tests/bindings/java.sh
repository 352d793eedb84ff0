#!/bin/sh
# Runs a Java host whose calls of native code are checked, and fails when one was wrong.
#
#   java.sh JAVA CLASS_PATH CLASS [ARGUMENT...]
java=$1 classes=$2
shift 2
printed=$(mktemp)
trap 'rm -f "$printed"' EXIT
"$java" -Xcheck:jni -Xmx64m -XX:+UseSerialGC -XX:TieredStopAtLevel=1 -cp "$classes" "$@" >"$printed"
status=$?
cat "$printed"
# What is said while JNA itself is loaded is of no host's making.
awk '/^(WARNING|FATAL)/ { ++said } /loadNativeDispatchLibrary/ { --said } END { exit said != 0 }' "$printed" || {
    echo "wrong calls of native code"
    exit 1
}
exit $status
