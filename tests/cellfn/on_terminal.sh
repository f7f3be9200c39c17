#!/bin/sh
# Runs cellfn on a terminal that is so wide, messages included.
# usage: on_terminal.sh COLUMNS COMMAND [ARGUMENT...], without quotation marks in them
columns=$1
shift
unset COLUMNS
script -qec "stty cols $columns; cellfn$(printf " '%s'" "$@")" /dev/null </dev/null | tr -d '\r'
