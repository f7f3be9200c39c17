#!/bin/sh
# Runs every console session of a document and compares what it prints.
# usage: sessions.sh DOCUMENT PROJECT-DIR PROGRAM-DIR... [--print]: --print shows the document as it
# ought to be instead
set -eu
document=$(realpath "$1")
project=$(realpath "$2")
shift 2
print=no
for directory in "$@"; do
    if [ "$directory" = --print ]; then print=yes; else PATH=$(realpath "$directory"):$PATH; fi
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
ln -s "$project/examples" "$project/tests" "$scratch"
cd "$scratch"

# Copies the document; in a session each command is followed by what it prints now.
replay() {
    in_session=no
    while IFS= read -r line; do
        case $in_session$line in
        'no```console') in_session=yes ;;
        'yes```') in_session=no ;;
        'yes$ '*)
            printf '%s\n' "$line"
            sh -c "${line#??}" 2>&1 </dev/null || :
            continue
            ;;
        yes*) continue ;;
        esac
        printf '%s\n' "$line"
    done
}

replay <"$document" >expected
if [ $print = yes ]; then cat expected; else diff "$document" expected; fi
