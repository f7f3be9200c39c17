#!/bin/sh
# Runs cellfn as a shell does: status, and whether output goes where it belongs.
# usage: command_line.sh CELLFN LIBRARY
set -u
cellfn=$1
library=$2
failures=0

# expect STATUS STDOUT-LINES STDERR-LINES ARGUMENT...
expect() {
    status=$1 out=$2 err=$3
    shift 3
    "$cellfn" "$@" >out 2>err
    got="$? $(wc -l <out) $(wc -l <err)"
    [ "$got" = "$status $out $err" ] && return
    echo "cellfn $*: expected status and lines $status $out $err, got $got" >&2
    failures=1
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit
printf 'GATE a 1 y=a;\nGATE b 1 y=a;\nGATE bad\n' >bad
expect 0 62 0 list "$library"
expect 0 61 0 list --tsv "$library"
expect 1 3 1 list --tsv bad
expect 1 0 1 list missing
expect 0 6 0 match "$library" '!(A B + C)'
expect 0 3 0 match --tsv --exact --all "$library" '!(A B + C)'
expect 1 0 1 match --tsv "$library" 'A B (C + D (E + F)) G'
expect 1 3 1 match --tsv bad '!A'
expect 2 0 1 match "$library" 'A $'
expect 0 8 0 show 0x8000000000000000
expect 2 0 1 show A --dot picture
expect 2 0 1 show A --width 27
expect 2 0 1
expect 2 0 1 draw
expect 0 1 0 --version
exit $failures
