#!/bin/sh
# Runs cellfn as a shell does: status, whether output goes where it belongs, and some of it in full.
# usage: command_line.sh CELLFN LIBRARY
set -u
cellfn=$1
library=$2
here=$(cd "$(dirname "$0")" && pwd)
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

# same EXPECTED-FILE OUTPUT-FILE
same() {
    diff "$1" "$2" >&2 || failures=1
}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch" || exit
printf 'GATE a 1 y=a;\nGATE b 1 y=a;\nGATE bad 1 y=a*\201;\n' >bad
expect 0 62 0 list "$library"
expect 0 61 0 list --tsv "$library"
expect 1 3 1 list --tsv bad
grep -qF "3: cell bad: expected a pin, a constant, '!' or '(' instead of '\\x81'" err || failures=1
cp "$here/faults.genlib" .
expect 1 5 16 list --tsv faults.genlib
same "$here/faults.expected" err
expect 1 0 1 list missing
expect 0 6 0 match "$library" '!(A B + C)'
expect 0 3 0 match --tsv --exact --all "$library" '!(A B + C)'
expect 1 0 1 match --tsv "$library" 'A B (C + D (E + F)) G'
expect 1 3 1 match --tsv bad '!A'
expect 2 0 1 match "$library" 'A $'
expect 0 8 0 show 0x8000000000000000
for function in 0 '!(A B)'; do
    for graph in tree bdd; do
        "$cellfn" show "$function" --dot $graph
    done
done >graphs
same "$here/graphs.expected" graphs
expect 2 0 1 show A --dot picture
expect 2 0 1 show A --width 27
expect 2 0 1
expect 2 0 1 draw
expect 0 1 0 --version
exit $failures
