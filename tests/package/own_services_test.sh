#!/bin/sh
# Passes the places of the units' private copies of the load identifier to the test program.
# usage: own_services_test.sh LIBRARY PROGRAM
set -eu
# shellcheck disable=SC2046 # a list of words
exec "$2" $(nm -C "$1" | sed -n 's/ [a-z] .*bd_dynamic.*//p')
