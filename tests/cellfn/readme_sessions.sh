#!/bin/sh
# Runs every console session of the README and compares what it prints.
# usage: readme_sessions.sh PROJECT-DIR PROGRAM-DIR... [--print]: --print shows the README as it
# ought to be instead
set -eu
project=$1
shift
print=no
for directory in "$@"; do
    if [ "$directory" = --print ]; then print=yes; else PATH=$directory:$PATH; fi
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
ln -s "$project/examples" "$scratch/examples"
cd "$scratch"

# Copies the README; in a session each command is followed by what it prints now.
replay() {
    in_session=no
    while IFS= read -r line; do
        case $in_session$line in
        'no```console') in_session=yes ;;
        'yes```') in_session=no ;;
        'yes$ '*)
            printf '%s\n' "$line"
            sh -c "${line#??}" 2>&1 || :
            continue
            ;;
        yes*) continue ;;
        esac
        printf '%s\n' "$line"
    done
}

replay <"$project/README.md" >expected
if [ $print = yes ]; then cat expected; else diff "$project/README.md" expected; fi
